#include "render/value_constraints.hpp"

#include <algorithm>
#include <string_view>
#include <variant>

namespace vx::tool {

namespace {

using core::Node;
using foundation::verdixdata::ArrayType;
using ValueValidator = ValueConstraints::ValueValidator;

bool isCharOrString(ArrayType type)
{
    return type == ArrayType::CHAR || type == ArrayType::STRING;
}

bool isNumeric(ArrayType type)
{
    return !isCharOrString(type) && type != ArrayType::LOGICAL && type != ArrayType::CELL;
}

void require(ValueConstraints& values, bool condition)
{
    values.acceptsNothing = values.acceptsNothing || !condition;
}

void restrict(ValueConstraints& values, std::optional<std::size_t>& extent,
              const std::optional<std::size_t>& demanded)
{
    require(values, !extent || !demanded || extent == demanded);
    extent = demanded ? demanded : extent;
}

void restrict(ValueConstraints& values, const ValueValidator::Size& size)
{
    restrict(values, values.size.rows, size.rows);
    restrict(values, values.size.columns, size.columns);
}

void restrict(ValueConstraints& values, const ValueValidator::Range& range)
{
    require(values, values.form.elementClass && isNumeric(*values.form.elementClass));
    values.range = {std::max(values.range.lower, range.lower), std::min(values.range.upper, range.upper)};
}

void restrict(ValueConstraints& values, const std::vector<std::u16string>& allowed)
{
    const ArrayType type = values.form.elementClass.value_or(ArrayType::CHAR);
    require(values, isCharOrString(type) || type == ArrayType::CELL);
    std::vector<std::u16string> kept = allowed;
    if (values.allowedStrings) {
        std::erase_if(kept, [&](const std::u16string& string) {
            return std::ranges::find(*values.allowedStrings, string) == values.allowedStrings->end();
        });
    }
    values.allowedStrings = std::move(kept);
    values.rejectsMissing = true;
}

void addColour(ValueConstraints& values, const ValueValidator::ConfigData& validator)
{
    const bool isNormalised = *validator.colour == ValueValidator::Colour::normalised;
    restrict(values, ValueValidator::Size{1, 3});
    restrict(values, ValueValidator::Range{0, isNormalised ? 1.0 : 255.0});
    values.isWhole = values.isWhole || !isNormalised;
    values.colourNames = validator.allowedValues;
}

void addValueValidator(ValueConstraints& values, const ValueValidator::ConfigData& validator)
{
    if (validator.range) {
        restrict(values, *validator.range);
    }
    if (!validator.allowedValues.empty() && !validator.colour) {
        restrict(values, validator.allowedValues);
    }
    if (validator.maximumLength) {
        values.maximumLength = std::min(values.maximumLength, *validator.maximumLength);
    }
    if (validator.size) {
        restrict(values, *validator.size);
    }
    if (validator.elementClass) {
        require(values, values.form.elementClass == validator.elementClass);
    }
    if (validator.colour) {
        addColour(values, validator);
    }
}

void addScriptValidator(ValueConstraints& values, std::string_view function)
{
    const ArrayType type = values.form.elementClass.value_or(ArrayType::UNKNOWN);
    if (function == "mustBeLogicalScalar") {
        require(values, type == ArrayType::LOGICAL);
    } else if (function == "mustBeStringScalar") {
        require(values, isCharOrString(type));
        values.rejectsMissing = true;
    } else if (function == "mustBeIntegerScalar" || function == "mustBeNumericScalar") {
        require(values, isNumeric(type));
        values.isWhole = values.isWhole || function == "mustBeIntegerScalar";
    } else {
        return;
    }
    if (type != ArrayType::CHAR) {
        restrict(values, ValueValidator::Size{1, 1});
    }
}

/// Constrains the size to that of the factory value, unless a value validator constrains it. Character
/// vectors and cells have any length.
void addFactoryShape(ValueConstraints& values, const Node::Properties& properties)
{
    const auto& validators = properties.valueValidators;
    const bool constrainsSize =
        std::any_of(validators.begin(), validators.end(), [](const ValueValidator::ConfigData& validator) {
            return validator.size || validator.colour;
        });
    const auto& factory = properties.factoryValue;
    const ArrayType type = factory.getType();
    if (!factory.isAssigned() || constrainsSize || type == ArrayType::CHAR || type == ArrayType::CELL) {
        return;
    }
    const auto dimensions = factory.getDimensions();
    require(values, dimensions.size() == 2);  // settings files cannot hold other values
    restrict(values, ValueValidator::Size{dimensions[0], dimensions[1]});
}

}  // namespace

ValueConstraints constraintsOf(const Node& setting)
{
    const Node::Properties& properties = setting.properties();
    ValueConstraints values{.form = core::parseTargetOf(setting),
                            .acceptsNothing = properties.readOnly.value()};
    addFactoryShape(values, properties);
    if (const auto* script = std::get_if<::settings::core::MValidator>(&properties.validator)) {
        addScriptValidator(values, script->function());
    }
    for (const ValueValidator::ConfigData& validator : properties.valueValidators) {
        addValueValidator(values, validator);
    }
    return values;
}

}  // namespace vx::tool
