#pragma once

#include <string>
#include <vector>

namespace CLI {
class Option;
}

namespace vx::tool {

/// Makes an option take one of these words only, which help shows in place of a type.
CLI::Option* limitTo(CLI::Option* option, const std::vector<std::string>& words);

/// The words that an option was limited to; empty for one that was not.
[[nodiscard]] std::vector<std::string> choicesOf(const CLI::Option& option);

}  // namespace vx::tool
