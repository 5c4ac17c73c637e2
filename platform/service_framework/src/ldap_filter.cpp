#include <cppmicroservices/Bundle.h>
#include <cppmicroservices/LDAPFilter.h>
#include <cppmicroservices/ServiceReferenceBase.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <list>
#include <ostream>
#include <service_record.hpp>
#include <stdexcept>
#include <string_view>
#include <vector>

namespace cppmicroservices {

namespace {

/// Maximum nesting depth; bounds the recursion for malicious filters.
constexpr int maximumDepth = 100;

bool isWhitespace(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

char lowered(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool equalIgnoringCase(std::string_view left, std::string_view right)
{
    return std::ranges::equal(left, right, {}, lowered, lowered);
}

enum class Operator
{
    And,
    Or,
    Not,
    Equal,
    Approximate,
    LessOrEqual,
    GreaterOrEqual
};

struct Expression
{
    Operator op;
    std::vector<Expression> operands;  // for And, Or and Not
    std::string key;                   // for comparisons
    // The value of a comparison, split at wildcards: {"a", "b"} for "a*b", {"", ""} for "*".
    std::vector<std::string> parts;
};

std::string lowerWithoutWhitespace(std::string_view input)
{
    std::string result;
    for (const char c : input) {
        if (!isWhitespace(c)) {
            result += lowered(c);
        }
    }
    return result;
}

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
    for (auto part = parts.begin() + 1; part != parts.end() - 1; ++part) {
        const std::size_t found = input.find(*part);
        if (found == std::string_view::npos) {
            return false;
        }
        input.remove_prefix(found + part->size());
    }
    return true;
}

/// Returns the value as one string. Only '=' supports wildcards: for other operators each is a DEL character,
/// which compares above all other ASCII characters.
std::string wholeValue(const Expression& comparison)
{
    std::string value = comparison.parts.front();
    for (auto part = comparison.parts.begin() + 1; part != comparison.parts.end(); ++part) {
        value += '\x7f' + *part;
    }
    return value;
}

bool compareString(std::string_view input, const Expression& comparison)
{
    switch (comparison.op) {
    case Operator::Equal:
        return matchesParts(input, comparison.parts);
    case Operator::Approximate:
        return lowerWithoutWhitespace(input) == lowerWithoutWhitespace(wholeValue(comparison));
    case Operator::LessOrEqual:
        return input <= wholeValue(comparison);
    default:
        return input >= wholeValue(comparison);
    }
}

/// Parses the number at the beginning of a string, after whitespace and a plus sign, and ignores the rest.
/// Returns false when there is no number.
template <class T>
bool parseNumber(std::string_view input, T& number)
{
    input.remove_prefix(
        static_cast<std::size_t>(std::ranges::find_if_not(input, isWhitespace) - input.begin()));
    if (input.starts_with('+') && !input.starts_with("+-")) {
        input.remove_prefix(1);
    }
    return std::from_chars(input.data(), input.data() + input.size(), number).ec == std::errc();
}

template <class T>
bool compareNumber(T number, const Expression& comparison)
{
    T bound{};
    if (!parseNumber(wholeValue(comparison), bound)) {
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

bool compareBool(bool flag, const Expression& comparison)
{
    const bool ordering = comparison.op == Operator::LessOrEqual || comparison.op == Operator::GreaterOrEqual;
    return !ordering && equalIgnoringCase(wholeValue(comparison), flag ? "true" : "false");
}

/// Compares the value and sets result when its type is one of the number types Ts; else returns false.
template <class... Ts>
bool compareAsNumber(const Any& value, const Expression& comparison, bool& result)
{
    const auto compareAs = [&]<class T>(const T* number) {
        if (number) {
            result = compareNumber(*number, comparison);
        }
        return number != nullptr;
    };
    return (compareAs(any_cast<Ts>(&value)) || ...);
}

bool compare(const Any& value, const Expression& comparison)
{
    if (value.Empty()) {
        return false;
    }
    const auto compareElement = [&](const auto& element) {
        if constexpr (std::is_same_v<std::decay_t<decltype(element)>, Any>) {
            return compare(element, comparison);
        } else {
            return compareString(element, comparison);
        }
    };
    const bool isPresenceTest = comparison.op == Operator::Equal && comparison.parts.size() == 2 &&
                                std::ranges::all_of(comparison.parts, &std::string::empty);
    if (isPresenceTest) {
        return true;
    }
    if (const auto* string = any_cast<std::string>(&value)) {
        return compareString(*string, comparison);
    }
    if (const auto* literal = any_cast<const char*>(&value)) {
        return compareString(*literal, comparison);
    }
    if (const auto* character = any_cast<char>(&value)) {
        return compareString({character, 1}, comparison);
    }
    if (const auto* strings = any_cast<std::vector<std::string>>(&value)) {
        return std::ranges::any_of(*strings, compareElement);
    }
    if (const auto* stringList = any_cast<std::list<std::string>>(&value)) {
        return std::ranges::any_of(*stringList, compareElement);
    }
    if (const auto* values = any_cast<std::vector<Any>>(&value)) {
        return std::ranges::any_of(*values, compareElement);
    }
    if (const auto* flag = any_cast<bool>(&value)) {
        return compareBool(*flag, comparison);
    }
    bool result = false;
    compareAsNumber<int, long, long long, short, unsigned char, unsigned short, unsigned int, unsigned long,
                    unsigned long long, float, double>(value, comparison, result);
    return result;
}

const Any* findProperty(const AnyMap& properties, const std::string& key, bool matchCase)
{
    auto found = properties.find(key);
    if (found == properties.end() && !matchCase) {
        found = std::find_if(properties.begin(), properties.end(),
                             [&](const auto& property) { return equalIgnoringCase(property.first, key); });
    }
    const bool usable = found != properties.end() && (!matchCase || found->first == key);
    return usable ? &found->second : nullptr;
}

/// Returns the properties unchanged. Throws std::runtime_error when two keys differ only in case.
const AnyMap& withDistinctKeys(const AnyMap& properties)
{
    if (properties.GetType() == AnyMap::UNORDERED_MAP_CASEINSENSITIVE_KEYS) {
        return properties;
    }
    for (auto property = properties.begin(); property != properties.end(); ++property) {
        const std::string& key = property->first;
        if (std::any_of(properties.begin(), property,
                        [&](const auto& other) { return equalIgnoringCase(other.first, key); }))
        {
            throw std::runtime_error("The properties give the key " + key +
                                     " more than once, differing only in case");
        }
    }
    return properties;
}

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
        const Any* value = findProperty(properties, expression.key, matchCase);
        return value && compare(*value, expression);
    }
    }
}

std::string_view operatorSymbol(Operator op)
{
    switch (op) {
    case Operator::And:
        return "&";
    case Operator::Or:
        return "|";
    case Operator::Not:
        return "!";
    case Operator::Equal:
        return "=";
    case Operator::Approximate:
        return "~=";
    case Operator::LessOrEqual:
        return "<=";
    case Operator::GreaterOrEqual:
        return ">=";
    }
    return "";
}

void append(std::string& out, const Expression& expression)
{
    out += '(';
    out += expression.key;
    out += operatorSymbol(expression.op);
    for (const Expression& operand : expression.operands) {
        append(out, operand);
    }
    for (std::size_t i = 0; i < expression.parts.size(); ++i) {
        if (i > 0) {
            out += '*';
        }
        for (const char c : expression.parts[i]) {
            if (std::string_view("()*\\").find(c) != std::string_view::npos) {
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

    bool accept(std::string_view token)
    {
        const bool found = input_.substr(position_).starts_with(token);
        position_ += found ? token.size() : 0;
        return found;
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
        Expression expression = parseBody(depth);
        expect(')');
        return expression;
    }

    Expression parseBody(int depth)
    {
        for (const Operator op : {Operator::And, Operator::Or, Operator::Not}) {
            if (accept(operatorSymbol(op))) {
                return {op, parseOperands(op, depth), {}, {}};
            }
        }
        std::string key = parseKey();
        for (const Operator op :
             {Operator::Equal, Operator::Approximate, Operator::LessOrEqual, Operator::GreaterOrEqual})
        {
            if (accept(operatorSymbol(op))) {
                return {op, {}, std::move(key), parseValue()};
            }
        }
        peek();
        fail("expected one of = ~= <= >=");
    }

    std::vector<Expression> parseOperands(Operator op, int depth)
    {
        std::vector<Expression> operands;
        do {
            operands.push_back(parseFilter(depth + 1));
            skipWhitespace();
        } while (op != Operator::Not && peek() == '(');
        return operands;
    }

    std::string parseKey()
    {
        const std::size_t start = position_;
        while (std::string_view("()<>=~").find(peek()) == std::string_view::npos) {
            ++position_;
        }
        std::string_view key = input_.substr(start, position_ - start);
        while (!key.empty() && isWhitespace(key.back())) {
            key.remove_suffix(1);
        }
        if (key.empty()) {
            fail("expected an attribute name");
        }
        return std::string(key);
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

    Expression root;
};

LDAPFilter::LDAPFilter() = default;

LDAPFilter::LDAPFilter(const std::string& filter) : d(std::make_shared<const LDAPFilterData>(filter)) {}

bool LDAPFilter::Match(const ServiceReferenceBase& reference) const
{
    return reference.record_ && Match(*reference.record_->Properties());
}

bool LDAPFilter::Match(const Bundle& bundle) const
{
    return Match(bundle.GetHeaders());
}

bool LDAPFilter::Match(const AnyMap& properties) const
{
    return d && evaluate(d->root, withDistinctKeys(properties), false);
}

bool LDAPFilter::MatchCase(const AnyMap& properties) const
{
    return d && evaluate(d->root, withDistinctKeys(properties), true);
}

std::string LDAPFilter::ToString() const
{
    std::string result;
    if (d) {
        append(result, d->root);
    }
    return result;
}

std::ostream& operator<<(std::ostream& os, const LDAPFilter& filter)
{
    return os << filter.ToString();
}

}  // namespace cppmicroservices
