#include <memory>
#include <string>

#include "cli/arguments.hpp"
#include "cli/command.hpp"
#include "render/json_text.hpp"
#include "settings_changes.hpp"

namespace vx::tool {

namespace {

struct ResetOptions
{
    std::string path;
    bool resetsAll = false;
    bool resetsUnknown = false;
    ChangeOptions change;
};

/// Returns the reset as it is typed, to be recorded.
std::string commandOf(const ResetOptions& options)
{
    std::string command = "reset";
    command += options.resetsAll ? " --all" : "";
    command += options.resetsUnknown ? " --unknown" : "";
    return options.path.empty() ? command : command + " " + options.path;
}

/// Returns the summary; empty if there is nothing to tell but one change.
std::string summaryOf(const core::AppliedChanges& applied, const ResetOptions& options,
                      const std::string& file)
{
    if (applied.settings.size() == 1 && applied.unknownLeft == 0 && applied.lockedLeft == 0) {
        return "";
    }
    std::string summary =
        countSettings(applied.settings.size(), options.resetsUnknown ? "unknown" : "") + " reset in " + file;
    if (applied.lockedLeft != 0) {
        summary += "; " + countSettings(applied.lockedLeft, "locked") + " left";
    }
    if (applied.unknownLeft != 0) {
        summary +=
            "; " + countSettings(applied.unknownLeft, "unknown") + " left, see vxsettings reset --unknown";
    }
    return summary;
}

ExitCode reset(LazySession& lazy, const ResetOptions& options, Output& out)
{
    const bool hasPath = !options.path.empty();
    if (options.resetsAll ? hasPath || options.resetsUnknown : !hasPath && !options.resetsUnknown) {
        throw CommandError(ExitCode::usage,
                           "reset needs one of a path, --all and --unknown; see vxsettings reset --help");
    }
    ChangedFile changed(lazy, options.change, commandOf(options));
    const core::AppliedChanges applied = options.resetsUnknown ? changed.editor.resetUnknown(options.path)
                                         : options.resetsAll   ? changed.editor.resetAll()
                                                               : changed.editor.reset(options.path);
    if (out.isJson()) {
        auto document = changesJson(applied, changed);
        document.emplace("count", applied.settings.size());
        document.emplace("unknownLeft", applied.unknownLeft);
        document.emplace("lockedLeft", applied.lockedLeft);
        writeJson(document, out);
    } else {
        writeChanges(applied, changed, summaryOf(applied, options, changed.file.string()), out);
    }
    return ExitCode::done;
}

}  // namespace

Action addReset(CLI::App& command)
{
    setHelp(
        command, "Remove values from your personal settings file",
        "Settings that the tree does not have, such as those of other plug-ins, are left, unless PATH names "
        "one.\n"
        "Examples:\n  vxsettings reset commandwindow.WrapLines\n  vxsettings reset colors\n"
        "  vxsettings reset --unknown");
    auto options = std::make_shared<ResetOptions>();
    addPositional(command, "PATH", options->path, Need::optional, "Setting, or group with all its settings");
    addFlag(command, "--all", options->resetsAll, "Reset all settings of the tree");
    addFlag(command, "--unknown", options->resetsUnknown,
            "Remove the settings that the tree does not have; with PATH, only those at or under it");
    addChangeOptions(command, options->change);
    return [options](LazySession& session, Output& out) { return reset(session, *options, out); };
}

}  // namespace vx::tool
