#include <settings_core/layers.hpp>
#include <settings_core/path_lookup.hpp>
#include <settings_core/value_text.hpp>

#include <cstdio>
#include <memory>
#include <string>

#include "arguments.hpp"
#include "bundle_file.hpp"
#include "json_text.hpp"
#include "node_json.hpp"
#include "verb.hpp"

namespace vx::tool {

namespace {

/// The value that holds. What is to be said of it goes to standard error, apart from the value itself.
core::LayerValue valueOf(core::Layers& layers, const core::Node& setting)
{
    core::LayerValue held = layers.effective(setting);
    if (!held.value.isAssigned()) {
        throw Failure(ExitCode::failed,
                      setting.getFullName() + (held.faults.empty()
                                                   ? " has no factory value, and no file gives it one; see "
                                                     "what it accepts with: "
                                                     "vxsettings describe " +
                                                         setting.getFullName()
                                                   : ": " + firstLine(held.faults.back())));
    }
    for (const std::string& fault : held.faults) {
        std::fprintf(stderr, "vxsettings: passed over: %s\n", firstLine(fault).c_str());
    }
    if (held.layer == core::Layer::factory && !setting.properties().factoryValue.isAssigned()) {
        std::fprintf(stderr, "vxsettings: computed by %s\n", held.source.c_str());
    }
    return held;
}

ExitCode get(LazySession& lazy, const std::string& path, Output& out)
{
    const Session& session = lazy.get();
    const core::Node& setting = core::settingBehind(session.tree(), session.node(path));
    const core::LayerValue held = valueOf(lazy.layers(), setting);
    if (out.isJson()) {
        writeJson({{"path", setting.fullName()},
                   {"value", valueJson(held.value)},
                   {"layer", core::layerWord(held.layer)},
                   {"source", held.source}},
                  out);
    } else {
        out << core::valueText(held.value) << '\n';
    }
    return ExitCode::done;
}

}  // namespace

Action addGet(CLI::App& verb)
{
    describe(verb, "The value of one setting, as the scripting language writes it",
             "Example:\n  vxsettings get connector.InterfacesBlocklist");
    auto path = std::make_shared<std::string>();
    addOperand(verb, "PATH", *path, Need::required, "Setting or alias");
    return [path](LazySession& session, Output& out) { return get(session, *path, out); };
}

}  // namespace vx::tool
