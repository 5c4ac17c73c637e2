#include "words.hpp"

#include <utility>

namespace vx::tool {

namespace {

struct CheckName
{
    std::string operator()(std::monostate) const { return {}; }
    std::string operator()(const ::settings::core::CPPValidator& /*callable*/) const { return "callable"; }
    std::string operator()(const ::settings::core::detail::FunctionName& named) const
    {
        return named.function();
    }
};

void addRuleNames(std::vector<std::string>& names,
                  const ::settings::core::SettingValueValidator::ConfigData& record)
{
    const auto add = [&names](bool isStated, const char* name) {
        if (isStated) {
            names.emplace_back(name);
        }
    };
    add(record.range.has_value(), "range");
    add(!record.allowedValues.empty() && !record.colour, "allowedValues");
    add(record.maximumLength.has_value(), "maximumLength");
    add(record.size.has_value(), "size");
    add(record.elementClass.has_value(), "elementClass");
    add(record.colour.has_value(), "colour");
}

}  // namespace

std::string_view kindWord(core::NodeKind kind) noexcept
{
    switch (kind) {
    case core::NodeKind::group:
        return "group";
    case core::NodeKind::setting:
        return "setting";
    case core::NodeKind::alias:
        break;
    }
    return "alias";
}

std::string_view visibilityWord(const core::Node& node) noexcept
{
    const auto& visible = node.properties().visible;
    return !visible.isWritten() ? "default" : visible.value() ? "visible" : "hidden";
}

std::string qualifiedName(const ::settings::core::detail::FunctionName& function)
{
    return function.scope() + "." + function.function();
}

std::vector<std::string> checkNames(const core::Node& setting)
{
    const auto& properties = setting.properties();
    std::vector<std::string> names;
    if (std::string name = std::visit(CheckName(), properties.validator); !name.empty()) {
        names.push_back(std::move(name));
    }
    for (const auto& record : properties.valueValidators) {
        addRuleNames(names, record);
    }
    return names.empty() ? std::vector<std::string>{"none"} : names;
}

}  // namespace vx::tool
