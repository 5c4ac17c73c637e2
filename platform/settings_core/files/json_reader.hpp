#pragma once

// Parses JSON and keeps the position and the source text of every value and member, for diagnostics with line
// and column and for edits in place. Numbers keep their digits and strings their UTF-16 units, so a value of
// any class can be made from them without loss.

#include <settings_core/files/text_position.hpp>

#include <foundation/export.hpp>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vx::core {

/// The kinds of JSON values.
enum class JsonKind : std::uint8_t
{
    null,
    boolean,
    number,
    string,
    array,
    object
};

struct JsonMember;

/// A JSON value. It refers to the JSON text, which must outlive it.
struct JsonValue
{
    JsonKind kind = JsonKind::null;   ///< of the value
    std::size_t offset = 0;           ///< of its first byte in the JSON text
    std::string_view text;            ///< its source text
    std::vector<JsonValue> elements;  ///< of an array
    std::vector<JsonMember> members;  ///< of an object, in the file's order, duplicate names included

    /// Returns the offset after its last byte.
    [[nodiscard]] std::size_t end() const noexcept { return offset + text.size(); }
};

/// A member of a JSON object.
struct JsonMember
{
    std::size_t offset = 0;     ///< of the name's opening quote
    std::string_view nameText;  ///< source text of the name, with its quotes
    std::string name;           ///< decoded, as UTF-8
    JsonValue value;            ///< of the member
};

/// Parses a JSON text strictly as in RFC 8259; a byte-order mark may precede it. Throws ParseError for
/// invalid JSON, for arrays and objects that are nested deeper than 100, and for more than 1,000,000 values.
[[nodiscard]] VX_API JsonValue readJson(std::string_view text);

/// Decodes a value of kind string.
[[nodiscard]] VX_API std::u16string decodedString(const JsonValue& value);

/// Encodes a string as a JSON literal with quotes. Control characters are escaped, and so are unpaired
/// surrogates, which UTF-8 cannot represent.
[[nodiscard]] VX_API std::string jsonLiteral(std::u16string_view string);

}  // namespace vx::core
