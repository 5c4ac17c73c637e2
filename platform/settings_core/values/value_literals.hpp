#pragma once

// The common result of parsing either notation of a value: its literals in rows and columns. An array is made
// from them.

#include <settings_core/values/value_parsing.hpp>

#include <foundation/verdixdata/array.hpp>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vx::core {

/// A string, or the token of any other literal.
struct Literal
{
    std::size_t offset = 0;  ///< in the input, in bytes
    bool isString = false;
    std::string_view token = {};  ///< unless isString: a number, true, false, ...
    std::u16string string = {};   ///< decoded, if isString
};

/// The brackets around a value.
enum class Brackets : std::uint8_t
{
    none,    ///< none: a single literal
    square,  ///< a list or matrix
    nested,  ///< in JSON, a list of rows, which a cell of strings is not written as
    curly    ///< a cell
};

/// A value as literals in rows and columns.
struct LiteralGrid
{
    std::size_t offset = 0;  ///< of the whole value
    Brackets brackets = Brackets::none;
    std::size_t rows = 1;
    std::size_t columns = 0;
    std::vector<Literal> literals = {};  ///< row by row
};

/// Parses a logical value: true, on, yes, false, off or no, in any letter case; nothing for any other word.
[[nodiscard]] std::optional<bool> parseLogical(std::string_view word);

/// Whether a string can be between two of these characters.
[[nodiscard]] constexpr bool isQuote(char c) noexcept
{
    return c == '"' || c == '\'';
}

/// Converts the literals to an array for this target. Throws ParseError at the first literal that does not
/// fit.
[[nodiscard]] foundation::verdixdata::Array arrayOf(LiteralGrid&& grid, const ParseTarget& target);

}  // namespace vx::core
