#include <data/unprintable.hpp>

#include <boost/locale/utf.hpp>

#include <algorithm>

namespace vx::data {

namespace {

using boost::locale::utf::code_point;

constexpr bool isPrintableAscii(char c)
{
    return c >= 0x20 && c < 0x7f;
}

constexpr bool isControl(code_point point)
{
    return point < 0x20 || (point >= 0x7f && point < 0xa0);
}

/// Whether the character changes the direction of the text around it.
constexpr bool isBidirectionalControl(code_point point)
{
    return point == 0x61c || point == 0x200e || point == 0x200f || (point >= 0x202a && point <= 0x202e) ||
           (point >= 0x2066 && point <= 0x2069);
}

void appendEscape(std::string& text, std::string_view prefix, unsigned digits, code_point point)
{
    text += prefix;
    while (digits-- > 0) {
        text += "0123456789abcdef"[(point >> (4 * digits)) & 0xfU];
    }
}

void appendEscaped(std::string& text, code_point point, EscapeStyle style)
{
    if (style == EscapeStyle::json || point >= 0x80) {
        appendEscape(text, "\\u", 4, point);
    } else if (point == '\n' || point == '\t') {
        text += point == '\n' ? "\\n" : "\\t";
    } else {
        appendEscape(text, "\\x", 2, point);
    }
}

void appendInvalid(std::string& text, char byte, EscapeStyle style)
{
    if (style == EscapeStyle::json) {
        text += "\\ufffd";
    } else {
        appendEscape(text, "\\x", 2, static_cast<unsigned char>(byte));
    }
}

}  // namespace

std::string escapeUnprintable(std::string_view string, EscapeStyle style)
{
    std::string text;
    text.reserve(string.size());
    const char* position = string.data();
    const char* const end = position + string.size();
    while (position != end) {
        const char* const ascii = position;
        position = std::find_if_not(position, end, isPrintableAscii);
        text.append(ascii, position);
        if (position == end) {
            break;
        }
        const char* const start = position;
        const code_point point = boost::locale::utf::utf_traits<char>::decode(position, end);
        if (!boost::locale::utf::is_valid_codepoint(point)) {
            appendInvalid(text, *start, style);
            position = start + 1;  // the next byte may begin a valid sequence
        } else if (isControl(point) || isBidirectionalControl(point)) {
            appendEscaped(text, point, style);
        } else {
            text.append(start, position);
        }
    }
    return text;
}

}  // namespace vx::data
