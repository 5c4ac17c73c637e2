#include <settings_core/layers.hpp>
#include <settings_core/value_format.hpp>

#include <boost/algorithm/string/replace.hpp>
#include <boost/json/array.hpp>

#include <cstdio>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "arguments.hpp"
#include "bundle_file.hpp"
#include "json_text.hpp"
#include "node_json.hpp"
#include "verb.hpp"

namespace vx::tool {

namespace {

struct EffectiveValue
{
    const core::Node& setting;
    core::LayerValue held;
};

void say(const std::string& line)
{
    std::fprintf(stderr, "vxsettings: %s\n", line.c_str());
}

/// The effective value of the setting at this path. Throws Failure if there is no such setting or it has no
/// value.
EffectiveValue effectiveValue(const Session& session, core::Layers& layers, const std::string& path)
{
    const core::Node& setting = session.setting(path);
    core::LayerValue held = layers.effective(setting);
    if (!held.value.isAssigned()) {
        throw Failure(ExitCode::failed,
                      setting.getFullName() + (held.diagnostics.empty()
                                                   ? " has no factory value, and no file gives it one; see "
                                                     "what it accepts with: "
                                                     "vxsettings describe " +
                                                         setting.getFullName()
                                                   : ": " + firstLine(held.diagnostics.back())));
    }
    return {setting, std::move(held)};
}

/// The values at all paths. Each path that has none is named on standard error, and is missing in the result.
std::vector<EffectiveValue> effectiveValues(LazySession& lazy, const std::vector<std::string>& paths)
{
    const Session& session = lazy.get();
    core::Layers& layers = lazy.layers();
    std::vector<EffectiveValue> values;
    values.reserve(paths.size());
    for (const std::string& path : paths) {
        try {
            values.push_back(effectiveValue(session, layers, path));
        } catch (const Failure& failure) {
            say(failure.what());
        }
    }
    return values;
}

/// Remarks on a value go to standard error, apart from the value itself.
void remark(const EffectiveValue& value, bool isOneOfSeveral)
{
    const auto& [setting, held] = value;
    for (const std::string& fault : held.diagnostics) {
        say("passed over: " + firstLine(fault));
    }
    if (held.layer == core::Layer::factory && !setting.properties().factoryValue.isAssigned()) {
        say((isOneOfSeveral ? setting.getFullName() + ": " : "") + "computed by " + held.source);
    }
}

boost::json::object valueDocument(const EffectiveValue& value)
{
    const auto& [setting, held] = value;
    return {{"path", setting.fullName()},
            {"value", valueJson(held.value)},
            {"layer", core::layerName(held.layer)},
            {"source", held.source}};
}

void writeText(const std::vector<EffectiveValue>& values, Output& out)
{
    for (const EffectiveValue& value : values) {
        std::string text = core::formatValue(value.held.value);
        if (values.size() > 1) {
            boost::replace_all(text, "\n", "\\n");  // readers tell several values apart by their lines
        }
        out << text << '\n';
    }
}

void writeDocument(const std::vector<EffectiveValue>& values, Output& out)
{
    if (values.size() == 1) {
        writeJson(valueDocument(values.front()), out);
        return;
    }
    boost::json::array documents;
    for (const EffectiveValue& value : values) {
        documents.push_back(valueDocument(value));
    }
    writeJson({{"values", std::move(documents)}}, out);
}

ExitCode get(LazySession& lazy, const std::vector<std::string>& paths, Output& out)
{
    const std::vector<EffectiveValue> values = effectiveValues(lazy, paths);
    if (values.size() != paths.size()) {
        return ExitCode::failed;
    }
    for (const EffectiveValue& value : values) {
        remark(value, values.size() > 1);
    }
    if (out.isJson()) {
        writeDocument(values, out);
    } else {
        writeText(values, out);
    }
    return ExitCode::done;
}

}  // namespace

Action addGet(CLI::App& verb)
{
    describe(
        verb, "Print the value of each setting, as the scripting language writes it",
        "Several values are printed one per line, in the order of the paths, line breaks in them as \\n.\n"
        "If any path has no value, each such path is named in an error, and nothing is printed.\n"
        "Examples:\n  vxsettings get connector.InterfacesBlocklist\n"
        "  vxsettings get commandwindow.NumericFormat commandwindow.WrapLines");
    auto paths = std::make_shared<std::vector<std::string>>();
    addOperand(verb, "PATH", *paths, Need::required, "Setting or alias; may be repeated");
    return [paths](LazySession& session, Output& out) { return get(session, *paths, out); };
}

}  // namespace vx::tool
