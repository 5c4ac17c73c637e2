#pragma once

// Helpers that declare a command's arguments. They keep the parser's header, which is slow to compile and
// makes the executable larger, out of most sources.
//
// The target of an argument is assigned while the command line is parsed; it keeps its value if the argument
// is not given.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace vx::tool {

class Output;

/// Whether an argument must be given. If it is, it must not be the empty string unless that is said here.
enum class Need : std::uint8_t
{
    optional,
    required,
    requiredOrEmpty  ///< must be given; the empty string is a value like others
};

/// Sets the help of a command: `summary` is also shown in the list of commands, `footer` below all options.
void setHelp(CLI::App& command, const char* summary, const char* footer = "");

/// Leaves the command out of help and manual, for commands that programs call.
void hideFromHelp(CLI::App& command);

/// Adds a positional argument. An optional one may be left out, which differs from an empty string. A list
/// takes all arguments that follow, at least one if required.
void addPositional(CLI::App& command, const char* name, std::string& target, Need need, const char* help);
void addPositional(CLI::App& command, const char* name, std::optional<std::string>& target, const char* help);
void addPositional(CLI::App& command, const char* name, std::vector<std::string>& target, Need need,
                   const char* help);

/// Adds an option with a value, which help calls `valueName`.
void addOption(CLI::App& command, const char* names, std::string& target, const char* valueName,
               const char* help, Need need = Need::optional);

/// Adds an option with an integer from `least` to `most`.
void addOption(CLI::App& command, const char* names, int& target, int least, int most, const char* valueName,
               const char* help);

/// Throws CommandError when more than one of the files that a command reads is "-", standard input.
void requireOneStandardInput(const std::vector<std::string>& files);

/// Adds an option or positional argument that takes one of `choices`.
void addChoice(CLI::App& command, const char* names, std::string& target,
               const std::vector<std::string>& choices, const char* help, Need need = Need::optional);

/// Adds an option without a value.
void addFlag(CLI::App& command, const char* names, bool& target, const char* help);

/// Adds --factory, which makes a command show factory values instead of effective ones.
void addFactoryFlag(CLI::App& command, bool& target);

/// Refuses the empty string as the value of an option.
void refuseEmpty(CLI::Option& option);

/// Returns the format to write for a command with a --format of its own: the one that it names, json if
/// --json is given, else `usual`. Throws CommandError if --json and --format disagree.
[[nodiscard]] std::string chosenFormat(const std::string& named, const Output& out, const char* usual);

/// Restricts the value of an option to `choices`, which help shows in place of a type.
void setChoices(CLI::Option& option, const std::vector<std::string>& choices);

/// Returns the choices of an option; empty if any value is allowed.
[[nodiscard]] std::vector<std::string> choicesOf(const CLI::Option& option);

/// Returns the parser of the whole command line, of which the command is a part.
[[nodiscard]] const CLI::App& programOf(const CLI::App& command);

/// Returns the command of that name; null if the program has none.
[[nodiscard]] const CLI::App* findCommand(const CLI::App& program, std::string_view name);

}  // namespace vx::tool
