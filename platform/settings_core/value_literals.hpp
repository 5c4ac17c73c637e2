#pragma once

// Between the written form of a value, in whichever notation, and the array: its literals in rows and
// columns.

#include <settings_core/parse_target.hpp>

#include <foundation/verdixdata/array.hpp>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vx::core {

struct Literal
{
    std::size_t offset = 0;  ///< in the text that is read
    bool isString = false;
    std::string_view token = {};  ///< of what is no text: a number, true, false, ...
    std::u16string string = {};
};

enum class Brackets : std::uint8_t
{
    none,    ///< one literal alone
    square,  ///< a list or matrix
    curly    ///< a cell
};

struct LiteralGrid
{
    std::size_t offset = 0;  ///< of the whole value
    Brackets brackets = Brackets::none;
    std::size_t rows = 1;
    std::size_t columns = 0;
    std::vector<Literal> literals = {};  ///< row after row
};

/// The array that the literals make up in a setting of this form. Raises ParseError at the first literal that
/// does not fit, saying what is expected.
[[nodiscard]] foundation::verdixdata::Array arrayOf(LiteralGrid&& grid, const ParseTarget& form);

}  // namespace vx::core
