#include <data/unprintable.hpp>
#include <settings_core/files/layers.hpp>
#include <settings_core/values/value_format.hpp>

#include <boost/algorithm/string/replace.hpp>
#include <boost/json/array.hpp>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "cli/arguments.hpp"
#include "cli/command.hpp"
#include "cli/diagnostics.hpp"
#include "host/bundle_file.hpp"
#include "render/json_text.hpp"

namespace vx::tool {

namespace {

struct GetOptions
{
    std::vector<std::string> paths;
    bool showsOrigin = false;
    bool showsFactory = false;
};

struct EffectiveValue
{
    const core::Node& setting;
    core::LayerValue effective;
};

/// Returns the effective value of the setting at this path. Throws CommandError if there is no such setting,
/// or it has no value.
EffectiveValue effectiveValue(const Session& session, core::Layers& layers, const std::string& path)
{
    const core::Node& setting = session.setting(path);
    core::LayerValue effective = layers.effective(setting);
    if (!effective.value.isAssigned()) {
        throw CommandError(ExitCode::failed,
                           effective.diagnostics.empty()
                               ? setting.getFullName() +
                                     " has no factory value, and no file sets it; see what it accepts with: "
                                     "vxsettings describe " +
                                     setting.getFullName()
                               : firstLine(formatDiagnostic(effective.diagnostics.back())));
    }
    return {setting, std::move(effective)};
}

/// Returns the values at all paths. A path without a value is reported on standard error and left out.
std::vector<EffectiveValue> effectiveValues(const Session& session, core::Layers& layers,
                                            const std::vector<std::string>& paths)
{
    std::vector<EffectiveValue> values;
    values.reserve(paths.size());
    for (const std::string& path : paths) {
        try {
            values.push_back(effectiveValue(session, layers, path));
        } catch (const CommandError& error) {
            printMessage(error.what());
        }
    }
    return values;
}

/// Gives hints at ignored values and run-time defaults.
void hintAtOrigin(const EffectiveValue& value, bool isOneOfSeveral)
{
    const auto& [setting, effective] = value;
    for (const core::Diagnostic& diagnostic : effective.diagnostics) {
        printHint("ignored value: " + firstLine(formatDiagnostic(diagnostic)));
    }
    if (!effective.computedBy.empty()) {
        printHint((isOneOfSeveral ? setting.getFullName() + ": " : "") + "computed by " +
                  effective.computedBy);
    }
}

boost::json::object valueDocument(const EffectiveValue& value)
{
    const auto& [setting, effective] = value;
    boost::json::object document{{"path", setting.fullName()}};
    addLayerValue(document, effective);
    return document;
}

/// Writes "personal:<file>" and a tab; "factory", with the function that computed the value, and a tab.
void writeOrigin(const core::LayerValue& value, Output& out)
{
    const std::string place = value.file.empty() ? value.computedBy : value.file.string();
    out << core::originName(value.origin) << (place.empty() ? "" : ":") << place << '\t';
}

void writeText(const std::vector<EffectiveValue>& values, bool showsOrigin, Output& out)
{
    for (const EffectiveValue& value : values) {
        if (showsOrigin) {
            writeOrigin(value.effective, out);
        }
        std::string text = core::formatValue(value.effective.value);
        if (values.size() > 1) {
            boost::replace_all(text, "\n", "\\n");  // several values are separated by line breaks
        }
        out << (out.isTerminal() ? Exact{data::escapeUnprintable(text)} : Exact{text}) << '\n';
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

ExitCode get(LazySession& lazy, const GetOptions& options, Output& out)
{
    const Session& session = lazy.get();
    core::Layers& layers = lazy.layers(options.showsFactory);
    const std::vector<EffectiveValue> values = effectiveValues(session, layers, options.paths);
    if (values.size() != options.paths.size()) {
        return ExitCode::failed;
    }
    for (const EffectiveValue& value : values) {
        hintAtOrigin(value, values.size() > 1);
    }
    if (out.isJson()) {
        writeDocument(values, out);
    } else {
        writeText(values, options.showsOrigin, out);
    }
    hintAtFileProblems(session, layers, out);
    return ExitCode::done;
}

}  // namespace

Action addGet(CLI::App& command)
{
    setHelp(command, "Print the effective value of each setting, in the syntax of the scripting language",
            "Several values are printed one per line, in the order of the paths, with line breaks as \\n.\n"
            "If any path has no value, each such path is reported, and nothing is printed.\n"
            "Examples:\n  vxsettings get connector.InterfacesBlocklist\n"
            "  vxsettings get commandwindow.NumericFormat commandwindow.WrapLines");
    auto options = std::make_shared<GetOptions>();
    addPositional(command, "PATH", options->paths, Need::required, "Setting or alias; may be repeated");
    addFlag(command, "--show-origin", options->showsOrigin,
            "Precede each value by its origin, the file that it is in, and a tab");
    addFactoryFlag(command, options->showsFactory);
    return [options](LazySession& session, Output& out) { return get(session, *options, out); };
}

}  // namespace vx::tool
