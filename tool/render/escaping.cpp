#include "render/escaping.hpp"

#include <boost/algorithm/string/replace.hpp>

namespace vx::tool {

std::string escapeHtml(std::string_view string)
{
    std::string result;
    result.reserve(string.size() + string.size() / 8);
    for (const char c : string) {
        switch (c) {
        case '&':
            result += "&amp;";
            break;
        case '<':
            result += "&lt;";
            break;
        case '>':
            result += "&gt;";
            break;
        case '"':
            result += "&quot;";
            break;
        case '\'':
            result += "&#39;";
            break;
        default:
            result += c;
            break;
        }
    }
    return result;
}

std::string cssString(std::string_view string)
{
    constexpr std::string_view digits = "0123456789abcdef";
    std::string result = "'";
    for (const char c : string) {
        const auto byte = static_cast<unsigned char>(c);
        const bool isControl = byte < 0x20 || byte == 0x7f;
        if (isControl || c == '\'' || c == '\\') {
            result += {'\\', digits[byte >> 4U], digits[byte & 0xfU], ' '};
        } else {
            result += c;
        }
    }
    return result += '\'';
}

std::string csvField(std::string field)
{
    if (field.find_first_of(",\"\r\n") == std::string::npos) {
        return field;
    }
    boost::replace_all(field, "\"", "\"\"");
    return '"' + field + '"';
}

std::string markdownCell(std::string cell)
{
    boost::replace_all(cell, "\\", "\\\\");
    boost::replace_all(cell, "|", "\\|");
    boost::replace_all(cell, "<", "&lt;");
    return cell;
}

std::string markdownText(std::string_view string)
{
    std::string text;
    for (const char c : string) {
        if (std::string_view("\\`*_[]<>|").find(c) != std::string_view::npos) {
            text += '\\';
        }
        text += c == '\n' ? ' ' : c;
    }
    return text;
}

}  // namespace vx::tool
