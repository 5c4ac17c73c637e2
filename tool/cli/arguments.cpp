#include "cli/arguments.hpp"

#include <settings_core/files/input_file.hpp>
#include <settings_core/tree/suggestions.hpp>

#include <CLI/CLI.hpp>
#include <boost/algorithm/string/join.hpp>

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "cli/command_error.hpp"
#include "render/output.hpp"

namespace vx::tool {

namespace {

template <class Target>
CLI::Option& add(CLI::App& command, const char* names, Target& target, const char* valueName,
                 const char* help, Need need)
{
    CLI::Option& option =
        *command.add_option(names, target, help)->type_name(valueName)->required(need != Need::optional);
    if (need != Need::requiredOrEmpty) {
        refuseEmpty(option);
    }
    return option;
}

}  // namespace

void setHelp(CLI::App& command, const char* summary, const char* footer)
{
    command.description(summary)->footer(footer);
}

void hideFromHelp(CLI::App& command)
{
    command.group("");
}

void addPositional(CLI::App& command, const char* name, std::string& target, Need need, const char* help)
{
    add(command, name, target, "", help, need);
}

void addPositional(CLI::App& command, const char* name, std::optional<std::string>& target, const char* help)
{
    command
        .add_option_function<std::string>(
            name, [&target](const std::string& value) { target = value; }, help)
        ->type_name("");
}

void addPositional(CLI::App& command, const char* name, std::vector<std::string>& target, Need need,
                   const char* help)
{
    add(command, name, target, "", help, need);
}

void addOption(CLI::App& command, const char* names, std::string& target, const char* valueName,
               const char* help, Need need)
{
    add(command, names, target, valueName, help, need);
}

void addOption(CLI::App& command, const char* names, int& target, int least, int most, const char* valueName,
               const char* help)
{
    add(command, names, target, valueName, help, Need::optional)
        .check(CLI::Range(least, most).description(""));
}

void addChoice(CLI::App& command, const char* names, std::string& target,
               const std::vector<std::string>& choices, const char* help, Need need)
{
    setChoices(add(command, names, target, "", help, need), choices);
}

void addFlag(CLI::App& command, const char* names, bool& target, const char* help)
{
    command.add_flag(names, target, help);
}

void addFactoryFlag(CLI::App& command, bool& target)
{
    addFlag(command, "--factory", target, "Ignore all settings files, and show factory values");
}

void requireOneStandardInput(const std::vector<std::string>& files)
{
    if (std::ranges::count(files, core::standardInput) > 1) {
        throw CommandError(ExitCode::usage, "standard input (-) can be read only once: name a file instead");
    }
}

std::string chosenFormat(const std::string& named, const Output& out, const char* usual)
{
    if (out.isJson() && !named.empty() && named != "json") {
        throw CommandError(ExitCode::usage,
                           "--json and --format " + named + " exclude each other: leave one out");
    }
    return out.isJson() ? "json" : named.empty() ? usual : named;
}

void refuseEmpty(CLI::Option& option)
{
    const auto check = [](const std::string& argument) {
        return std::string(argument.empty() ? "needs a value that is not empty" : "");
    };
    option.check(CLI::Validator(check, ""));
}

void setChoices(CLI::Option& option, const std::vector<std::string>& choices)
{
    const auto check = [choices](const std::string& argument) -> std::string {
        if (std::ranges::find(choices, argument) != choices.end()) {
            return "";
        }
        const auto near =
            core::suggestNames(argument, std::vector<std::string_view>(choices.begin(), choices.end()));
        return argument + " not in {" + boost::algorithm::join(choices, ",") + "}" +
               (near.empty() ? "" : "; " + core::didYouMean(near));
    };
    option.check(CLI::Validator(check, ""))->type_name(boost::algorithm::join(choices, "|"));
}

std::vector<std::string> choicesOf(const CLI::Option& option)
{
    std::vector<std::string> choices;
    const std::string type = option.get_type_name();
    std::size_t begin = 0;
    for (std::size_t bar = type.find('|'); bar != std::string::npos; bar = type.find('|', begin)) {
        choices.push_back(type.substr(begin, bar - begin));
        begin = bar + 1;
    }
    if (!choices.empty()) {
        choices.push_back(type.substr(begin));
    }
    return choices;
}

const CLI::App& programOf(const CLI::App& command)
{
    return *command.get_parent();
}

const CLI::App* findCommand(const CLI::App& program, std::string_view name)
{
    const auto found =
        program.get_subcommands([&](const CLI::App* command) { return command->get_name() == name; });
    return found.empty() ? nullptr : found.front();
}

}  // namespace vx::tool
