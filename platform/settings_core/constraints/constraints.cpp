#include <data/views.hpp>
#include <settings_core/constraints/constraints.hpp>
#include <settings_core/constraints/kinds.hpp>
#include <settings_core/constraints/script_functions.hpp>
#include <settings_core/values/value_format.hpp>

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace vx::core {

namespace {

using foundation::verdixdata::Array;
using foundation::verdixdata::ArrayType;
using Properties = ::settings::core::detail::FactorySettingProperties;
using ::settings::core::SettingValueValidator;

/// Whether the factory value decides about the class. The name of a colour does not: it stands for a triple.
bool hasFactoryClass(const Properties& properties)
{
    const auto isColour = [](const ValueValidator& validator) { return validator.colour.has_value(); };
    return properties.factoryValue.isAssigned() &&
           !(isStringClass(properties.factoryValue.getType()) &&
             std::ranges::any_of(properties.valueValidators, isColour));
}

/// Describes the class and size that the factory value prescribes: "a number", "4 numbers"; "numbers" if a
/// value validator leaves the size open.
std::string describeKind(const Properties& properties)
{
    const Array& factory = properties.factoryValue;
    const ArrayType type = factory.getType();
    if (!factory.isAssigned() || type == ArrayType::CELL) {
        return factory.isAssigned() ? "a cell of strings" : "a value";
    }
    if (isStringClass(type)) {
        return "a string";
    }
    const bool isLogical = type == ArrayType::LOGICAL;
    const std::string whole = type == ArrayType::DOUBLE ? "" : "whole ";
    const auto [rows, columns] = constraintOf(properties).size;
    const std::size_t count = factory.getNumberOfElements();
    if (rows && columns && count == 1) {
        return isLogical ? "true or false" : "a " + whole + "number";
    }
    return (rows && columns ? std::to_string(count) + " " : "") +
           (isLogical ? "logical values" : whole + "numbers");
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

ArrayType Constraint::classOr(ArrayType type) noexcept
{
    elementClass = elementClass.value_or(type);
    return *elementClass;
}

void Constraint::restrictSize(const SettingValueValidator::Size& required) noexcept
{
    const auto restrict = [this](auto& extent, const auto& requiredExtent) {
        require(!extent || !requiredExtent || extent == requiredExtent);
        extent = requiredExtent ? requiredExtent : extent;
    };
    restrict(size.rows, required.rows);
    restrict(size.columns, required.columns);
    hasFactorySize = false;
}

void Constraint::restrictRange(const SettingValueValidator::Range& required) noexcept
{
    const ArrayType type = classOr(ArrayType::DOUBLE);
    require(!isStringClass(type) && type != ArrayType::LOGICAL && type != ArrayType::CELL);
    range = {std::max(range.lower, required.lower), std::min(range.upper, required.upper)};
    if (!(required.lower <= required.upper)) {  // bounds that are NaN exclude all numbers
        range = {.lower = 1, .upper = 0};
    }
}

Constraint constraintOf(const Properties& properties)
{
    Constraint all;
    const Array& factory = properties.factoryValue;
    if (hasFactoryClass(properties)) {
        all.elementClass = factory.getType();
    }
    if (const ScriptFunction* function = findScriptFunction(properties.validator)) {
        function->fold(all);
    } else {  // a value that no function can check is rejected
        all.require(!std::holds_alternative<::settings::core::MValidator>(properties.validator));
    }
    // Character vectors and cells have any length.
    all.hasFactorySize =
        factory.isAssigned() && factory.getType() != ArrayType::CHAR && factory.getType() != ArrayType::CELL;
    for (const ValueValidator& validator : properties.valueValidators) {
        forEachKind(validator, [&](const ConstraintKind& kind) { kind.fold(validator, all); });
    }
    if (all.hasFactorySize) {
        const auto dimensions = factory.getDimensions();
        all.require(dimensions.size() == 2);  // settings files cannot hold other values
        all.restrictSize({dimensions[0], dimensions[1]});
        all.hasFactorySize = true;
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
    using namespace ::settings::core;
    if (const ScriptFunction* function = findScriptFunction(validator)) {
        return std::string(function->description);
    }
    if (const auto* script = std::get_if<MValidator>(&validator)) {
        return "accepted by the script function " + script->scope() + "." + script->function();
    }
    if (const auto* native = std::get_if<CValidator>(&validator)) {
        return "accepted by " + native->function() + " of " + native->scope();
    }
    if (const auto* managed = std::get_if<JValidator>(&validator)) {
        return "accepted by the managed method " + managed->scope() + "." + managed->function();
    }
    return std::holds_alternative<std::monostate>(validator) ? "" : "accepted by its provider's validator";
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
    constraints.reserve(kinds.size());
    for (const ConstraintKind* kind : kinds) {
        constraints.push_back({kind->name, kind->parameters(validator)});
    }
    return constraints;
}

void restoreConstraint(const ExportedConstraint& constraint, std::vector<ValueValidator>& validators)
{
    const auto kind = std::ranges::find(constraintKinds(), constraint.kind, &ConstraintKind::name);
    if (kind == constraintKinds().end()) {
        throw std::invalid_argument("unknown kind \"" + std::string(constraint.kind) + "\"");
    }
    bool isNew = validators.empty();
    if (!isNew) {
        forEachKind(validators.back(), [&](const ConstraintKind& present) {
            isNew = isNew || present.exportPosition >= kind->exportPosition;
        });
    }
    ValueValidator& validator = isNew ? validators.emplace_back() : validators.back();
    kind->restore(ParameterReader(constraint.parameters), validator);
}

}  // namespace vx::core
