#pragma once

#include <settings_core/constraints/constraints.hpp>

#include <settings/core/validators.hpp>

#include <string_view>

namespace vx::core {

/// A validator of the scripting language that the settings core implements natively.
struct ScriptFunction
{
    std::string_view name;
    std::string_view description;  ///< phrase that follows "must be"
    bool (*accepts)(const foundation::verdixdata::Array& value);
    void (*fold)(Constraint& all);  ///< restricts `all`
};

/// Returns the function that the validator names, or null if it names none that is implemented here.
[[nodiscard]] const ScriptFunction* findScriptFunction(const ::settings::core::Validator& validator) noexcept;

}  // namespace vx::core
