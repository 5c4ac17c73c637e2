#include <settings_core/files/base_folders.hpp>
#include <settings_core/files/input_file.hpp>
#include <settings_core/files/settings_editor.hpp>

#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "cli/arguments.hpp"
#include "cli/command.hpp"
#include "render/json_text.hpp"

namespace vx::tool {

namespace {

struct SetOptions
{
    std::string path;
    std::optional<std::string> value;
    bool isJson = false;
    bool isFromInput = false;
};

struct ResetOptions
{
    std::string path;
    bool resetsAll = false;
    bool resetsUnknown = false;
};

/// Returns an editor of the personal file that records the change as that of `command`.
core::SettingsEditor makeEditor(LazySession& lazy, std::string command)
{
    const Session& session = lazy.get();
    return {session.tree(), session.releaseChanges(), lazy.layerFiles().personal, session.publishedRelease(),
            core::ChangeRecorder(core::defaultStateFolder(), std::move(command))};
}

/// Returns standard input without the line break at its end.
std::string readValue()
{
    std::string value = core::readInput(std::string(core::standardInput));
    if (value.ends_with('\n')) {
        value.pop_back();
        if (value.ends_with('\r')) {
            value.pop_back();
        }
    }
    return value;
}

ExitCode set(LazySession& lazy, const SetOptions& options, Output& out)
{
    if (options.isFromInput == options.value.has_value()) {
        throw CommandError(ExitCode::usage, "set needs either a value or --stdin; see vxsettings set --help");
    }
    const std::string file = lazy.layerFiles().personal.string();
    const core::Node& setting = makeEditor(lazy, "set " + options.path)
                                    .set(options.path, options.value ? *options.value : readValue(),
                                         options.isJson ? core::Notation::json : core::Notation::script);
    if (out.isJson()) {
        writeJson({{"path", setting.fullName()}, {"file", file}}, out);
    } else {
        out << setting.fullName() << " is set in " << file << '\n';
    }
    return ExitCode::done;
}

/// Returns the reset as it is typed, to be recorded.
std::string commandOf(const ResetOptions& options)
{
    std::string command = "reset";
    command += options.resetsAll ? " --all" : "";
    command += options.resetsUnknown ? " --unknown" : "";
    return options.path.empty() ? command : command + " " + options.path;
}

std::string countSettings(std::size_t count, const char* unknown = "")
{
    return std::to_string(count) + unknown + (count == 1 ? " setting" : " settings");
}

void writeText(const core::ResetCount& count, const ResetOptions& options, const std::string& file,
               Output& out)
{
    out << countSettings(count.removed, options.resetsUnknown ? " unknown" : "") << " reset in " << file;
    if (count.unknownLeft != 0) {
        out << "; " << countSettings(count.unknownLeft, " unknown")
            << " left, see vxsettings reset --unknown";
    }
    out << '\n';
}

ExitCode reset(LazySession& lazy, const ResetOptions& options, Output& out)
{
    const bool hasPath = !options.path.empty();
    if (options.resetsAll ? hasPath || options.resetsUnknown : !hasPath && !options.resetsUnknown) {
        throw CommandError(ExitCode::usage,
                           "reset needs one of a path, --all and --unknown; see vxsettings reset --help");
    }
    const std::string file = lazy.layerFiles().personal.string();
    core::SettingsEditor editor = makeEditor(lazy, commandOf(options));
    const core::ResetCount count = options.resetsUnknown ? editor.resetUnknown(options.path)
                                   : options.resetsAll   ? editor.resetAll()
                                                         : editor.reset(options.path);
    if (out.isJson()) {
        writeJson({{"count", count.removed}, {"unknownLeft", count.unknownLeft}, {"file", file}}, out);
    } else {
        writeText(count, options, file, out);
    }
    return ExitCode::done;
}

}  // namespace

Action addSet(CLI::App& command)
{
    setHelp(command, "Set a value in your personal settings file",
            "Examples:\n  vxsettings set commandwindow.WrapLines true\n"
            "  vxsettings set colors.KeywordColor '[14 0 255]'\n"
            "  vxsettings set web.ProxyPassword --stdin < password");
    auto options = std::make_shared<SetOptions>();
    addPositional(command, "PATH", options->path, Need::required, "Setting or alias");
    addPositional(
        command, "VALUE", options->value,
        "true, 12, [14 0 255], a string with or without quotes, or {\"a\",\"b\"}; precede a value that "
        "begins with - by --");
    addFlag(command, "--json-value", options->isJson,
            "Read VALUE as JSON: 12, [14, 0, 255], \"text\", [\"a\", \"b\"], or a value as get --json prints "
            "it");
    addFlag(command, "--stdin", options->isFromInput,
            "Read VALUE from standard input, less a line break at its end, so that a password is not in the "
            "list of processes");
    return [options](LazySession& session, Output& out) { return set(session, *options, out); };
}

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
    return [options](LazySession& session, Output& out) { return reset(session, *options, out); };
}

}  // namespace vx::tool
