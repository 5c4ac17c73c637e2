#include "cli/usage_error.hpp"

#include <settings_core/tree/suggestions.hpp>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <iterator>
#include <string_view>
#include <utility>
#include <vector>

#include "cli/help.hpp"
#include "host/bundle_file.hpp"

namespace vx::tool {

namespace {

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

bool isOption(std::string_view argument)
{
    return argument.size() > 1 && argument[0] == '-' && argument != "--" &&
           (argument[1] < '0' || argument[1] > '9');
}

/// Returns what to do about an argument that the command on the command line does not take.
std::string adviceOnArguments(const CLI::App& app)
{
    const CLI::App& command = *app.get_subcommands().front();
    const auto options = command.get_options();
    const auto isEquals = [](const CLI::Option* option) { return option->results() == CLI::results_t{"="}; };
    if (std::ranges::any_of(options, isEquals)) {
        return "leave out the =";
    }
    const CLI::Option* format = command.get_option_no_throw("--format");
    const bool takesArguments = std::ranges::any_of(options, &CLI::Option::get_positional);
    return format == nullptr || takesArguments ? adviceToSeeHelp(app)
                                               : "choose a format by --format " + format->get_type_name();
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
    for (const CommandGroup& group : commandGroups(app)) {
        for (const CLI::App* command : group.commands) {
            names.push_back(command->get_name());
        }
    }
    return names;
}

/// Names that commands have elsewhere.
constexpr std::pair<std::string_view, std::string_view> otherNames[] = {
    {"unset", "reset"},   {"remove", "reset"}, {"delete", "reset"},
    {"show", "describe"}, {"find", "search"},  {"validate", "check"}};

}  // namespace

std::string unknownCommand(const CLI::App& program, const std::string& name)
{
    const auto* other =
        std::ranges::find(otherNames, name, &std::pair<std::string_view, std::string_view>::first);
    return other != std::end(otherNames)
               ? "no such command: " + name + "; did you mean " + std::string(other->second) + "?"
               : unknownName("command", name, commandNames(program), "see vxsettings --help");
}

std::string usageError(const CLI::App& program, const CLI::ParseError& error)
{
    const auto extras = program.remaining(true);
    if (program.get_subcommands().empty() && !extras.empty() && !extras.front().starts_with('-')) {
        return unknownCommand(program, extras.front());
    }
    if (std::ranges::any_of(extras, isFormatOption)) {  // most commands write only one format
        return "--format: not an option here; use --json for JSON; see vxsettings --help";
    }
    const auto option = std::ranges::find_if(extras, isOption);
    if (option != extras.end()) {
        return unknownName("option", option->substr(0, option->find('=')), longOptions(program),
                           adviceToSeeHelp(program));
    }
    if (!extras.empty()) {
        return "argument not expected: " + extras.front() + "; " + adviceOnArguments(program);
    }
    const std::string message = firstLine(error.what());
    return message.ends_with('?') ? message : message + "; " + adviceToSeeHelp(program);
}

}  // namespace vx::tool
