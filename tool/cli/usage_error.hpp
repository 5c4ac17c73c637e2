#pragma once

#include <string>

namespace CLI {
class App;
class ParseError;
}  // namespace CLI

namespace vx::tool {

/// Returns the message for an invalid command line, with suggestions for an unknown command or option.
[[nodiscard]] std::string usageError(const CLI::App& program, const CLI::ParseError& error);

/// Returns the message for a name that no command of the program has, with suggestions.
[[nodiscard]] std::string unknownCommand(const CLI::App& program, const std::string& name);

}  // namespace vx::tool
