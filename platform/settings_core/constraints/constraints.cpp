#include <data/views.hpp>
#include <settings_core/constraints/constraints.hpp>
#include <settings_core/constraints/script_functions.hpp>
#include <settings_core/values/value_format.hpp>

#include <foundation/verdixdata/text.hpp>

#include <algorithm>
#include <limits>
#include <utility>

namespace vx::core {

namespace {

using foundation::verdixdata::Array;
using foundation::verdixdata::ArrayType;
using Properties = ::settings::core::detail::FactorySettingProperties;
using ::settings::core::SettingValueValidator;

constexpr double infinity = std::numeric_limits<double>::infinity();

bool isOneOf(const std::vector<std::u16string>& words, const Array& value)
{
    const auto text = data::textOf(value);
    return text && std::find(words.begin(), words.end(), *text) != words.end();
}

/// Whether a string, or every element of a cell, is one of the words.
bool containsOnly(const std::vector<std::u16string>& words, const Array& value)
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

bool isColour(SettingValueValidator::Colour colour, const Array& value)
{
    return data::hasSize(value, 1, 3) && data::everyNumber(value, [&](auto part) {
               return colour == SettingValueValidator::Colour::normalised
                          ? data::isWithin(part, 0, 1)
                          : data::isWithin(part, 0, 255) && data::isWhole(part);
           });
}

bool isOpen(const SettingValueValidator::Range& range)
{
    return range.lower == -infinity && range.upper == infinity;
}

std::string describeRange(const SettingValueValidator::Range& range)
{
    if (range.lower == -infinity) {
        return "at most " + formatNumber(range.upper);
    }
    if (range.upper == infinity) {
        return "at least " + formatNumber(range.lower);
    }
    return "from " + formatNumber(range.lower) + " to " + formatNumber(range.upper);
}

std::string listAllowedValues(const std::vector<std::u16string>& words)
{
    std::string list;
    for (const std::u16string& word : words) {
        list += list.empty() ? "one of: " : ", ";
        list += word.empty() ? "\"\"" : foundation::verdixdata::toUtf8(word);
    }
    return list;
}

std::string describeAllowedValues(const std::vector<std::u16string>& words, const Array& example)
{
    return (example.getType() == ArrayType::CELL ? "each " : "") + listAllowedValues(words);
}

/// "1 row", "3 rows".
std::string pluralise(std::size_t count, const std::string& noun)
{
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

std::string describeLength(std::size_t length, const Array& example)
{
    const bool isString = example.getType() == ArrayType::CHAR || example.getType() == ArrayType::STRING;
    std::string words = "of at most " + pluralise(length, isString ? "character" : "element");
    if (!example.isAssigned()) {
        words += length == 1 ? " or character" : " or characters";
    }
    return words;
}

bool isOpen(const SettingValueValidator::Size& size)
{
    return !size.rows || !size.columns;
}

std::string describeSize(const SettingValueValidator::Size& size)
{
    if (!isOpen(size)) {
        return formatDimensions({*size.rows, *size.columns});
    }
    if (size.rows) {
        return "in " + pluralise(*size.rows, "row");
    }
    return size.columns ? "in " + pluralise(*size.columns, "column") : "in rows and columns";
}

std::string describeClass(ArrayType elementClass)
{
    return elementClass == ArrayType::CELL ? "a cell" : std::string("of class ") + className(elementClass);
}

std::string describeColour(SettingValueValidator::Colour colour, const std::vector<std::u16string>& words)
{
    std::string description = "a colour: red, green and blue, each ";
    description += colour == SettingValueValidator::Colour::normalised ? "a number from 0 to 1"
                                                                       : "a whole number from 0 to 255";
    return words.empty() ? description : description + ", or " + listAllowedValues(words);
}

/// Calls visitor(description, accepts) for every constraint of the validator, in a fixed order. `accepts`
/// takes a value and returns whether it satisfies the constraint. Constraints on class and exact size that
/// the example satisfies are skipped, since the example shows them. So is a range without bounds, which only
/// requires numbers, NaN included.
template <class Visitor>
void forEachConstraint(const ValueValidator& validator, const Array& example, Visitor visitor)
{
    if (validator.range && isOpen(*validator.range)) {
        if (!data::isNumeric(example)) {
            visitor("numeric", data::isNumeric);
        }
    } else if (validator.range) {
        visitor(describeRange(*validator.range), [&](const Array& value) {
            return data::everyNumber(value, [&](auto n) {
                return data::isWithin(n, validator.range->lower, validator.range->upper);
            });
        });
    }
    if (validator.maximumLength) {
        visitor(describeLength(*validator.maximumLength, example),
                [&](const Array& value) { return lengthOf(value) <= *validator.maximumLength; });
    }
    if (validator.size &&
        (isOpen(*validator.size) || !data::hasSize(example, validator.size->rows, validator.size->columns)))
    {
        visitor(describeSize(*validator.size), [&](const Array& value) {
            return data::hasSize(value, validator.size->rows, validator.size->columns);
        });
    }
    if (validator.elementClass && example.getType() != *validator.elementClass) {
        visitor(describeClass(*validator.elementClass),
                [&](const Array& value) { return value.getType() == *validator.elementClass; });
    }
    if (!validator.allowedValues.empty() && !validator.colour) {
        visitor(describeAllowedValues(validator.allowedValues, example),
                [&](const Array& value) { return containsOnly(validator.allowedValues, value); });
    }
    if (validator.colour) {
        visitor(describeColour(*validator.colour, validator.allowedValues), [&](const Array& value) {
            return isColour(*validator.colour, value) || isOneOf(validator.allowedValues, value);
        });
    }
}

/// Returns "a number" or "4 numbers", the size of the factory value; "numbers" if a validator leaves the size
/// open.
std::string describeCount(const Properties& properties, const char* one, const std::string& several)
{
    const auto& validators = properties.valueValidators;
    if (std::any_of(validators.begin(), validators.end(), [](const ValueValidator& validator) {
            return validator.size && isOpen(*validator.size);
        }))
    {
        return several;
    }
    const std::size_t count = properties.factoryValue.getNumberOfElements();
    return count == 1 ? one : std::to_string(count) + " " + several;
}

/// Describes the class and size that the factory value prescribes.
std::string describeKind(const Properties& properties)
{
    switch (properties.factoryValue.getType()) {
    case ArrayType::UNKNOWN:
        return "a value";
    case ArrayType::LOGICAL:
        return describeCount(properties, "true or false", "logical values");
    case ArrayType::CHAR:
    case ArrayType::STRING:
        return "a string";
    case ArrayType::CELL:
        return "a cell of strings";
    case ArrayType::DOUBLE:
        return describeCount(properties, "a number", "numbers");
    default:
        return describeCount(properties, "a whole number", "whole numbers");
    }
}

std::string describeKindAndValidator(const Properties& properties)
{
    std::string description = describeValidator(properties.validator);
    const auto* script = std::get_if<::settings::core::MValidator>(&properties.validator);
    if (script != nullptr && findScriptFunction(*script) != nullptr) {
        return description;
    }
    return describeKind(properties) + (description.empty() ? "" : " ") + description;
}

}  // namespace

std::vector<Failure> findViolations(const ValueValidator& validator, const Array& value)
{
    std::vector<Failure> failures;
    forEachConstraint(validator, value, [&](std::string words, const auto& accepts) {
        if (!accepts(value)) {
            failures.push_back(makeFailure(std::move(words), value));
        }
    });
    return failures;
}

std::string describeValueValidator(const ValueValidator& validator, const Array& example)
{
    std::string text;
    forEachConstraint(validator, example, [&](const std::string& words, const auto& /*accepts*/) {
        text += (text.empty() ? "" : ", ") + words;
    });
    return text;
}

std::string describeValidator(const ::settings::core::Validator& validator)
{
    struct Describe
    {
        std::string operator()(std::monostate) const { return {}; }
        std::string operator()(const ::settings::core::MValidator& named) const
        {
            const ScriptFunction* function = findScriptFunction(named);
            return function != nullptr
                       ? std::string(function->constraint)
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
            return "accepted by its provider's validator";
        }
    };
    return std::visit(Describe{}, validator);
}

std::string describeConstraint(const Properties& properties)
{
    const auto hasColour = [](const ValueValidator& validator) { return validator.colour.has_value(); };
    const auto& validators = properties.valueValidators;
    // A range follows a noun without a comma: "a whole number from 0 to 3", but "a number accepted by f of
    // lib, from 0 to 3".
    const bool endsInNoun = std::holds_alternative<std::monostate>(properties.validator) ||
                            std::holds_alternative<::settings::core::MValidator>(properties.validator);
    // The description of a colour includes the kind of value.
    std::string text = std::any_of(validators.begin(), validators.end(), hasColour)
                           ? ""
                           : describeKindAndValidator(properties);
    for (const ValueValidator& validator : validators) {
        const std::string words = describeValueValidator(validator, properties.factoryValue);
        // The range is described first within its validator.
        const char* separator = validator.range && !isOpen(*validator.range) && endsInNoun ? " " : ", ";
        text += (text.empty() || words.empty() ? "" : separator) + words;
    }
    return text;
}

Failure makeFailure(std::string constraint, const Array& value)
{
    constexpr std::size_t width = 60;  // characters of the value
    std::string message = "must be " + constraint + "; it is ";
    message += value.isAssigned()
                   ? formatValueOnOneLine(value, width) + " (" + formatClassAndSize(value) + ")"
                   : "not set";
    return {std::move(constraint), std::move(message)};
}

}  // namespace vx::core
