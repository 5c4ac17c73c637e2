#pragma once

// Short labels for the properties of nodes, shared by all commands.

#include <settings_core/tree/node.hpp>
#include <settings_core/tree/settings_tree.hpp>

#include <settings/core/function_name.hpp>

#include <set>
#include <string>
#include <string_view>
#include <type_traits>
#include <variant>
#include <vector>

namespace vx::tool {

/// Returns scope and name of a function: "verdix.settings.mustBeLogicalScalar".
[[nodiscard]] std::string qualifiedName(const ::settings::core::detail::FunctionName& function);

/// Returns the qualified name of a validator or run-time default; empty if there is none.
template <class... Functions>
[[nodiscard]] std::string qualifiedName(const std::variant<std::monostate, Functions...>& function)
{
    return std::visit(
        []<class Function>(const Function& named) {
            if constexpr (std::is_same_v<Function, std::monostate>) {
                return std::string();
            } else {
                return qualifiedName(named);
            }
        },
        function);
}

/// Returns the names of all constraints of a setting: the function name of its validator ("callable" if the
/// validator has no name) and the kinds of its value validators as in an exported tree; only "none" if there
/// are none.
[[nodiscard]] std::vector<std::string> constraintNames(const core::Node& setting);

/// Returns the names of the constraints of all settings of a tree.
[[nodiscard]] std::set<std::string> constraintNames(const core::SettingsTree& tree);

}  // namespace vx::tool
