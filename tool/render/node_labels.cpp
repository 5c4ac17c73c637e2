#include "render/node_labels.hpp"

#include <utility>

namespace vx::tool {

namespace {

struct ValidatorName
{
    std::string operator()(std::monostate) const { return {}; }
    std::string operator()(const ::settings::core::CPPValidator& /*callable*/) const { return "callable"; }
    std::string operator()(const ::settings::core::detail::FunctionName& named) const
    {
        return named.function();
    }
};

void addConstraintNames(std::vector<std::string>& names,
                        const ::settings::core::SettingValueValidator::ConfigData& validator)
{
    const auto add = [&names](bool isPresent, const char* name) {
        if (isPresent) {
            names.emplace_back(name);
        }
    };
    add(validator.range.has_value(), "range");
    add(!validator.allowedValues.empty() && !validator.colour, "allowedValues");
    add(validator.maximumLength.has_value(), "maximumLength");
    add(validator.size.has_value(), "size");
    add(validator.elementClass.has_value(), "elementClass");
    add(validator.colour.has_value(), "colour");
}

}  // namespace

std::string qualifiedName(const ::settings::core::detail::FunctionName& function)
{
    return function.scope() + "." + function.function();
}

std::vector<std::string> constraintNames(const core::Node& setting)
{
    const auto& properties = setting.properties();
    std::vector<std::string> names;
    if (std::string name = std::visit(ValidatorName(), properties.validator); !name.empty()) {
        names.push_back(std::move(name));
    }
    for (const auto& validator : properties.valueValidators) {
        addConstraintNames(names, validator);
    }
    return names.empty() ? std::vector<std::string>{"none"} : names;
}

}  // namespace vx::tool
