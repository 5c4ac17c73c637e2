#pragma once

#include <settings/core/validators.hpp>

#include <string_view>

namespace vx::core {

/// A validator of the scripting language that the settings core implements natively.
struct ScriptFunction
{
    std::string_view name;
    /// The constraint as a phrase that follows "must be".
    std::string_view constraint;
    bool (*accepts)(const foundation::verdixdata::Array& value);
};

/// Returns the function that the validator names, or null when it is not implemented here.
[[nodiscard]] const ScriptFunction*
findScriptFunction(const ::settings::core::MValidator& validator) noexcept;

}  // namespace vx::core
