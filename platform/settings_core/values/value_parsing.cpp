#include <settings_core/values/value_format.hpp>
#include <settings_core/values/value_literals.hpp>
#include <settings_core/values/value_parsing.hpp>

#include <foundation/verdixdata/text.hpp>
#include <verdix/settings/internal/values.hpp>

#include <algorithm>
#include <charconv>
#include <system_error>
#include <utility>

namespace vx::core {

namespace {

using foundation::verdixdata::Array;
using foundation::verdixdata::ArrayType;

constexpr std::string_view whitespace = " \t\r\n";

/// Parser for the scripting language's notation.
class LiteralParser
{
public:
    explicit LiteralParser(std::string_view text) : text_(text) { skipWhitespace(); }

    LiteralGrid value()
    {
        LiteralGrid grid;
        grid.offset = at_;
        if (peek() == '[' || peek() == '{') {
            bracketed(grid);
        } else {
            grid.literals.push_back(literal("a value"));
            grid.columns = 1;
        }
        skipWhitespace();
        if (at_ != text_.size()) {
            fail("expected nothing after the value");
        }
        return grid;
    }

private:
    [[noreturn]] void fail(const std::string& message) const { throw ParseError(at_, message); }

    [[nodiscard]] char peek() const noexcept { return at_ < text_.size() ? text_[at_] : '\0'; }

    void skipWhitespace() noexcept { at_ = std::min(text_.find_first_not_of(whitespace, at_), text_.size()); }

    void bracketed(LiteralGrid& grid)
    {
        const char close = peek() == '[' ? ']' : '}';
        grid.brackets = close == ']' ? Brackets::square : Brackets::curly;
        ++at_;
        skipWhitespace();
        if (peek() != close) {
            rows(grid, close);
        }
        ++at_;
    }

    void rows(LiteralGrid& grid, char close)
    {
        grid.columns = row(grid, close);
        while (peek() == ';') {
            ++at_;
            skipWhitespace();
            const std::size_t start = at_;
            const std::size_t columns = row(grid, close);
            ++grid.rows;
            if (columns != grid.columns) {
                throw ParseError(start, "row " + std::to_string(grid.rows) + " has " +
                                            std::to_string(columns) + " elements, expected " +
                                            std::to_string(grid.columns) + " as in the first row");
            }
        }
    }

    /// Parses a row, without the ";" or bracket that ends it, and returns the number of elements.
    std::size_t row(LiteralGrid& grid, char close)
    {
        std::size_t count = 0;
        bool ended = false;
        while (!ended) {
            grid.literals.push_back(literal("an element"));
            ++count;
            ended = !separator(close);
        }
        return count;
    }

    /// Skips what separates two elements. Returns whether another element must follow in this row.
    bool separator(char close)
    {
        const std::size_t start = at_;
        skipWhitespace();
        if (peek() == ',') {
            ++at_;
            skipWhitespace();
            return true;
        }
        if (peek() == ';' || peek() == close) {
            return false;
        }
        if (at_ == text_.size() || at_ == start) {
            fail(std::string("expected whitespace, \",\", \";\" or \"") + close + "\" after an element");
        }
        return true;
    }

    Literal literal(const char* what)
    {
        Literal result;
        result.offset = at_;
        if (isQuote(peek())) {
            result.isString = true;
            result.string = quoted();
            return result;
        }
        const std::size_t end = std::min(text_.find_first_of(" \t\r\n,;[]{}\"'", at_), text_.size());
        if (end == at_) {
            fail(std::string("expected ") + what);
        }
        result.token = text_.substr(at_, end - at_);
        at_ = end;
        return result;
    }

    std::u16string quoted()
    {
        const char quote = peek();
        std::string content;
        for (;;) {
            const std::size_t end = text_.find(quote, ++at_);
            if (end == std::string_view::npos) {
                at_ = text_.size();
                fail(std::string("expected a closing ") + quote);
            }
            content.append(text_, at_, end - at_);
            at_ = end + 1;
            if (peek() != quote) {
                return foundation::verdixdata::toUtf16(content);
            }
            content += quote;
        }
    }

    std::string_view text_;
    std::size_t at_ = 0;
};

/// Whether the input is a string without quotes: it can be nothing else for this target.
bool isUnquotedString(std::string_view text, const ParseTarget& target)
{
    const std::size_t start = std::min(text.find_first_not_of(whitespace), text.size());
    const char first = start < text.size() ? text[start] : '\0';
    if (isQuote(first)) {
        return false;
    }
    if (target.elementClass == ArrayType::CHAR) {
        return true;
    }
    const bool isNumberLike = first == '+' || first == '-' || first == '.' || (first >= '0' && first <= '9');
    const bool isBracketed = first == '[' || first == '{';
    if (target.elementClass == ArrayType::STRING) {
        return !isBracketed;
    }
    if (!target.elementClass) {
        const std::string_view word = text.substr(start, text.find_last_not_of(whitespace) + 1 - start);
        return !isBracketed && !isNumberLike && word != "true" && word != "false";
    }
    return target.acceptsColourNames && !isBracketed && !isNumberLike;
}

/// Returns the value of #ff0000 or #f00 as a list; nothing for any other text.
std::optional<std::string> colourAsList(std::string_view text, bool isNormalised)
{
    text = text.substr(std::min(text.find_first_not_of(whitespace), text.size()));
    text = text.substr(0, text.find_last_not_of(whitespace) + 1);
    const std::size_t digits = text.size() / 3;  // of each part
    if (!text.starts_with('#') || (text.size() != 4 && text.size() != 7)) {
        return std::nullopt;
    }
    std::string list = "[";
    for (std::size_t at = 1; at < text.size(); at += digits) {
        unsigned part = 0;
        const char* const end = text.data() + at + digits;
        const auto [stop, error] = std::from_chars(text.data() + at, end, part, 16);
        if (error != std::errc() || stop != end) {
            return std::nullopt;
        }
        part *= digits == 1 ? 17 : 1;
        list += " " + formatNumber(isNormalised ? part / 255.0 : part);
    }
    return list + " ]";
}

LiteralGrid singleString(std::string_view text)
{
    LiteralGrid grid;
    grid.columns = 1;
    grid.literals.push_back({.isString = true, .string = foundation::verdixdata::toUtf16(text)});
    return grid;
}

}  // namespace

Array parseValue(std::string_view text, const ParseTarget& target)
{
    const std::size_t valid = validUtf8PrefixLength(text);
    if (valid != text.size()) {
        throw ParseError(valid, "invalid UTF-8");
    }
    if (target.colour) {
        using Colour = ::settings::core::SettingValueValidator::Colour;
        if (const auto list = colourAsList(text, target.colour == Colour::normalised)) {
            return arrayOf(LiteralParser(*list).value(), target);
        }
    }
    return arrayOf(isUnquotedString(text, target) ? singleString(text) : LiteralParser(text).value(), target);
}

}  // namespace vx::core
