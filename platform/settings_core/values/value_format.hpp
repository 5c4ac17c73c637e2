#pragma once

// Formatting of values for people, in the scripting language's notation. Parsing is in value_parsing.hpp.

#include <foundation/export.hpp>
#include <foundation/verdixdata/array.hpp>

#include <cstddef>
#include <string>
#include <string_view>

namespace vx::core {

/// Returns the shortest decimal that parses to this number: NaN, Inf or -Inf if it is not finite. Whole
/// numbers up to 2^53 have no exponent.
[[nodiscard]] VX_API std::string formatNumber(double number);

/// Formats a value: true, 12, [14 0 255], [1 2; 3 4], {"a","b"}. A character vector or string scalar has no
/// quotes; strings in cells and arrays have double quotes, with quotes inside doubled. Empty numeric arrays
/// are
/// [], empty cells {}; an unassigned value is the empty string.
[[nodiscard]] VX_API std::string formatValue(const foundation::verdixdata::Array& value);

/// Formats a value on one line of at most `width` characters: all strings are quoted, unprintable characters
/// are escaped as by data::escapeUnprintable, and "…" marks the end of a truncated value.
[[nodiscard]] VX_API std::string formatValueOnOneLine(const foundation::verdixdata::Array& value,
                                                      std::size_t width);

/// Returns a UTF-8 string of at most `width` characters; "…" marks the end of a truncated one.
[[nodiscard]] std::string truncate(std::string text, std::size_t width);

/// Returns class and size: "int32, 1-by-2".
[[nodiscard]] VX_API std::string formatClassAndSize(const foundation::verdixdata::Array& value);

/// Returns "1-by-2".
[[nodiscard]] VX_API std::string formatDimensions(const foundation::verdixdata::ArrayDimensions& dimensions);

/// Returns the number of characters (code points) of a UTF-8 string.
[[nodiscard]] VX_API std::size_t characterCount(std::string_view utf8) noexcept;

}  // namespace vx::core
