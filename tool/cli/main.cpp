#include <component/environment.hpp>
#include <settings_core/files/settings_editor.hpp>
#include <settings_core/tree/suggestions.hpp>

#include <foundation/host.hpp>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <csignal>
#include <cstddef>
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

struct CommandEntry
{
    std::string_view name;
    Action (*add)(CLI::App& command);
    bool needsAllCommands = false;  ///< the action inspects the parsers of the other commands
};

constexpr CommandEntry entries[] = {{"summary", addSummary},
                                    {"tree", addTree},
                                    {"list", addList},
                                    {"search", addSearch},
                                    {"describe", addDescribe},
                                    {"get", addGet},
                                    {"watch", addWatch},
                                    {"set", addSet},
                                    {"reset", addReset},
                                    {"import", addImport},
                                    {"edit", addEdit},
                                    {"undo", addUndo},
                                    {"check", addCheck},
                                    {"migrate", addMigrate},
                                    {"changes", addChanges},
                                    {"diff", addDiff},
                                    {"history", addHistory},
                                    {"export", addExport},
                                    {"lint", addLint},
                                    {"doctor", addDoctor},
                                    {"completion", addCompletion},
                                    {"complete", addComplete, true},
                                    {"manual", addManual, true}};

struct Command
{
    CLI::App* parser;
    Action action;
};

Command addCommand(CLI::App& app, const CommandEntry& entry)
{
    CLI::App* parser = app.add_subcommand(std::string(entry.name))->group("Commands");
    return {parser, entry.add(*parser)};
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
void warnOfUnknownFeature(const std::string& name)
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
        warnOfUnknownFeature(name);
        foundation::host::setFeature(name, value);
    }
    Output out(STDOUT_FILENO, "standard output", options.colour, options.format);
    const auto bundleFile =
        options.bundleFile.empty() ? defaultBundleFile() : std::filesystem::path(options.bundleFile);
    LazySession session(std::filesystem::absolute(bundleFile).lexically_normal(), options.layerFiles);
    const ExitCode code = command.action(session, out);
    out.flush();
    session.leakTree();
    return code;
}

bool isFormatOption(std::string_view argument)
{
    return argument == "--format" || argument.starts_with("--format=");
}

/// Returns "see vxsettings COMMAND --help", for the command on the command line.
std::string adviceToSeeHelp(const CLI::App& app)
{
    const auto commands = app.get_subcommands();
    return "see vxsettings " + (commands.empty() ? "" : commands.front()->get_name() + " ") + "--help";
}

/// Returns the long options of the program and of the command on the command line, each with "--".
std::vector<std::string> longOptions(const CLI::App& app)
{
    std::vector<std::string> names;
    std::vector<const CLI::App*> parsers{&app};
    std::ranges::copy(app.get_subcommands(), std::back_inserter(parsers));
    for (const CLI::App* parser : parsers) {
        for (const CLI::Option* option : parser->get_options()) {
            std::ranges::transform(option->get_lnames(), std::back_inserter(names),
                                   [](const std::string& name) { return "--" + name; });
        }
    }
    return names;
}

/// Returns the message for an argument that is no option or no command.
std::string unknownName(const std::string& what, std::string_view name, const std::vector<std::string>& names,
                        const std::string& otherwise)
{
    const auto near = core::suggestNames(name, std::vector<std::string_view>(names.begin(), names.end()));
    return "no such " + what + ": " + std::string(name) + "; " +
           (near.empty() ? otherwise : core::didYouMean(near));
}

/// Returns the names that a user may have meant by an unknown command.
std::vector<std::string> commandNames(const CLI::App& app)
{
    std::vector<std::string> names;
    for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; })) {
        names.push_back(command->get_name());
    }
    return names;
}

/// Names that commands have elsewhere.
constexpr std::pair<std::string_view, std::string_view> otherNames[] = {
    {"unset", "reset"},   {"remove", "reset"}, {"delete", "reset"},
    {"show", "describe"}, {"find", "search"},  {"validate", "check"}};

/// Returns the message for an invalid command line, with suggestions for an unknown command or option.
std::string usageError(const CLI::App& app, const CLI::ParseError& error)
{
    if (std::ranges::any_of(app.remaining(true), isFormatOption)) {  // most commands write only one format
        return "--format: not an option here; use --json for JSON; see vxsettings --help";
    }
    const auto extras = app.remaining(true);
    const auto option = std::ranges::find_if(extras, [](const std::string& argument) {
        return argument.starts_with("--") && argument.size() > 2;
    });
    if (option != extras.end()) {
        return unknownName("option", option->substr(0, option->find('=')), longOptions(app),
                           adviceToSeeHelp(app));
    }
    if (extras.empty() || extras.front().starts_with('-') || !app.get_subcommands().empty()) {
        return firstLine(error.what()) + "; " + adviceToSeeHelp(app);
    }
    const auto* other =
        std::ranges::find(otherNames, extras.front(), &std::pair<std::string_view, std::string_view>::first);
    return other != std::end(otherNames)
               ? "no such command: " + extras.front() + "; did you mean " + std::string(other->second) + "?"
               : unknownName("command", extras.front(), commandNames(app), adviceToSeeHelp(app));
}

ExitCode print(const std::string& text)
{
    Output out(STDOUT_FILENO, "standard output", ColourChoice::never);
    out << Exact{text};
    out.flush();
    return ExitCode::done;
}

/// Returns the arguments in reverse order. "help COMMAND" stands for "COMMAND --help".
std::vector<std::string> parserArguments(int argc, const char* const* argv)
{
    std::vector<std::string> arguments(argv + std::min(argc, 1), argv + argc);
    if (!arguments.empty() && arguments.front() == "help") {
        arguments.erase(arguments.begin());
        arguments.resize(std::min<std::size_t>(arguments.size(), 1));
        const bool isKnown = arguments.empty() || std::ranges::find(entries, arguments.front(),
                                                                    &CommandEntry::name) != std::end(entries);
        if (isKnown) {
            arguments.emplace_back("--help");
        }
    }
    std::ranges::reverse(arguments);
    return arguments;
}

ExitCode run(int argc, const char* const* argv)
{
    std::vector<std::string> arguments = parserArguments(argc, argv);
    CLI::App app(description, "vxsettings");
    app.set_version_flag("--version", "vxsettings " VX_TOOL_VERSION, "Print the version");
    app.get_formatter()->label("SUBCOMMAND", "COMMAND");
    app.fallthrough();
    const auto options = addGlobalOptions(app);
    const std::vector<Command> commands = addCommands(app, arguments.empty() ? "" : arguments.back());
    app.footer(footer);
    try {
        app.parse(std::move(arguments));
    } catch (const CLI::CallForVersion& version) {
        return print(std::string(version.what()) + "\n");
    } catch (const CLI::Success&) {
        const bool isOfCommand = !app.get_subcommands().empty();
        return print(app.help() + (isOfCommand ? "Options of every command: vxsettings --help\n" : ""));
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
    for (const core::Diagnostic& diagnostic : error.diagnostics()) {
        printMessage(core::formatDiagnostic(diagnostic));
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
