// Parsed by hand: a grammar library would need own code all the same for the parentheses that balance in a
// value, for the nesting limit and for the positions in messages, and most of this file is not the parser.

#include <boost/algorithm/string/case_conv.hpp>
#include <boost/algorithm/string/join.hpp>
#include <boost/algorithm/string/predicate.hpp>
#include <boost/algorithm/string/trim.hpp>
#include <cppmicroservices/LDAPFilter.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <ignoring_case.hpp>
#include <limits>
#include <list>
#include <locale>
#include <stdexcept>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace cppmicroservices {

namespace {

/// Maximum nesting depth; bounds the recursion for malicious filters.
constexpr int maximumDepth = 100;

bool isOneOf(std::string_view characters, char c)
{
    return characters.find(c) != std::string_view::npos;
}

bool isWhitespace(char c)
{
    return isOneOf(" \t\n\v\f\r", c);
}

/// The first character of the operator; '=' follows the last three.
enum class Operator : char
{
    And = '&',
    Or = '|',
    Not = '!',
    Equal = '=',
    Approximate = '~',
    LessOrEqual = '<',
    GreaterOrEqual = '>'
};

struct Expression
{
    Operator op;
    std::vector<Expression> operands;  // for And, Or and Not
    std::string key;                   // for comparisons
    // The value of a comparison, split at wildcards: {"a", "b"} for "a*b", {"", ""} for "*".
    std::vector<std::string> parts;
};

bool matchesParts(std::string_view input, const std::vector<std::string>& parts)
{
    const std::string& first = parts.front();
    const std::string& last = parts.back();
    if (parts.size() == 1) {
        return input == first;
    }
    if (input.size() < first.size() + last.size() || !input.starts_with(first) || !input.ends_with(last)) {
        return false;
    }
    input.remove_prefix(first.size());
    input.remove_suffix(last.size());
    return std::all_of(parts.begin() + 1, parts.end() - 1, [&](const std::string& part) {
        const std::size_t found = input.find(part);
        input.remove_prefix(std::min(found + part.size(), input.size()));
        return found != std::string_view::npos;
    });
}

std::string lowerWithoutWhitespace(std::string string)
{
    std::erase_if(string, isWhitespace);
    boost::algorithm::to_lower(string, std::locale::classic());
    return string;
}

/// Returns the value as one string. Only '=' supports wildcards: for other operators each is a DEL character,
/// which compares above all other ASCII characters.
std::string wholeValue(const Expression& comparison)
{
    return boost::algorithm::join(comparison.parts, "\x7f");
}

bool compareString(std::string_view string, const Expression& comparison)
{
    switch (comparison.op) {
    case Operator::Equal:
        return matchesParts(string, comparison.parts);
    case Operator::Approximate:
        return lowerWithoutWhitespace(std::string(string)) == lowerWithoutWhitespace(wholeValue(comparison));
    case Operator::LessOrEqual:
        return string <= wholeValue(comparison);
    default:
        return string >= wholeValue(comparison);
    }
}

bool compareBool(bool flag, const Expression& comparison)
{
    const bool isEquality = comparison.op == Operator::Equal || comparison.op == Operator::Approximate;
    return isEquality &&
           boost::algorithm::iequals(wholeValue(comparison), flag ? "true" : "false", std::locale::classic());
}

/// Compares with the number at the beginning of the value, after whitespace and a plus sign. The rest of the
/// value is ignored. Returns false when there is no number.
template <class T>
bool compareNumber(T number, const Expression& comparison)
{
    std::string value = wholeValue(comparison);
    boost::algorithm::trim_left_if(value, isWhitespace);
    const bool hasPlus = value.starts_with('+') && !value.starts_with("+-");
    T bound{};
    if (std::from_chars(value.data() + hasPlus, value.data() + value.size(), bound).ec != std::errc()) {
        return false;
    }
    switch (comparison.op) {
    case Operator::LessOrEqual:
        return number <= bound;
    case Operator::GreaterOrEqual:
        return number >= bound;
    default:
        if constexpr (std::is_floating_point_v<T>) {
            return std::abs(number - bound) < std::numeric_limits<T>::epsilon();
        } else {
            return number == bound;
        }
    }
}

bool compare(const Any& value, const Expression& comparison);

template <class T>
bool compareAs(const T& value, const Expression& comparison)
{
    if constexpr (std::is_same_v<T, Any>) {
        return compare(value, comparison);
    } else if constexpr (std::is_same_v<T, bool>) {
        return compareBool(value, comparison);
    } else if constexpr (std::is_same_v<T, char>) {
        return compareString({&value, 1}, comparison);
    } else if constexpr (std::is_arithmetic_v<T>) {
        return compareNumber(value, comparison);
    } else if constexpr (std::is_convertible_v<T, std::string_view>) {
        return compareString(value, comparison);
    } else {
        return std::ranges::any_of(value,
                                   [&](const auto& element) { return compareAs(element, comparison); });
    }
}

/// Returns true if the type of the value is one of Ts and the comparison holds.
template <class... Ts>
bool compareAsOneOf(const Any& value, const Expression& comparison)
{
    const auto holds = [&](const auto* held) { return held && compareAs(*held, comparison); };
    return (holds(any_cast<Ts>(&value)) || ...);
}

bool compare(const Any& value, const Expression& comparison)
{
    const bool isPresenceTest = comparison.op == Operator::Equal && comparison.parts.size() == 2 &&
                                std::ranges::all_of(comparison.parts, &std::string::empty);
    if (isPresenceTest) {
        return !value.Empty();
    }
    return compareAsOneOf<std::string, const char*, char, std::vector<std::string>, std::list<std::string>,
                          std::vector<Any>, bool, int, long, long long, short, unsigned char, unsigned short,
                          unsigned int, unsigned long, unsigned long long, float, double>(value, comparison);
}

/// The keys of the properties are case-insensitive; matchCase requires the case that they were given in.
bool evaluate(const Expression& expression, const AnyMap& properties, bool matchCase)
{
    const auto holds = [&](const Expression& operand) { return evaluate(operand, properties, matchCase); };
    switch (expression.op) {
    case Operator::And:
        return std::ranges::all_of(expression.operands, holds);
    case Operator::Or:
        return std::ranges::any_of(expression.operands, holds);
    case Operator::Not:
        return !holds(expression.operands.front());
    default: {
        const auto found = properties.find(expression.key);
        return found != properties.end() && (!matchCase || found->first == expression.key) &&
               compare(found->second, expression);
    }
    }
}

void append(std::string& out, const Expression& expression)
{
    const char op = static_cast<char>(expression.op);
    out += '(' + expression.key + op;
    if (isOneOf("~<>", op)) {
        out += '=';
    }
    for (const Expression& operand : expression.operands) {
        append(out, operand);
    }
    const char* separator = "";
    for (const std::string& part : expression.parts) {
        out += std::exchange(separator, "*");
        for (const char c : part) {
            if (isOneOf("()*\\", c)) {
                out += '\\';
            }
            out += c;
        }
    }
    out += ')';
}

class Parser
{
public:
    explicit Parser(std::string_view input) : input_(input) {}

