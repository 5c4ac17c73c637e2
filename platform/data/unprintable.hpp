#pragma once

#include <foundation/export.hpp>

#include <cstdint>
#include <string>
#include <string_view>

namespace vx::data {

/// How an unprintable character is written.
enum class EscapeStyle : std::uint8_t
{
    text,  ///< for people: `\n`, `\t`, `\x1b` for ASCII and for bytes that are not UTF-8, else `\u202e`
    json   ///< inside a JSON string: `\u001b`, and U+FFFD for each byte that is not UTF-8
};

/// Returns the string with everything escaped that a terminal obeys instead of showing it, so that foreign
/// strings can neither control the terminal nor disguise themselves: control characters (C0, DEL, C1), line
/// breaks among them, bidirectional controls, and bytes that are not UTF-8. Escaping twice changes nothing
/// more.
[[nodiscard]] VX_API std::string escapeUnprintable(std::string_view string,
                                                   EscapeStyle style = EscapeStyle::text);

}  // namespace vx::data
