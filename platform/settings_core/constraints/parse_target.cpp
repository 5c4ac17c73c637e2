#include <settings_core/constraints/parse_target.hpp>

#include <algorithm>
#include <string_view>
#include <variant>

namespace vx::core {

namespace {

using foundation::verdixdata::ArrayType;
using ValueValidator = ::settings::core::SettingValueValidator::ConfigData;

std::optional<ArrayType> requiredClass(const ::settings::core::Validator& validator)
{
    const auto* script = std::get_if<::settings::core::MValidator>(&validator);
    const std::string_view function = script == nullptr ? std::string_view() : script->function();
    if (function == "mustBeLogicalScalar") {
        return ArrayType::LOGICAL;
    }
    if (function == "mustBeStringScalar") {
        return ArrayType::CHAR;
    }
    if (function == "mustBeIntegerScalar" || function == "mustBeNumericScalar") {
        return ArrayType::DOUBLE;
    }
    return std::nullopt;
}

std::optional<ArrayType> requiredClass(const ValueValidator& validator)
{
    if (validator.elementClass) {
        return validator.elementClass;
    }
    if (validator.colour || validator.range || validator.size) {
        return ArrayType::DOUBLE;
    }
    return validator.allowedValues.empty() ? std::nullopt : std::optional(ArrayType::CHAR);
}

/// Whether the factory value determines the class. The name of a colour does not: it stands for a triple.
bool factoryValueDeterminesClass(const Node::Properties& properties)
{
    const auto& validators = properties.valueValidators;
    const bool isColour =
        std::any_of(validators.begin(), validators.end(),
                    [](const ValueValidator& validator) { return validator.colour.has_value(); });
    const ArrayType type = properties.factoryValue.getType();
    const bool isString = type == ArrayType::CHAR || type == ArrayType::STRING;
    return properties.factoryValue.isAssigned() && !(isColour && isString);
}

std::optional<ArrayType> targetClass(const Node::Properties& properties)
{
    if (factoryValueDeterminesClass(properties)) {
        return properties.factoryValue.getType();
    }
    std::optional<ArrayType> required = requiredClass(properties.validator);
    for (const ValueValidator& validator : properties.valueValidators) {
        required = required ? required : requiredClass(validator);
    }
    return required;
}

}  // namespace

ParseTarget parseTargetOf(const Node& setting)
{
    const auto& properties = setting.properties();
    const auto namesColours = [](const ValueValidator& validator) {
        return validator.colour.has_value() && !validator.allowedValues.empty();
    };
    const auto& validators = properties.valueValidators;
    return {targetClass(properties), std::any_of(validators.begin(), validators.end(), namesColours)};
}

}  // namespace vx::core
