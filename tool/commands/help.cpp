#include "cli/help.hpp"

#include <CLI/App.hpp>

#include <memory>
#include <string>

#include "cli/arguments.hpp"
#include "cli/command.hpp"
#include "cli/usage_error.hpp"

namespace vx::tool {

namespace {

struct HelpOptions
{
    std::string command;
    bool isAll = false;
};

/// Returns the help of the program, and of each of its commands.
std::string helpOfAll(const CLI::App& program)
{
    std::string text = helpOf(program);
    for (const CommandGroup& group : commandGroups(program)) {
        for (const CLI::App* command : group.commands) {
            text.append("\n").append(helpOf(*command));
        }
    }
    return text;
}

std::string wantedHelp(const CLI::App& program, const HelpOptions& options)
{
    if (options.isAll && !options.command.empty()) {
        throw CommandError(ExitCode::usage, "COMMAND and --all exclude each other: leave one out");
    }
    if (options.isAll) {
        return helpOfAll(program);
    }
    if (options.command.empty()) {
        return helpOf(program);
    }
    const CLI::App* command = findCommand(program, options.command);
    return command == nullptr ? throw CommandError(ExitCode::usage, unknownCommand(program, options.command))
                              : helpOf(*command);
}

}  // namespace

Action addHelp(CLI::App& command)
{
    setHelp(command, "Print the help of the program, of a command, or of all commands",
            "Examples:\n  vxsettings help set\n  vxsettings help --all");
    auto options = std::make_shared<HelpOptions>();
    addPositional(command, "COMMAND", options->command, Need::optional, "Command (default: the program)");
    addFlag(command, "--all", options->isAll, "Print the help of the program and all commands");
    return [options, &program = programOf(command)](LazySession&, Output& out) {
        out << Exact{wantedHelp(program, *options)};
        return ExitCode::done;
    };
}

}  // namespace vx::tool
