#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

// Lengths of lines, in columns of a terminal. Strings are UTF-8 without unprintable characters.

namespace vx::tool {

/// Returns the number of columns that a string takes: two for a wide character, none for a combining one.
[[nodiscard]] std::size_t displayWidth(std::string_view string);

/// Returns a string with an ellipsis in place of what exceeds `width` columns, at least one.
[[nodiscard]] std::string cutToWidth(std::string_view string, std::size_t width);

/// Returns the lines of a string that is broken between words, after | and before wide characters, so that
/// none exceeds `width` columns. A longer word has a line of its own.
[[nodiscard]] std::vector<std::string> breakLine(std::string_view string, std::size_t width);

/// Returns the width of the terminal that standard output is: $COLUMNS, or else what it says itself; 80 if
/// neither is known.
[[nodiscard]] std::size_t terminalWidth();

}  // namespace vx::tool
