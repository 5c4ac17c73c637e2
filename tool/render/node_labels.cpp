#include "render/node_labels.hpp"

#include <settings_core/constraints/constraints.hpp>

#include <algorithm>
#include <iterator>
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
        for (const core::ExportedConstraint& constraint : core::exportedConstraints(validator)) {
            names.emplace_back(constraint.kind);
        }
    }
    return names.empty() ? std::vector<std::string>{"none"} : names;
}

std::set<std::string> constraintNames(const core::SettingsTree& tree)
{
    std::set<std::string> names;
    for (const core::Node* node : tree.nodes()) {
        if (node->kind() == core::NodeKind::setting) {
            std::ranges::move(constraintNames(*node), std::inserter(names, names.end()));
        }
    }
    return names;
}

}  // namespace vx::tool
