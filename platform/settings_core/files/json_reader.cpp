#include <settings_core/files/json_reader.hpp>

#include <foundation/verdixdata/text.hpp>

#include <boost/locale/utf.hpp>

#include <algorithm>
#include <charconv>
#include <iterator>
#include <utility>

namespace vx::core {

namespace {

constexpr int maxDepth = 100;
constexpr std::size_t maxValues = 1'000'000;  // each takes 80 bytes or more, and two of the text

constexpr bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

constexpr bool isHexDigit(char c)
{
    return isDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

constexpr bool isWhitespace(char c)
{
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

constexpr bool isControl(char c)
{
    return static_cast<unsigned char>(c) < 0x20;
}

// The letters of two-character escapes, and the characters they stand for.
constexpr std::string_view escapeLetters = "\"\\/bfnrt";
constexpr std::u16string_view escapedUnits = u"\"\\/\b\f\n\r\t";

char16_t unitOf(std::string_view fourHexDigits)
{
    std::uint16_t unit = 0;
    std::from_chars(fourHexDigits.data(), fourHexDigits.data() + fourHexDigits.size(), unit, 16);
    return unit;
}

std::u16string decode(std::string_view literal)
{
    const std::string_view content = literal.substr(1, literal.size() - 2);
    std::u16string string;
    string.reserve(content.size());
    for (std::size_t at = 0; at < content.size();) {
        const std::size_t escape = std::min(content.find('\\', at), content.size());
        string += foundation::verdixdata::toUtf16(content.substr(at, escape - at));
        at = escape;
        if (at == content.size()) {
            break;
        }
        const char letter = content[at + 1];
        string +=
            letter == 'u' ? unitOf(content.substr(at + 2, 4)) : escapedUnits[escapeLetters.find(letter)];
        at += letter == 'u' ? 6 : 2;
    }
    return string;
}

std::string decodeName(std::string_view literal)
{
    return literal.find('\\') == std::string_view::npos ? std::string(literal.substr(1, literal.size() - 2))
                                                        : foundation::verdixdata::toUtf8(decode(literal));
}

class Parser
{
public:
    explicit Parser(std::string_view text) : text_(text) {}

    JsonValue document()
    {
        const std::size_t valid = validUtf8PrefixLength(text_);
        if (valid != text_.size()) {
            throw ParseError(valid, "invalid UTF-8: save the file as UTF-8");
        }
        at_ = text_.starts_with(byteOrderMark) ? byteOrderMark.size() : 0;
        skipWhitespace();
        JsonValue root;
        read(root, 0);
        skipWhitespace();
        if (at_ != text_.size()) {
            fail("expected nothing after the value");
        }
        return root;
    }

private:
    [[noreturn]] void fail(const std::string& message) const
    {
        const std::string_view rest = text_.substr(at_);
        const bool isComment = rest.starts_with("//") || rest.starts_with("/*") || rest.starts_with('#');
        throw ParseError(at_, isComment ? "JSON has no comments: remove it" : message);
    }

    [[nodiscard]] char peek() const noexcept { return at_ < text_.size() ? text_[at_] : '\0'; }

    bool take(char c) noexcept
    {
        const bool isHere = at_ < text_.size() && text_[at_] == c;
        at_ += isHere ? 1 : 0;
        return isHere;
    }

    /// Takes a comma, which must not be the last one before `close`.
    bool takeComma(char close)
    {
        const std::size_t comma = at_;
        if (!take(',')) {
            return false;
        }
        skipWhitespace();
        if (peek() == close) {
            throw ParseError(comma, std::string("remove the comma before ") + close);
        }
        return true;
    }

    void skipWhitespace() noexcept
    {
        while (at_ < text_.size() && isWhitespace(text_[at_])) {
            ++at_;
        }
    }

    void read(JsonValue& value, int depth)
    {
        if (depth > maxDepth) {
            fail("nesting deeper than 100");
        }
        if (++count_ > maxValues) {
            fail("more than 1000000 values");
        }
        value.offset = at_;
        fill(value, depth);
        value.text = text_.substr(value.offset, at_ - value.offset);
    }

    void fill(JsonValue& value, int depth)
    {
        switch (peek()) {
        case '{':
            value.kind = JsonKind::object;
            object(value, depth);
            break;
        case '[':
            value.kind = JsonKind::array;
            array(value, depth);
            break;
        case '"':
            value.kind = JsonKind::string;
            literal();
            break;
        case 't':
        case 'f':
            value.kind = JsonKind::boolean;
            keyword(peek() == 't' ? "true" : "false");
            break;
        case 'n':
            value.kind = JsonKind::null;
            keyword("null");
            break;
        default:
            value.kind = JsonKind::number;
            number();
            break;
        }
    }

    void object(JsonValue& value, int depth)
    {
        take('{');
        skipWhitespace();
        if (take('}')) {
            return;
        }
        do {
            skipWhitespace();
            readMember(value.members.emplace_back(), depth);
            skipWhitespace();
        } while (takeComma('}'));
        if (!take('}')) {
            fail("expected \",\" or \"}\" after a member");
        }
    }

    void readMember(JsonMember& member, int depth)
    {
        member.offset = at_;
        if (peek() != '"') {
            fail("expected a name in double quotes");
        }
        literal();
        member.nameText = text_.substr(member.offset, at_ - member.offset);
        member.name = decodeName(member.nameText);
        skipWhitespace();
        if (!take(':')) {
            fail("expected \":\" after a name");
        }
        skipWhitespace();
        read(member.value, depth + 1);
    }

    void array(JsonValue& value, int depth)
    {
        take('[');
        skipWhitespace();
        if (take(']')) {
            return;
        }
        do {
            skipWhitespace();
            read(value.elements.emplace_back(), depth + 1);
            skipWhitespace();
        } while (takeComma(']'));
        if (!take(']')) {
            fail("expected \",\" or \"]\" after an element");
        }
    }

    void literal()
    {
        take('"');
        for (skipUnescaped(); !take('"'); skipUnescaped()) {
            if (at_ == text_.size() || text_[at_] == '\n' || text_[at_] == '\r') {
                fail("expected a closing double quote");
            }
            if (text_[at_] != '\\') {
                fail("unescaped control character: write it as an escape such as \\t or \\u001b");
            }
            escape();
        }
    }

    void skipUnescaped() noexcept
    {
        while (at_ < text_.size() && text_[at_] != '"' && text_[at_] != '\\' && !isControl(text_[at_])) {
            ++at_;
        }
    }

    void escape()
    {
        const std::string_view rest = text_.substr(at_ + 1, 5);
        std::size_t length =
            rest.empty() || escapeLetters.find(rest.front()) == std::string_view::npos ? 0 : 1;
        if (rest.starts_with('u') && rest.size() == 5) {
            const auto isHex = [](char c) { return isHexDigit(c); };
            length = std::all_of(rest.begin() + 1, rest.end(), isHex) ? rest.size() : 0;
        }
        if (length == 0) {
            fail("expected an escape: \\\" \\\\ \\/ \\b \\f \\n \\r \\t or \\u and four hexadecimal digits");
        }
        at_ += 1 + length;
    }

    void keyword(std::string_view expected)
    {
        if (!text_.substr(at_).starts_with(expected)) {
            failAtValue();
        }
        at_ += expected.size();
    }

    void number()
    {
        const std::size_t start = at_;
        const bool isNegative = take('-');
        if (!isDigit(peek()) && !isNegative) {
            failAtValue();
        }
        if (!take('0')) {
            digits();
        } else if (isDigit(peek())) {
            at_ = start;
            fail("leading zero: write the number without it");
        }
        if (take('.')) {
            digits();
        }
        if (take('e') || take('E')) {
            static_cast<void>(take('+') || take('-'));
            digits();
        }
    }

    void digits()
    {
        if (!isDigit(peek())) {
            fail("expected a digit");
        }
        at_ = std::min(text_.find_first_not_of("0123456789", at_), text_.size());
    }

    [[noreturn]] void failAtValue() const
    {
        fail(at_ == text_.size()
                 ? "expected a value, not the end of the input"
                 : "expected a value: a string in double quotes, a number, true, false, null, [ or {");
    }

    std::string_view text_;
    std::size_t at_ = 0;
    std::size_t count_ = 0;  ///< of values so far
};

void appendUnitEscape(std::string& literal, char16_t unit)
{
    constexpr std::string_view digits = "0123456789abcdef";
    literal += "\\u";
    for (int shift = 12; shift >= 0; shift -= 4) {
        literal += digits[(static_cast<unsigned>(unit) >> static_cast<unsigned>(shift)) & 0xFU];
    }
}

void appendUnit(std::string& literal, char16_t unit)
{
    const std::size_t escape = escapedUnits.find(unit);
    if (unit == u'/' || (unit >= 0x20 && escape == std::u16string_view::npos)) {
        boost::locale::utf::utf_traits<char>::encode(unit, std::back_inserter(literal));
    } else if (escape != std::u16string_view::npos) {
        literal += {'\\', escapeLetters[escape]};
    } else {
        appendUnitEscape(literal, unit);
    }
}

}  // namespace

JsonValue readJson(std::string_view text)
{
    return Parser(text).document();
}

std::u16string decodedString(const JsonValue& value)
{
    return decode(value.text);
}

std::string jsonLiteral(std::u16string_view string)
{
    using Units = boost::locale::utf::utf_traits<char16_t>;
    std::string literal;
    literal.reserve(string.size() + 2);
    literal += '"';
    const char16_t* position = string.data();
    const char16_t* const end = position + string.size();
    while (position != end) {
        const char16_t* const start = position;
        const auto point = Units::decode(position, end);
        if (!boost::locale::utf::is_valid_codepoint(point)) {
            position = start + 1;
            appendUnitEscape(literal, *start);
        } else if (position - start == 1) {
            appendUnit(literal, *start);
        } else {
            boost::locale::utf::utf_traits<char>::encode(point, std::back_inserter(literal));
        }
    }
    return literal += '"';
}

}  // namespace vx::core
