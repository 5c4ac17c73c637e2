#pragma once

// Parsing of values in the scripting language's notation and in JSON. Formatting is in value_format.hpp.

#include <settings_core/files/json_reader.hpp>

#include <foundation/export.hpp>
#include <foundation/verdixdata/array.hpp>
#include <settings/core/factory_setting_properties.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vx::core {

/// Target type for parsing a value of a setting.
struct ParseTarget
{
    /// Class to parse to; nothing derives it from the notation: string, logical, double or cell of strings.
    std::optional<foundation::verdixdata::ArrayType> elementClass = std::nullopt;
    /// Whether a string, the name of a colour, is allowed instead of numbers.
    bool acceptsColourNames = false;
    /// The value is a colour in this representation, or one of its names.
    std::optional<::settings::core::SettingValueValidator::Colour> colour = std::nullopt;
};

/// The notation in which a user writes a value.
enum class Notation : std::uint8_t
{
    script,  ///< the scripting language's, see parseValue
    json     ///< JSON as in settings files, see parseJsonValue
};

/// Parses a value in the scripting language's notation: true, 12, -1.5e3, [14 0 255], [1,2;3,4], {"a","b"},
/// {} and strings in single or double quotes, which are doubled inside. Quotes may be omitted where the value
/// can only be a string; it then includes all whitespace. A logical value may also be on, off, yes or no, in
/// any letter case, and a colour \#ff0000 or \#f00. Throws ParseError; UnsuitableValue if the notation is right, but
/// not the class.
[[nodiscard]] VX_API foundation::verdixdata::Array parseValue(std::string_view text,
                                                              const ParseTarget& target);

/// Parses a value in the JSON notation of settings files, see valueFromJson, or of exported trees:
/// {"class": "int32", "dims": [1, 2], "data": [180, 45]}, with the elements column by column. Throws
/// ParseError.
[[nodiscard]] VX_API foundation::verdixdata::Array parseJsonValue(std::string_view text,
                                                                  const ParseTarget& target);

/// Converts a JSON value to an array. A number, true or false is a scalar, an array a row, an array of arrays
/// the rows of a matrix, a string a string, an array of strings a cell. "NaN", "Inf" and "-Inf" are allowed
/// as doubles, null as a missing string. If nothing states the class, a list of rows of only these is a
/// matrix:
/// [["NaN"]]. Throws ParseError with an offset in the JSON text of the value.
[[nodiscard]] VX_API foundation::verdixdata::Array valueFromJson(const JsonValue& json,
                                                                 const ParseTarget& target);

/// Formats a value as JSON on one line. valueFromJson restores it bit by bit, except for the payload of a NaN
/// and for a 0-by-0 character vector, which becomes 1-by-0. Throws std::invalid_argument for values that a
/// settings file cannot hold: unassigned values, more than two dimensions, no rows, character arrays or cells
/// of more than one row, cells of anything but character vectors.
[[nodiscard]] VX_API std::string valueToJson(const foundation::verdixdata::Array& value);

/// As valueToJson, so that valueFromJson restores the value for this target even if that has no class.
[[nodiscard]] VX_API std::string valueToJson(const foundation::verdixdata::Array& value,
                                             const ParseTarget& target);

}  // namespace vx::core
