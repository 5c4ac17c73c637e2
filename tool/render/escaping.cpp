#include "render/escaping.hpp"

#include <data/unprintable.hpp>

#include <boost/algorithm/string/replace.hpp>

#include <charconv>
#include <cmath>

namespace vx::tool {

namespace {

bool isNumber(std::string_view field)
{
    double number = 0;
    const auto [end, error] = std::from_chars(field.data(), field.data() + field.size(), number);
    const bool isFinite = error == std::errc() && end == field.data() + field.size() && std::isfinite(number);
    return isFinite || field == "-Inf";
}

bool looksLikeFormula(std::string_view field)
{
    constexpr std::string_view firstCharacters = "=+-@\t\r";
    return !field.empty() && firstCharacters.find(field.front()) != std::string_view::npos &&
           !isNumber(field);
}

}  // namespace

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
    if (looksLikeFormula(field)) {
        field.insert(field.begin(), '\'');
    } else if (field.find_first_of(",\"\r\n") == std::string::npos) {
        return field;
    }
    boost::replace_all(field, "\"", "\"\"");
    return '"' + field + '"';
}

std::string markdownText(std::string_view string)
{
    std::string text;
    for (const char c : string) {
        if (std::string_view("\\`*_~[]<>|&").find(c) != std::string_view::npos) {
            text += '\\';
        }
        text += c == '\n' ? ' ' : c;
    }
    return data::escapeUnprintable(text);
}

std::string markdownCode(std::string_view string)
{
    std::string fence = "`";
    while (string.find(fence) != std::string_view::npos) {
        fence += '`';
    }
    const std::string_view space =
        fence.size() == 1 ? "" : " ";  // the string may begin or end with a backtick
    std::string code = fence;
    return code.append(space).append(data::escapeUnprintable(string)).append(space).append(fence);
}

}  // namespace vx::tool
