#include <settings_core/files/input_file.hpp>
#include <settings_core/tree/secret_settings.hpp>

#include <algorithm>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <unistd.h>
#include <utility>

#include "assignments.hpp"
#include "cli/arguments.hpp"
#include "cli/command.hpp"
#include "editing/typed_line.hpp"
#include "render/json_text.hpp"
#include "settings_changes.hpp"

namespace vx::tool {

namespace {

struct SetOptions
{
    std::string path;
    std::optional<std::string> value;
    bool isJson = false;
    bool isFromInput = false;
    ChangeOptions change;
};

std::string readStandardInput()
{
    return core::readInput(std::string(core::standardInput));
}

/// Loads the bundle. Threads of the service framework must not take signals from the one that waits for what
/// is typed.
void loadBeforeTyping(LazySession& lazy)
{
    BlockedSignals signals = blockTypingSignals();
    static_cast<void>(lazy.get());
    signals.deliver();
}

/// Returns the line that the user types at the terminal for the value of a setting.
std::string askForValue(const core::Node& setting)
{
    const bool isSecret = core::isSecret(setting.fullName());
    return readTypedLine(setting.getFullName() + (isSecret ? " (not shown): " : ": "),
                         isSecret ? Typing::hidden : Typing::shown);
}

/// Returns standard input without the line break at its end; a terminal asks for one line.
std::string readValue(LazySession& lazy, const std::string& path)
{
    if (::isatty(STDIN_FILENO) == 1) {
        return askForValue(lazy.get().setting(path));
    }
    std::string value = readStandardInput();
    if (value.ends_with('\n')) {
        value.pop_back();
        if (value.ends_with('\r')) {
            value.pop_back();
        }
    }
    return value;
}

ExitCode setOne(LazySession& lazy, const SetOptions& options, Output& out)
{
    if (!options.value && ::isatty(STDIN_FILENO) == 1) {
        loadBeforeTyping(lazy);
    }
    ChangedFile changed(lazy, options.change, "set " + options.path);
    const core::ValueText value{options.value ? *options.value : readValue(lazy, options.path),
                                options.isJson ? core::Notation::json : core::Notation::script};
    const core::AppliedChanges applied = changed.editor.apply({{options.path, value}});
    if (out.isJson()) {
        auto document = changeJson(applied.settings.front());
        document.emplace("file", changed.file.string());
        document.emplace("isWritten", applied.isWritten);
        writeJson(document, out);
    } else {
        writeChanges(applied, changed, "", out);
    }
    giveHints(applied, changed);
    return ExitCode::done;
}

/// Returns the changes on standard input. Throws InvalidChanges with all that is wrong with them.
std::vector<core::SettingChange> readChanges(const core::SettingsEditor& editor, bool isJson)
{
    const std::string name = core::inputName(std::string(core::standardInput));
    auto [changes, diagnostics] = (isJson ? readJsonAssignments : readAssignments)(readStandardInput(), name);
    if (!diagnostics.empty()) {
        std::ranges::move(editor.check(changes), std::back_inserter(diagnostics));
        std::ranges::stable_sort(diagnostics, {},
                                 [](const core::Diagnostic& diagnostic) { return diagnostic.position.line; });
        throw core::InvalidChanges(std::move(diagnostics));
    }
    return std::move(changes);
}

ExitCode setMany(LazySession& lazy, const SetOptions& options, Output& out)
{
    ChangedFile changed(lazy, options.change, "set --stdin");
    const core::AppliedChanges applied = changed.editor.apply(readChanges(changed.editor, options.isJson));
    if (out.isJson()) {
        auto document = changesJson(applied, changed);
        document.emplace("unchanged", countUnchanged(applied));
        writeJson(document, out);
    } else {
        writeChanges(applied, changed, summarize(applied, changed, "set in"), out);
    }
    giveHints(applied, changed);
    return ExitCode::done;
}

ExitCode set(LazySession& lazy, const SetOptions& options, Output& out)
{
    if (!options.isFromInput && !options.value && options.path.find('=') != std::string::npos) {
        throw CommandError(ExitCode::usage, "no value: write a space in place of the = in " + options.path);
    }
    if (options.isFromInput == options.value.has_value() || (options.path.empty() && !options.isFromInput)) {
        throw CommandError(ExitCode::usage, "set needs either a path and a value, or --stdin with or without "
                                            "a path; see vxsettings set --help");
    }
    return (options.path.empty() ? setMany : setOne)(lazy, options, out);
}

}  // namespace

Action addSet(CLI::App& command)
{
    setHelp(command, "Set a value in your personal settings file, or many values at once",
            "Without PATH, --stdin reads a line PATH = VALUE for each setting; empty lines and lines that "
            "begin with # are ignored. With --json-value it reads a JSON object of paths and values. If "
            "anything is wrong, errors are reported with line and column, the first 20 of each kind, and "
            "nothing is written.\n"
            "Examples:\n  vxsettings set commandwindow.WrapLines true\n"
            "  vxsettings set colors.KeywordColor '[14 0 255]'\n"
            "  vxsettings set web.ProxyPassword --stdin < password\n"
            "  vxsettings set --stdin < values");
    auto options = std::make_shared<SetOptions>();
    addPositional(command, "PATH", options->path, Need::optional, "Setting or alias");
    addPositional(command, "VALUE", options->value,
                  "true or on, 12, [14 0 255] or #0e00ff, a string with or without quotes, or {\"a\",\"b\"}; "
                  "precede a value that "
                  "begins with - by --");
    addFlag(command, "--json-value", options->isJson,
            "Read VALUE as JSON: 12, [14, 0, 255], \"text\", [\"a\", \"b\"], or a value as get --json prints "
            "it");
    addFlag(command, "--stdin", options->isFromInput,
            "Read VALUE from standard input, less a line break at its end, so that a password is not in the "
            "list of processes; a terminal asks for it, and does not show a secret; without PATH, read many "
            "settings");
    addChangeOptions(command, options->change);
    return [options](LazySession& session, Output& out) { return set(session, *options, out); };
}

}  // namespace vx::tool
