#pragma once

// From what a person or a file says to a value. The way back to what a person reads is in value_text.hpp.

#include <settings_core/json_reader.hpp>
#include <settings_core/parse_target.hpp>

#include <foundation/export.hpp>
#include <foundation/verdixdata/array.hpp>

#include <string>
#include <string_view>

namespace vx::core {

/// A value in the scripting language's form: true, 12, -1.5e3, [14 0 255], [1,2;3,4], {"a","b"}, {} and texts
/// with or without quotes, single or double, which are doubled inside. A text without quotes is taken as it
/// stands, blanks included. Raises ParseError.
[[nodiscard]] VX_API foundation::verdixdata::Array parseValue(std::string_view text, const ParseTarget& form);

/// A value in the form that settings files have: see valueFromJson. Raises ParseError.
[[nodiscard]] VX_API foundation::verdixdata::Array parseJsonValue(std::string_view text,
                                                                  const ParseTarget& form);

/// The value that a JSON value stands for: numbers, true and false for scalars, lists for rows, lists of
/// lists for the rows of a matrix, texts, lists of texts for cells. "NaN", "Inf" and "-Inf" may stand in
/// place of a double, null for a string that is missing. Raises ParseError with an offset in the text that
/// the JSON value is part of.
[[nodiscard]] VX_API foundation::verdixdata::Array valueFromJson(const JsonValue& json,
                                                                 const ParseTarget& form);

/// The same value as JSON on one line, from which valueFromJson makes it again, equal in every bit but for
/// the payload of a NaN, and the 0-by-0 text, which comes back as 1-by-0. Raises std::invalid_argument for
/// what settings files cannot hold: an unassigned value, more than two dimensions, no rows, characters or a
/// cell in other than one row, a cell of anything but texts.
[[nodiscard]] VX_API std::string valueToJson(const foundation::verdixdata::Array& value);

}  // namespace vx::core
