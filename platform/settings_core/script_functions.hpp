#pragma once

#include <settings/core/validators.hpp>

#include <string_view>

namespace vx::core {

/// A validator of the scripting language that the settings core brings itself.
struct ScriptFunction
{
    std::string_view name;
    /// What it accepts, in words that follow "must be".
    std::string_view accepted;
    bool (*accepts)(const foundation::verdixdata::Array& value);
};

/// The function that the validator names, or null when it is none of ours.
[[nodiscard]] const ScriptFunction*
findScriptFunction(const ::settings::core::MValidator& validator) noexcept;

}  // namespace vx::core