    Expression parse()
    {
        Expression expression = parseFilter(0);
        position_ = std::min(input_.find_first_not_of(' ', position_), input_.size());
        if (!atEnd()) {
            fail("unexpected content after the filter");
        }
        return expression;
    }

private:
    [[noreturn]] void fail(const std::string& reason) const
    {
        throw std::invalid_argument("Malformed LDAP filter \"" + std::string(input_) + "\": " + reason +
                                    " at position " + std::to_string(position_));
    }

    bool atEnd() const { return position_ == input_.size(); }

    char peek() const
    {
        if (atEnd()) {
            fail("unexpected end");
        }
        return input_[position_];
    }

    void skipWhitespace()
    {
        while (!atEnd() && isWhitespace(input_[position_])) {
            ++position_;
        }
    }

    void expect(char token)
    {
        if (peek() != token) {
            fail(std::string("expected '") + token + "'");
        }
        ++position_;
    }

    Expression parseFilter(int depth)
    {
        if (depth > maximumDepth) {
            fail("nested deeper than " + std::to_string(maximumDepth));
        }
        skipWhitespace();
        expect('(');
        skipWhitespace();
        Expression expression = isOneOf("&|!", peek()) ? parseOperation(depth) : parseComparison();
        expect(')');
        return expression;
    }

    Expression parseOperation(int depth)
    {
        Expression operation{static_cast<Operator>(peek()), {}, {}, {}};
        ++position_;
        do {
            operation.operands.push_back(parseFilter(depth + 1));
            skipWhitespace();
        } while (operation.op != Operator::Not && peek() == '(');
        return operation;
    }

    Expression parseComparison()
    {
        std::string key = parseKey();
        const char op = peek();
        if (!isOneOf("=~<>", op)) {
            fail("expected one of = ~= <= >=");
        }
        ++position_;
        if (op != '=') {
            expect('=');
        }
        return {static_cast<Operator>(op), {}, std::move(key), parseValue()};
    }

    std::string parseKey()
    {
        std::string key;
        for (; !isOneOf("()<>=~", peek()); ++position_) {
            key += peek();
        }
        boost::algorithm::trim_right_if(key, isWhitespace);
        if (key.empty()) {
            fail("expected an attribute name");
        }
        return key;
    }

    /// A backslash escapes the next character; balanced parentheses need no escape.
    std::vector<std::string> parseValue()
    {
        std::vector<std::string> parts(1);
        for (int open = 0; open > 0 || peek() != ')'; ++position_) {
            if (peek() == '*') {
                parts.emplace_back();
                continue;
            }
            if (peek() == '\\') {
                ++position_;
            } else {
                open += peek() == '(' ? 1 : peek() == ')' ? -1 : 0;
            }
            parts.back() += peek();
        }
        return parts;
    }

    std::string_view input_;
    std::size_t position_ = 0;
};

}  // namespace

class LDAPFilterData
{
public:
    explicit LDAPFilterData(std::string_view input) : root(Parser(input).parse()) {}

    bool Matches(const AnyMap& properties, bool matchCase) const
    {
        return properties.GetType() == AnyMap::UNORDERED_MAP_CASEINSENSITIVE_KEYS
                   ? evaluate(root, properties, matchCase)
                   : evaluate(root, ignoringCase(properties), matchCase);
    }

    Expression root;
};

LDAPFilter::LDAPFilter() = default;

LDAPFilter::LDAPFilter(const std::string& filter) : d(std::make_shared<const LDAPFilterData>(filter)) {}

bool LDAPFilter::Match(const AnyMap& properties) const
{
    return d && d->Matches(properties, false);
}

bool LDAPFilter::MatchCase(const AnyMap& properties) const
{
    return d && d->Matches(properties, true);
}

std::string LDAPFilter::ToString() const
{
    std::string result;
    if (d) {
        append(result, d->root);
    }
    return result;
}

}  // namespace cppmicroservices
