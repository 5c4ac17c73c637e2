#include <data/views.hpp>
#include <settings_core/constraints/kinds.hpp>
#include <settings_core/values/value_format.hpp>

#include <foundation/verdixdata/text.hpp>

#include <algorithm>
#include <array>
#include <iterator>
#include <limits>
#include <stdexcept>
#include <tuple>
#include <utility>

namespace vx::core {

namespace {

using foundation::verdixdata::Array;
using foundation::verdixdata::ArrayType;
using foundation::verdixdata::toUtf8;
using Constraints = ConstraintKind::Constraints;
using Colour = ::settings::core::SettingValueValidator::Colour;
using Parameters = std::vector<Parameter>;
using Strings = std::vector<std::u16string>;

/// Limit of counts in exported trees: every whole number up to it is a double.
constexpr double maximumCount = 9007199254740992.0;

constexpr double infinity = std::numeric_limits<double>::infinity();

/// Returns count and noun: "1 row", "3 rows".
std::string pluralise(std::size_t count, const std::string& noun)
{
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

// Classes

bool hasRequiredClass(const Constraints& constraints, const Array& value)
{
    return value.getType() == *constraints.elementClass;
}

std::string describeClass(const Constraints& constraints, const Array& example)
{
    if (hasRequiredClass(constraints, example)) {
        return "";
    }
    const ArrayType type = *constraints.elementClass;
    return type == ArrayType::CELL ? "a cell" : std::string("of class ") + className(type);
}

// Ranges

bool isInRange(const Constraints& constraints, const Array& value)
{
    const auto& range = *constraints.range;
    return data::everyNumber(
        value, [&range](auto n) { return isOpen(range) || data::isWithin(n, range.lower, range.upper); });
}

std::string describeRange(const Constraints& constraints, const Array& example)
{
    const auto& [lower, upper] = *constraints.range;
    if (isOpen(*constraints.range)) {
        return data::isNumeric(example) ? "" : "numeric";
    }
    if (lower == -infinity) {
        return "at most " + formatNumber(upper);
    }
    return upper == infinity ? "at least " + formatNumber(lower)
                             : "from " + formatNumber(lower) + " to " + formatNumber(upper);
}

// Lengths and sizes

std::size_t lengthOf(const Array& value)
{
    const auto characters = data::textOf(value);
    return characters ? characters->size() : value.getNumberOfElements();
}

std::string describeLength(const Constraints& constraints, const Array& example)
{
    const bool isString = isStringClass(example.getType());
    const std::size_t length = *constraints.maximumLength;
    std::string description = "of at most " + pluralise(length, isString ? "character" : "element");
    if (!example.isAssigned()) {
        description += length == 1 ? " or character" : " or characters";
    }
    return description;
}

void foldLength(const Constraints& constraints, Constraint& all)
{
    all.maximumLength = std::min(all.maximumLength, *constraints.maximumLength);
}

bool hasRequiredSize(const Constraints& constraints, const Array& value)
{
    return data::hasSize(value, constraints.size->rows, constraints.size->columns);
}

std::string describeSize(const Constraints& constraints, const Array& example)
{
    const auto& [rows, columns] = *constraints.size;
    if (rows && columns) {
        return hasRequiredSize(constraints, example) ? "" : formatDimensions({*rows, *columns});
    }
    if (rows) {
        return "in " + pluralise(*rows, "row");
    }
    return columns ? "in " + pluralise(*columns, "column") : "in rows and columns";
}

void foldSize(const Constraints& constraints, Constraint& all)
{
    all.classOr(ArrayType::DOUBLE);
    all.restrictSize(*constraints.size);
}

// Allowed strings

bool isOneOf(const Strings& allowed, const Array& value)
{
    const auto string = data::textOf(value);
    return string && std::ranges::find(allowed, *string) != allowed.end();
}

/// Whether a string, or every element of a cell, is allowed.
bool containsOnlyAllowed(const Constraints& constraints, const Array& value)
{
    if (value.getType() != ArrayType::CELL) {
        return isOneOf(constraints.allowedValues, value);
    }
    return std::ranges::all_of(data::elementsOf<Array>(value), [&](const Array& element) {
        return isOneOf(constraints.allowedValues, element);
    });
}

std::string listAllowed(const Strings& allowed)
{
    std::string list;
    for (const std::u16string& string : allowed) {
        list += list.empty() ? "one of: " : ", ";
        list += string.empty() ? "\"\"" : toUtf8(string);
    }
    return list;
}

std::string describeAllowed(const Constraints& constraints, const Array& example)
{
    return (example.getType() == ArrayType::CELL ? "each " : "") + listAllowed(constraints.allowedValues);
}

void foldAllowed(const Constraints& constraints, Constraint& all)
{
    const ArrayType type = all.classOr(ArrayType::CHAR);
    all.require(isStringClass(type) || type == ArrayType::CELL);
    std::vector<std::u16string_view> common(constraints.allowedValues.begin(),
                                            constraints.allowedValues.end());
    if (all.allowedStrings) {
        std::erase_if(common, [&others = *all.allowedStrings](std::u16string_view string) {
            return std::ranges::find(others, string) == others.end();
        });
    }
    all.allowedStrings = std::move(common);
}

Parameter stringsParameter(std::string_view name, const Strings& strings)
{
    std::vector<std::string> converted;
    std::ranges::transform(strings, std::back_inserter(converted),
                           [](const std::u16string& string) { return toUtf8(string); });
    return {name, std::move(converted)};
}

// Colours. The allowed values of constraints with a colour are colour names.

bool isNormalised(const Constraints& constraints)
{
    return constraints.colour == Colour::normalised;
}

bool isColour(const Constraints& constraints, const Array& value)
{
    const bool mayBeFraction = isNormalised(constraints);
    const bool isTriple =
        data::hasSize(value, 1, 3) && data::everyNumber(value, [mayBeFraction](auto part) {
            return data::isWithin(part, 0, mayBeFraction ? 1 : 255) && (mayBeFraction || data::isWhole(part));
        });
    return isTriple || isOneOf(constraints.allowedValues, value);
}

std::string describeColour(const Constraints& constraints, const Array& /*example*/)
{
    std::string description = "a colour: red, green and blue, each ";
    description += isNormalised(constraints) ? "a number from 0 to 1" : "a whole number from 0 to 255";
    const Strings& names = constraints.allowedValues;
    return names.empty() ? description : description + ", or " + listAllowed(names);
}

void foldColour(const Constraints& constraints, Constraint& all)
{
    all.restrictSize({1, 3});
    all.restrictRange({0, isNormalised(constraints) ? 1.0 : 255.0});
    all.isWhole = all.isWhole || !isNormalised(constraints);
    all.colour = constraints.colour;
    all.colourNames.assign(constraints.allowedValues.begin(), constraints.allowedValues.end());
    all.acceptsColourNames = all.acceptsColourNames || !all.colourNames.empty();
}

Parameters colourParameters(const Constraints& constraints)
{
    Parameters parameters{{"form", isNormalised(constraints) ? "normalised" : "wholeNumbers"}};
    if (!constraints.allowedValues.empty()) {
        parameters.push_back(stringsParameter("words", constraints.allowedValues));
    }
    return parameters;
}

void restoreColour(const ParameterReader& parameters, Constraints& constraints)
{
    constraints.colour =
        parameters.string("form") == "normalised" ? Colour::normalised : Colour::wholeNumbers;
    if (parameters.has("words")) {
        constraints.allowedValues = parameters.strings("words");
    }
}

// If the factory value does not determine the class, the first kind here that implies a class does.
constexpr auto kinds = std::to_array<ConstraintKind>({
    {.name = "elementClass",
     .exportPosition = 1,
     .isSet = [](const Constraints& c) { return c.elementClass.has_value(); },
     .accepts = hasRequiredClass,
     .describe = describeClass,
     .fold = [](const Constraints& c,
                Constraint& all) { all.require(all.classOr(*c.elementClass) == *c.elementClass); },
     .parameters =
         [](const Constraints& c) {
             return Parameters{{"class", className(*c.elementClass)}};
         },
     .restore =
         [](const ParameterReader& p, Constraints& c) {
             c.elementClass = data::classNamed(p.string("class"));
             if (!c.elementClass) {
                 throw std::invalid_argument("unknown class " + p.string("class"));
             }
         }},
    {.name = "range",
     .exportPosition = 2,
     .isSet = [](const Constraints& c) { return c.range.has_value(); },
     .accepts = isInRange,
     .describe = describeRange,
     .fold = [](const Constraints& c, Constraint& all) { all.restrictRange(*c.range); },
     .parameters =
         [](const Constraints& c) {
             return Parameters{{"lower", c.range->lower}, {"upper", c.range->upper}};
         },
     .restore =
         [](const ParameterReader& p, Constraints& c) {
             c.range = {p.number("lower", -infinity), p.number("upper", infinity)};
         }},
    {.name = "maximumLength",
     .exportPosition = 4,
     .isSet = [](const Constraints& c) { return c.maximumLength.has_value(); },
     .accepts = [](const Constraints& c, const Array& value) { return lengthOf(value) <= *c.maximumLength; },
     .describe = describeLength,
     .fold = foldLength,
     .parameters =
         [](const Constraints& c) {
             return Parameters{{"length", c.maximumLength}};
         },
     .restore = [](const ParameterReader& p, Constraints& c) { c.maximumLength = p.count("length"); }},
    {.name = "size",
     .exportPosition = 0,
     .isSet = [](const Constraints& c) { return c.size.has_value(); },
     .accepts = hasRequiredSize,
     .describe = describeSize,
     .fold = foldSize,
     .parameters =
         [](const Constraints& c) {
             return Parameters{{"rows", c.size->rows}, {"columns", c.size->columns}};
         },
     .restore =
         [](const ParameterReader& p, Constraints& c) {
             c.size = {p.count("rows"), p.count("columns")};
         }},
    {.name = "allowedValues",
     .exportPosition = 3,
     .isSet = [](const Constraints& c) { return !c.allowedValues.empty() && !c.colour; },
     .accepts = containsOnlyAllowed,
     .describe = describeAllowed,
     .fold = foldAllowed,
     .parameters =
         [](const Constraints& c) { return Parameters{stringsParameter("values", c.allowedValues)}; },
     .restore = [](const ParameterReader& p, Constraints& c) { c.allowedValues = p.strings("values"); }},
    {.name = "colour",
     .exportPosition = 5,
     .isSet = [](const Constraints& c) { return c.colour.has_value(); },
     .accepts = isColour,
     .describe = describeColour,
     .fold = foldColour,
     .parameters = colourParameters,
     .restore = restoreColour},
});

/// Never called. Fails to compile if Constraints gets another field, which then needs a name here and an
/// entry in the table.
[[maybe_unused]] void requireKindForEachField(const Constraints& constraints)
{
    const auto& [range, allowedValues, maximumLength, size, elementClass, colour] = constraints;
    using Fields = decltype(std::tie(range, allowedValues, maximumLength, size, elementClass, colour));
    static_assert(kinds.size() == std::tuple_size_v<Fields>, "a field has no entry in the table of kinds");
}

}  // namespace

std::span<const ConstraintKind> constraintKinds() noexcept
{
    return kinds;
}

bool satisfiesAll(const std::vector<ValueValidator>& validators, const Array& value)
{
    return std::ranges::all_of(validators, [&value](const ValueValidator& validator) {
        return std::ranges::all_of(kinds, [&](const ConstraintKind& kind) {
            return !kind.isSet(validator) || kind.accepts(validator, value);
        });
    });
}

double ParameterReader::number(std::string_view name, double open) const
{
    return findAs<std::optional<std::size_t>>(name) != nullptr ? open : as<double>(name, "a number");
}

std::optional<std::size_t> ParameterReader::count(std::string_view name) const
{
    if (findAs<std::optional<std::size_t>>(name) != nullptr) {
        return std::nullopt;
    }
    const auto count = as<double>(name, "a whole number");
    if (!data::isWhole(count) || !data::isWithin(count, 0, maximumCount)) {
        throw std::invalid_argument(std::string(name) + ": expected a whole number");
    }
    return static_cast<std::size_t>(count);
}

const std::string& ParameterReader::string(std::string_view name) const
{
    return as<std::string>(name, "a string");
}

std::vector<std::u16string> ParameterReader::strings(std::string_view name) const
{
    std::vector<std::u16string> converted;
    std::ranges::transform(as<std::vector<std::string>>(name, "a list of strings"),
                           std::back_inserter(converted),
                           [](const std::string& string) { return foundation::verdixdata::toUtf16(string); });
    return converted;
}

const Parameter* ParameterReader::find(std::string_view name) const noexcept
{
    const auto found = std::ranges::find(parameters_, name, &Parameter::name);
    return found == parameters_.end() ? nullptr : &*found;
}

/// Returns the parameter's value; null if it has another type or is missing.
template <class T>
const T* ParameterReader::findAs(std::string_view name) const
{
    const Parameter* const parameter = find(name);
    return parameter == nullptr ? nullptr : std::get_if<T>(&parameter->value);
}

template <class T>
const T& ParameterReader::as(std::string_view name, const char* expected) const
{
    if (const T* const value = findAs<T>(name)) {
        return *value;
    }
    throw std::invalid_argument(std::string(name) + ": expected " + expected);
}

bool isOpen(const ::settings::core::SettingValueValidator::Range& range) noexcept
{
    return range.lower == -infinity && range.upper == infinity;
}

}  // namespace vx::core
