#include <data/views.hpp>
#include <settings_core/constraints.hpp>
#include <settings_core/script_functions.hpp>
#include <settings_core/value_format.hpp>

#include <foundation/verdixdata/text.hpp>

#include <algorithm>
#include <limits>
#include <utility>

namespace vx::core {

namespace {

using foundation::verdixdata::Array;
using foundation::verdixdata::ArrayType;
using Properties = ::settings::core::detail::FactorySettingProperties;
using Rule = ::settings::core::SettingValueValidator;

constexpr double infinity = std::numeric_limits<double>::infinity();

bool isOneOf(const std::vector<std::u16string>& words, const Array& value)
{
    const auto text = data::textOf(value);
    return text && std::find(words.begin(), words.end(), *text) != words.end();
}

/// A text as a whole, or every element of a cell, is one of the words.
bool holdsOnly(const std::vector<std::u16string>& words, const Array& value)
{
    if (value.getType() != ArrayType::CELL) {
        return isOneOf(words, value);
    }
    const auto elements = data::elementsOf<Array>(value);
    return std::all_of(elements.begin(), elements.end(),
                       [&](const Array& element) { return isOneOf(words, element); });
}

std::size_t lengthOf(const Array& value)
{
    const auto text = data::textOf(value);
    return text ? text->size() : value.getNumberOfElements();
}

bool isColour(Rule::Colour colour, const Array& value)
{
    return data::hasSize(value, 1, 3) && data::everyNumber(value, [&](auto part) {
               return colour == Rule::Colour::normalised
                          ? data::isWithin(part, 0, 1)
                          : data::isWithin(part, 0, 255) && data::isWhole(part);
           });
}

bool isOpen(const Rule::Range& range)
{
    return range.lower == -infinity && range.upper == infinity;
}

std::string rangeWords(const Rule::Range& range)
{
    if (range.lower == -infinity) {
        return "at most " + formatNumber(range.upper);
    }
    if (range.upper == infinity) {
        return "at least " + formatNumber(range.lower);
    }
    return "from " + formatNumber(range.lower) + " to " + formatNumber(range.upper);
}

std::string list(const std::vector<std::u16string>& words)
{
    std::string text;
    for (const std::u16string& word : words) {
        text += text.empty() ? "one of: " : ", ";
        text += word.empty() ? "\"\"" : foundation::verdixdata::toUtf8(word);
    }
    return text;
}

std::string wordsWords(const std::vector<std::u16string>& words, const Array& example)
{
    return (example.getType() == ArrayType::CELL ? "each " : "") + list(words);
}

/// "1 row", "3 rows".
std::string counted(std::size_t count, const std::string& noun)
{
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

std::string lengthWords(std::size_t length, const Array& example)
{
    const bool isText = example.getType() == ArrayType::CHAR || example.getType() == ArrayType::STRING;
    std::string words = "of at most " + counted(length, isText ? "character" : "element");
    if (!example.isAssigned()) {
        words += length == 1 ? " or character" : " or characters";
    }
    return words;
}

bool isOpen(const Rule::Size& size)
{
    return !size.rows || !size.columns;
}

std::string sizeWords(const Rule::Size& size)
{
    if (!isOpen(size)) {
        return formatDimensions({*size.rows, *size.columns});
    }
    if (size.rows) {
        return "in " + counted(*size.rows, "row");
    }
    return size.columns ? "in " + counted(*size.columns, "column") : "in rows and columns";
}

std::string classWords(ArrayType elementClass)
{
    return elementClass == ArrayType::CELL ? "a cell" : std::string("of class ") + className(elementClass);
}

std::string colourWords(Rule::Colour colour, const std::vector<std::u16string>& words)
{
    std::string text = "a colour: red, green and blue, each ";
    text += colour == Rule::Colour::normalised ? "a number from 0 to 1" : "a whole number from 0 to 255";
    return words.empty() ? text : text + ", or " + list(words);
}

/// Calls visitor(words, accepts), two functions, for every rule that the record states, in a fixed order.
/// Class and exact size are left out where the example shows them: it keeps them, and they need no words. So
/// is a range without bounds, which only says that values are numbers, NaN among them.
template <class Visitor>
void forEachRule(const ValueValidator& rules, const Array& example, Visitor visitor)
{
    if (rules.range && isOpen(*rules.range)) {
        if (!data::isNumeric(example)) {
            visitor("numeric", data::isNumeric);
        }
    } else if (rules.range) {
        visitor(rangeWords(*rules.range), [&](const Array& value) {
            return data::everyNumber(
                value, [&](auto n) { return data::isWithin(n, rules.range->lower, rules.range->upper); });
        });
    }
    if (rules.maximumLength) {
        visitor(lengthWords(*rules.maximumLength, example),
                [&](const Array& value) { return lengthOf(value) <= *rules.maximumLength; });
    }
    if (rules.size && (isOpen(*rules.size) || !data::hasSize(example, rules.size->rows, rules.size->columns)))
    {
        visitor(sizeWords(*rules.size), [&](const Array& value) {
            return data::hasSize(value, rules.size->rows, rules.size->columns);
        });
    }
    if (rules.elementClass && example.getType() != *rules.elementClass) {
        visitor(classWords(*rules.elementClass),
                [&](const Array& value) { return value.getType() == *rules.elementClass; });
    }
    if (!rules.allowedValues.empty() && !rules.colour) {
        visitor(wordsWords(rules.allowedValues, example),
                [&](const Array& value) { return holdsOnly(rules.allowedValues, value); });
    }
    if (rules.colour) {
        visitor(colourWords(*rules.colour, rules.allowedValues), [&](const Array& value) {
            return isColour(*rules.colour, value) || isOneOf(rules.allowedValues, value);
        });
    }
}

/// "a number" or "4 numbers", as many as the factory value has; "numbers" where a record leaves that open.
std::string countWords(const Properties& properties, const char* one, const std::string& several)
{
    const auto& records = properties.valueValidators;
    if (std::any_of(records.begin(), records.end(),
                    [](const ValueValidator& rules) { return rules.size && isOpen(*rules.size); }))
    {
        return several;
    }
    const std::size_t count = properties.factoryValue.getNumberOfElements();
    return count == 1 ? one : std::to_string(count) + " " + several;
}

/// What a factory value says of the values that its setting takes.
std::string describeKind(const Properties& properties)
{
    switch (properties.factoryValue.getType()) {
    case ArrayType::UNKNOWN:
        return "a value";
    case ArrayType::LOGICAL:
        return countWords(properties, "true or false", "logical values");
    case ArrayType::CHAR:
    case ArrayType::STRING:
        return "a text";
    case ArrayType::CELL:
        return "a cell of texts";
    case ArrayType::DOUBLE:
        return countWords(properties, "a number", "numbers");
    default:
        return countWords(properties, "a whole number", "whole numbers");
    }
}

std::string validatorWords(const Properties& properties)
{
    std::string words = describeValidator(properties.validator);
    const auto* script = std::get_if<::settings::core::MValidator>(&properties.validator);
    if (script != nullptr && findScriptFunction(*script) != nullptr) {
        return words;
    }
    return describeKind(properties) + (words.empty() ? "" : " ") + words;
}

}  // namespace

std::vector<Failure> findViolations(const ValueValidator& rules, const Array& value)
{
    std::vector<Failure> failures;
    forEachRule(rules, value, [&](std::string words, const auto& accepts) {
        if (!accepts(value)) {
            failures.push_back(makeFailure(std::move(words), value));
        }
    });
    return failures;
}

std::string describeValueValidator(const ValueValidator& rules, const Array& example)
{
    std::string text;
    forEachRule(rules, example, [&](const std::string& words, const auto& /*accepts*/) {
        text += (text.empty() ? "" : ", ") + words;
    });
    return text;
}

std::string describeValidator(const ::settings::core::Validator& validator)
{
    struct Words
    {
        std::string operator()(std::monostate) const { return {}; }
        std::string operator()(const ::settings::core::MValidator& named) const
        {
            const ScriptFunction* function = findScriptFunction(named);
            return function != nullptr
                       ? std::string(function->accepted)
                       : "accepted by the script function " + named.scope() + "." + named.function();
        }
        std::string operator()(const ::settings::core::CValidator& named) const
        {
            return "accepted by " + named.function() + " of " + named.scope();
        }
        std::string operator()(const ::settings::core::JValidator& named) const
        {
            return "accepted by the managed method " + named.scope() + "." + named.function();
        }
        std::string operator()(const ::settings::core::CPPValidator& /*callable*/) const
        {
            return "accepted by its provider's own check";
        }
    };
    return std::visit(Words{}, validator);
}

std::string describeConstraint(const Properties& properties)
{
    const auto isColourRule = [](const ValueValidator& rules) { return rules.colour.has_value(); };
    const auto& records = properties.valueValidators;
    // "a whole number from 0 to 3", but "a number accepted by f of lib, from 0 to 3".
    const bool readsOn = std::holds_alternative<std::monostate>(properties.validator) ||
                         std::holds_alternative<::settings::core::MValidator>(properties.validator);
    // A colour's own words say what kind of value it is.
    std::string text =
        std::any_of(records.begin(), records.end(), isColourRule) ? "" : validatorWords(properties);
    for (const ValueValidator& rules : records) {
        const std::string words = describeValueValidator(rules, properties.factoryValue);
        // Bounds come first in their record.
        const char* separator = rules.range && !isOpen(*rules.range) && readsOn ? " " : ", ";
        text += (text.empty() || words.empty() ? "" : separator) + words;
    }
    return text;
}

Failure makeFailure(std::string rule, const Array& value)
{
    constexpr std::size_t width = 60;
    std::string message = "must be " + rule + "; it is ";
    message += value.isAssigned()
                   ? formatValueOnOneLine(value, width) + " (" + formatClassAndSize(value) + ")"
                   : "not set";
    return {std::move(rule), std::move(message)};
}

}  // namespace vx::core
