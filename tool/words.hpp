#pragma once

// Facts about nodes in a word or two, the same in every verb's output.

#include <settings_core/node.hpp>

#include <settings/core/function_name.hpp>

#include <string>
#include <string_view>
#include <type_traits>
#include <variant>
#include <vector>

namespace vx::tool {

/// "group", "setting" or "alias".
[[nodiscard]] std::string_view kindWord(core::NodeKind kind) noexcept;

/// What the provider said of visibility: "default" (nothing), "visible" or "hidden".
[[nodiscard]] std::string_view visibilityWord(const core::Node& node) noexcept;

/// Place and name of a function: "verdix.settings.mustBeLogicalScalar".
[[nodiscard]] std::string qualifiedName(const ::settings::core::detail::FunctionName& function);

/// The same of a validator or run-time default; empty where there is none.
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

/// Names of what a setting's values are checked by: that of the validator function, "callable" for one
/// without a name, and the rules of the records by their names in an exported tree; "none" alone without any.
[[nodiscard]] std::vector<std::string> checkNames(const core::Node& setting);

}  // namespace vx::tool
