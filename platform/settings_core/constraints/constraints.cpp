#include <data/views.hpp>
#include <settings_core/constraints/constraints.hpp>
#include <settings_core/constraints/kinds.hpp>
#include <settings_core/constraints/script_functions.hpp>
#include <settings_core/values/value_format.hpp>

#include <algorithm>
#include <utility>

namespace vx::core {

namespace {

using foundation::verdixdata::Array;
using foundation::verdixdata::ArrayType;
using Properties = ::settings::core::detail::FactorySettingProperties;
using ::settings::core::SettingValueValidator;

bool isStringClass(ArrayType type)
{
    return type == ArrayType::CHAR || type == ArrayType::STRING;
}

// Folding

/// Returns the class that the validator or, before others, the first value validators require.
std::optional<ArrayType> requiredClass(const Properties& properties)
{
    if (const ScriptFunction* function = findScriptFunction(properties.validator)) {
        return function->requiredClass;
    }
    ArrayType required = ArrayType::UNKNOWN;
    for (const ValueValidator& validator : properties.valueValidators) {
        forEachKind(validator, [&](const ConstraintKind& kind) {
            required = required == ArrayType::UNKNOWN ? kind.requiredClass(validator) : required;
        });
    }
    return required == ArrayType::UNKNOWN ? std::nullopt : std::optional(required);
}

/// Returns the class of the factory value or, without one, the required class. The name of a colour does not
/// determine the class: it stands for a triple.
std::optional<ArrayType> classOf(const Properties& properties)
{
    const ArrayType type = properties.factoryValue.getType();
    const auto isColour = [](const ValueValidator& validator) { return validator.colour.has_value(); };
    const bool isDetermined =
        properties.factoryValue.isAssigned() &&
        !(isStringClass(type) && std::ranges::any_of(properties.valueValidators, isColour));
    return isDetermined ? type : requiredClass(properties);
}

/// Whether the value must have the size of the factory value. Character vectors and cells have any length.
bool hasFactorySize(const Properties& properties)
{
    const ArrayType type = properties.factoryValue.getType();
    bool isGiven = properties.factoryValue.isAssigned() && type != ArrayType::CHAR && type != ArrayType::CELL;
    for (const ValueValidator& validator : properties.valueValidators) {
        forEachKind(validator, [&](const ConstraintKind& kind) { isGiven = isGiven && !kind.givesSize; });
    }
    return isGiven;
}

// Descriptions

/// Returns "a number" or "4 numbers", the size of the factory value; "numbers" if the size is open.
std::string describeCount(const Properties& properties, const char* one, const std::string& several)
{
    const auto [rows, columns] = constraintOf(properties).size;
    const std::size_t count = properties.factoryValue.getNumberOfElements();
    return !rows || !columns ? several : count == 1 ? one : std::to_string(count) + " " + several;
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
    if (findScriptFunction(properties.validator) != nullptr) {
        return description;
    }
    return describeKind(properties) + (description.empty() ? "" : " ") + description;
}

}  // namespace

bool Constraint::isSatisfiable() const noexcept
{
    return !acceptsNothing && range.lower <= range.upper && !(allowedStrings && allowedStrings->empty());
}

bool Constraint::hasStrings() const noexcept
{
    return elementClass && isStringClass(*elementClass);
}

bool Constraint::hasNumbers() const noexcept
{
    return elementClass && !hasStrings() && elementClass != ArrayType::LOGICAL &&
           elementClass != ArrayType::CELL;
}

void Constraint::restrictSize(const SettingValueValidator::Size& required) noexcept
{
    const auto restrict = [this](auto& extent, const auto& requiredExtent) {
        require(!extent || !requiredExtent || extent == requiredExtent);
        extent = requiredExtent ? requiredExtent : extent;
    };
    restrict(size.rows, required.rows);
    restrict(size.columns, required.columns);
}

void Constraint::restrictRange(const SettingValueValidator::Range& required) noexcept
{
    require(hasNumbers());
    range = {std::max(range.lower, required.lower), std::min(range.upper, required.upper)};
    if (!(required.lower <= required.upper)) {  // bounds that are NaN exclude all numbers
        range = {.lower = 1, .upper = 0};
    }
}

Constraint constraintOf(const Properties& properties)
{
    Constraint all;
    all.elementClass = classOf(properties);
    all.hasFactorySize = hasFactorySize(properties);
    if (all.hasFactorySize) {
        const auto dimensions = properties.factoryValue.getDimensions();
        all.require(dimensions.size() == 2);  // settings files cannot hold other values
        all.restrictSize({dimensions[0], dimensions[1]});
    }
    if (const ScriptFunction* function = findScriptFunction(properties.validator)) {
        function->fold(all);
    } else {  // a value that no function can check is rejected
        all.require(!std::holds_alternative<::settings::core::MValidator>(properties.validator));
    }
    for (const ValueValidator& validator : properties.valueValidators) {
        forEachKind(validator, [&](const ConstraintKind& kind) { kind.fold(validator, all); });
    }
    return all;
}

std::string describeConstraint(const Properties& properties)
{
    // A range follows a noun without a comma: "a whole number from 0 to 3", but "a number accepted by f of
    // lib, from 0 to 3".
    const bool endsInNoun = std::holds_alternative<std::monostate>(properties.validator) ||
                            std::holds_alternative<::settings::core::MValidator>(properties.validator);
    // The description of a colour includes the kind of value.
    std::string text = constraintOf(properties).colour ? "" : describeKindAndValidator(properties);
    for (const ValueValidator& validator : properties.valueValidators) {
        const std::string words = describeValueValidator(validator, properties.factoryValue);
        const char* separator = validator.range && !isOpen(*validator.range) && endsInNoun ? " " : ", ";
        text += (text.empty() || words.empty() ? "" : separator) + words;
    }
    return text;
}

std::string describeValidator(const ::settings::core::Validator& validator)
{
    struct Describe
    {
        std::string operator()(std::monostate) const { return {}; }
        std::string operator()(const ::settings::core::MValidator& named) const
        {
            return "accepted by the script function " + named.scope() + "." + named.function();
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
    const ScriptFunction* function = findScriptFunction(validator);
    return function != nullptr ? std::string(function->description) : std::visit(Describe{}, validator);
}

std::string describeValueValidator(const ValueValidator& validator, const Array& example)
{
    std::string text;
    forEachKind(validator, [&](const ConstraintKind& kind) {
        const std::string words = kind.describe(validator, example);
        text += (text.empty() || words.empty() ? "" : ", ") + words;
    });
    return text;
}

std::vector<ExportedConstraint> exportedConstraints(const ValueValidator& validator)
{
    std::vector<const ConstraintKind*> kinds;
    forEachKind(validator, [&](const ConstraintKind& kind) { kinds.push_back(&kind); });
    std::ranges::sort(kinds, {}, &ConstraintKind::exportPosition);
    std::vector<ExportedConstraint> constraints;
    for (const ConstraintKind* kind : kinds) {
        constraints.push_back({kind->name, kind->parameters(validator)});
    }
    return constraints;
}

}  // namespace vx::core
