#include <settings_core/parse_target.hpp>

#include <algorithm>
#include <string_view>
#include <variant>

namespace vx::core {

namespace {

using foundation::verdixdata::ArrayType;
using Record = ::settings::core::SettingValueValidator::ConfigData;

std::optional<ArrayType> demandedBy(const ::settings::core::Validator& validator)
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

std::optional<ArrayType> demandedBy(const Record& record)
{
    if (record.elementClass) {
        return record.elementClass;
    }
    if (record.colour || record.range || record.size) {
        return ArrayType::DOUBLE;
    }
    return record.allowedValues.empty() ? std::nullopt : std::optional(ArrayType::CHAR);
}

/// A factory value says what kind its setting takes, but for the name of a colour: it stands for a triple.
bool decidesClass(const Node::Properties& properties)
{
    const auto& records = properties.valueValidators;
    const bool isColour = std::any_of(records.begin(), records.end(),
                                      [](const Record& record) { return record.colour.has_value(); });
    const ArrayType type = properties.factoryValue.getType();
    const bool isText = type == ArrayType::CHAR || type == ArrayType::STRING;
    return properties.factoryValue.isAssigned() && !(isColour && isText);
}

std::optional<ArrayType> demandedClass(const Node::Properties& properties)
{
    if (decidesClass(properties)) {
        return properties.factoryValue.getType();
    }
    std::optional<ArrayType> demanded = demandedBy(properties.validator);
    for (const Record& record : properties.valueValidators) {
        demanded = demanded ? demanded : demandedBy(record);
    }
    return demanded;
}

}  // namespace

ParseTarget parseTargetOf(const Node& setting)
{
    const auto& properties = setting.properties();
    const auto namesColours = [](const Record& record) {
        return record.colour.has_value() && !record.allowedValues.empty();
    };
    const auto& records = properties.valueValidators;
    return {demandedClass(properties), std::any_of(records.begin(), records.end(), namesColours)};
}

}  // namespace vx::core
