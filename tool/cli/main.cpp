#include <component/environment.hpp>
#include <settings_core/files/settings_editor.hpp>

#include <foundation/host.hpp>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <fcntl.h>
#include <iterator>
#include <new>
#include <string>
#include <string_view>
#include <unistd.h>
#include <utility>
#include <vector>

#include "cli/command.hpp"
#include "cli/command_error.hpp"
#include "cli/diagnostics.hpp"
#include "cli/global_options.hpp"
#include "cli/help.hpp"
#include "cli/usage_error.hpp"
#include "host/bundle_file.hpp"

namespace vx::tool {

namespace {

constexpr const char* description =
    "Show the factory settings of the Verdix environment; change, check and migrate settings files.";

constexpr const char* examples = "Examples:\n"
                                 "  vxsettings tree commandwindow\n"
                                 "  vxsettings list '*.suggestions.*'\n"
                                 "  vxsettings get connector.InterfacesBlocklist --bundle other.so\n";

/// Returns the last part of the main help.
std::string footer()
{
    std::string text = examples;
    text += "Exit codes:\n";
    for (const auto& [code, meaning] : exitMeanings) {
        text.append("  ").append(std::to_string(static_cast<int>(code)));
        text.append("  ").append(meaning).append("\n");
    }
    return text + "The options above apply to every command. Each command has its own --help.";
}

constexpr const char* look = "Look at settings";
constexpr const char* change = "Change settings files";
constexpr const char* review = "Review settings files and trees";
constexpr const char* shell = "Help and completion";

/// How the output of a command is shown on a terminal.
enum class View : std::uint8_t
{
    atOnce,  ///< that of commands that ask questions, run until they are stopped, or report step by step
    inPager
};

struct CommandEntry
{
    std::string_view name;
    Action (*add)(CLI::App& command);
    const char* group;
    View view = View::atOnce;
    bool needsAllCommands = false;  ///< the action inspects the parsers of the other commands
};

constexpr CommandEntry entries[] = {
    {"summary", addSummary, look, View::inPager},
    {"tree", addTree, look, View::inPager},
    {"list", addList, look, View::inPager},
    {"search", addSearch, look, View::inPager},
    {"describe", addDescribe, look, View::inPager},
    {"get", addGet, look, View::inPager},
    {"changes", addChanges, look, View::inPager},
    {"watch", addWatch, look},
    {"set", addSet, change},
    {"reset", addReset, change},
    {"import", addImport, change},
    {"edit", addEdit, change},
    {"undo", addUndo, change},
    {"migrate", addMigrate, change},
    {"check", addCheck, review, View::inPager},
    {"diff", addDiff, review, View::inPager},
    {"history", addHistory, review, View::inPager},
    {"export", addExport, review, View::inPager},
    {"lint", addLint, review, View::inPager},
    {"doctor", addDoctor, review, View::inPager},
    {"help", addHelp, shell, View::inPager, true},
    {"completion", addCompletion, shell},
    {"complete", addComplete, shell, View::atOnce, true},
    {"manual", addManual, shell, View::atOnce, true},
};

struct Command
{
    CLI::App* parser;
    Action action;
    View view;
};

Command addCommand(CLI::App& app, const CommandEntry& entry)
{
    CLI::App* parser = app.add_subcommand(std::string(entry.name))->group(entry.group);
    return {parser, entry.add(*parser), entry.view};
}

/// Adds the command that the command line begins with, or else all: adding them all takes longer than running
/// most of them.
std::vector<Command> addCommands(CLI::App& app, std::string_view firstArgument)
{
    const auto* named = std::ranges::find(entries, firstArgument, &CommandEntry::name);
    if (named != std::end(entries) && !named->needsAllCommands) {
        return {addCommand(app, *named)};
    }
    std::vector<Command> commands;
    std::ranges::transform(entries, std::back_inserter(commands),
                           [&app](const CommandEntry& entry) { return addCommand(app, entry); });
    return commands;
}

/// Returns the command on the command line, or the first one.
const Command& chosenCommand(const std::vector<Command>& commands)
{
    for (const Command& command : commands) {
        if (command.parser->parsed()) {
            return command;
        }
    }
    return commands.front();
}

/// Gives a hint at a feature switch that no factory setting depends on. It is set nevertheless: the bundle
/// may be another one.
void hintAtUnknownFeature(const std::string& name)
{
    std::string known;
    for (const auto& input : ::settings::verdix::featureInputs) {
        if (name == input.name) {
            return;
        }
        known.append(known.empty() ? "" : ", ").append(input.name);
    }
    printHint("no Verdix setting depends on the feature switch \"" + name + "\"; known: " + known);
}

ExitCode execute(const GlobalOptions& options, const Command& command)
{
    foundation::host::setLogThreshold(options.logThreshold);
    if (options.isQuiet) {
        turnHintsOff();
    }
    for (const auto& [name, value] : options.features) {
        hintAtUnknownFeature(name);
        foundation::host::setFeature(name, value);
    }
    Output out(STDOUT_FILENO, "standard output", options.colour, options.format);
    if (options.usesPager && command.view == View::inPager) {
        out.usePager();
    }
    const auto bundleFile =
        options.bundleFile.empty() ? defaultBundleFile() : std::filesystem::path(options.bundleFile);
    LazySession session(std::filesystem::absolute(bundleFile).lexically_normal(), options.layerFiles);
    const ExitCode code = command.action(session, out);
    out.flush();
    session.leakTree();
    return code;
}

ExitCode print(const std::string& text, bool usesPager)
{
    Output out(STDOUT_FILENO, "standard output", ColourChoice::never);
    if (usesPager) {
        out.usePager();
    }
    out << Exact{text};
    out.flush();
    return ExitCode::done;
}

ExitCode run(int argc, const char* const* argv)
{
    std::vector<std::string> arguments(argv + std::min(argc, 1), argv + argc);
    CLI::App app(description, "vxsettings");
    app.set_version_flag("--version", "vxsettings " VX_TOOL_VERSION, "Print the version");
    setHelpFormat(app);
    app.fallthrough()->require_subcommand(0, 1);  // a name behind the command is an argument
    const auto options = addGlobalOptions(app);
    const std::vector<Command> commands = addCommands(app, arguments.empty() ? "" : arguments.front());
    app.footer(footer);
    std::ranges::reverse(arguments);  // as the parser expects them
    try {
        app.parse(std::move(arguments));
    } catch (const CLI::CallForVersion& version) {
        return print(std::string(version.what()) + "\n", false);
    } catch (const CLI::Success&) {
        const auto named = app.get_subcommands();
        return print(helpOf(named.empty() ? app : *named.front()), options->usesPager);
    } catch (const CLI::ParseError& error) {
        throw CommandError(ExitCode::usage, usageError(app, error));
    }
    return execute(*options, chosenCommand(commands));
}

ExitCode report(ExitCode code, const char* message)
{
    printMessage(message);
    return code;
}

ExitCode report(const core::InvalidChanges& error)
{
    const std::size_t count = error.diagnostics().size();
    const auto [shown, leftOut] = firstOfEachKind(error.diagnostics());
    for (const core::Diagnostic& diagnostic : shown) {
        printMessage(core::formatDiagnostic(diagnostic));
    }
    for (const auto& [kind, number] : leftOut) {
        printMessage(std::to_string(number) + " more: " + kind);
    }
    return count == 1 ? ExitCode::failed
                      : report(ExitCode::failed,
                               ("nothing is changed: " + std::to_string(count) + " errors").c_str());
}

/// Opens /dev/null for each standard descriptor that is closed, as a file opened later would take its number
/// and receive what is written to it. Opened for reading, so that writing fails.
void occupyStandardDescriptors()
{
    while (true) {
        const int descriptor = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
        if (descriptor > STDERR_FILENO) {
            ::close(descriptor);
        }
        if (descriptor < 0 || descriptor > STDERR_FILENO) {
            return;
        }
    }
}

ExitCode guardedRun(int argc, const char* const* argv)
{
    try {
        return run(argc, argv);
    } catch (const ReaderGone&) {
        return ExitCode::failed;
    } catch (const CommandError& error) {
        return report(error.code(), error.what());
    } catch (const core::InvalidChanges& error) {
        return report(error);
    } catch (const std::bad_alloc&) {
        return report(ExitCode::failed, "out of memory: close other programs, or raise the memory limit");
    } catch (const std::exception& error) {
        return report(ExitCode::failed, error.what());
    }
}

}  // namespace

}  // namespace vx::tool

int main(int argc, char** argv)
{
    vx::tool::occupyStandardDescriptors();
    std::signal(SIGPIPE, SIG_IGN);  // a closed pipe is a failed write, so that commands end in order
    std::signal(SIGXFSZ, SIG_IGN);  // so is a file that reaches the size limit of the process
    return static_cast<int>(vx::tool::guardedRun(argc, argv));
}
