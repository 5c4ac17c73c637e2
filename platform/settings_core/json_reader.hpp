#pragma once

// Reads JSON so that it can be pointed at and edited in place: every value and member knows where it stands
// and how it is written. Numbers keep their digits and texts every UTF-16 unit, so nothing is lost on the way
// to a value of the setting's own class.

#include <settings_core/text_position.hpp>

#include <foundation/export.hpp>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vx::core {

/// The kinds of values that JSON has.
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

/// A value of a JSON text, which must outlive it.
struct JsonValue
{
    JsonKind kind = JsonKind::null;   ///< what `text` is
    std::size_t offset = 0;           ///< of its first byte, from the beginning of the JSON text
    std::string_view text;            ///< as it is written
    std::vector<JsonValue> elements;  ///< of an array, in their order
    std::vector<JsonMember> members;  ///< in their order, also those whose name occurs twice

    /// Offset behind its last byte.
    [[nodiscard]] std::size_t end() const noexcept { return offset + text.size(); }
};

/// A member of an object, with its place in the text.
struct JsonMember
{
    std::size_t offset = 0;     ///< of the name's opening quote
    std::string_view nameText;  ///< the name as it is written, with its quotes
    std::string name;           ///< what the name stands for, as UTF-8
    JsonValue value;            ///< behind the colon
};

/// Reads one JSON text, strictly by the standard; a byte-order mark may precede it. Raises ParseError at the
/// first byte that does not fit, and for arrays and objects in each other more than 100 deep.
[[nodiscard]] VX_API JsonValue readJson(std::string_view text);

/// The text that a value of kind `text` stands for.
[[nodiscard]] VX_API std::u16string decodedString(const JsonValue& value);

/// A text as a JSON literal with its quotes. Line ends and other control characters are escaped, and so are
/// surrogates without their partner, which UTF-8 cannot hold.
[[nodiscard]] VX_API std::string jsonLiteral(std::u16string_view text);

/// "an object", "a number" and so on.
[[nodiscard]] VX_API std::string_view kindName(JsonKind kind) noexcept;

}  // namespace vx::core
