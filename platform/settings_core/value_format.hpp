#pragma once

// Values as a person reads and types them, in the form of the scripting language.

#include <foundation/export.hpp>
#include <foundation/verdixdata/array.hpp>

#include <cstddef>
#include <string>
#include <string_view>

namespace vx::core {

/// The shortest decimal text that reads back as this number. Whole numbers up to 2^53 have no exponent; what
/// is not finite is NaN, Inf or -Inf.
[[nodiscard]] VX_API std::string formatNumber(double number);

/// A value as text: true, 12, [14 0 255], [1 2; 3 4], {"a","b"}. A character row or a single string stands
/// bare; inside cells and arrays texts have double quotes, doubled where they occur in the text. Empty
/// numeric arrays are [], empty cells {}; an unassigned value gives the empty text.
[[nodiscard]] VX_API std::string formatValue(const foundation::verdixdata::Array& value);

/// The same on one line of at most `width` characters, with quotes around every text, control characters
/// written as `\n`, `\t` or `\xNN`, and "…" for what was cut.
[[nodiscard]] VX_API std::string formatValueOnOneLine(const foundation::verdixdata::Array& value,
                                                      std::size_t width);

/// Class and size: "int32, 1-by-2".
[[nodiscard]] VX_API std::string formatClassAndSize(const foundation::verdixdata::Array& value);

/// "1-by-2".
[[nodiscard]] VX_API std::string formatDimensions(const foundation::verdixdata::ArrayDimensions& dimensions);

/// Number of characters (code points) in a UTF-8 text.
[[nodiscard]] VX_API std::size_t characterCount(std::string_view utf8) noexcept;

}  // namespace vx::core
