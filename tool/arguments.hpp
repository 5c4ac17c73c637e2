#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace vx::tool {

// The words in which a verb states what may stand behind it. Few sources see the parser itself: it takes
// longer to compile than most verbs, and every source that includes it makes the command larger.
//
// A target is filled in when the command line is parsed; it keeps what it holds where the argument is left
// out.

enum class Need : std::uint8_t
{
    optional,
    required
};

/// What help says: `summary` in the list of verbs too, `footer` below all options.
void describe(CLI::App& verb, const char* summary, const char* footer = "");

/// Leaves the verb out of help and manual: programs call it, not people.
void hide(CLI::App& verb);

/// A word that is known by its place. Where the target is a list, all words that follow, one at least if
/// required.
void addOperand(CLI::App& verb, const char* name, std::string& target, Need need, const char* help);
void addOperand(CLI::App& verb, const char* name, std::vector<std::string>& target, Need need,
                const char* help);

/// An option with a value, which help calls `valueName`.
void addOption(CLI::App& verb, const char* names, std::string& target, const char* valueName,
               const char* help, Need need = Need::optional);

/// An option with a whole number from `least` to `most`.
void addOption(CLI::App& verb, const char* names, int& target, int least, int most, const char* valueName,
               const char* help);

/// An option or operand that takes one of these words only.
void addChoice(CLI::App& verb, const char* names, std::string& target, const std::vector<std::string>& words,
               const char* help, Need need = Need::optional);

/// An option without a value.
void addFlag(CLI::App& verb, const char* names, bool& target, const char* help);

/// Makes an option take one of these words only, which help shows in place of a type.
void limitTo(CLI::Option& option, const std::vector<std::string>& words);

/// The words that an option was limited to; empty for one that was not.
[[nodiscard]] std::vector<std::string> choicesOf(const CLI::Option& option);

/// The command line that the verb is a part of.
[[nodiscard]] const CLI::App& wholeOf(const CLI::App& verb);

}  // namespace vx::tool
