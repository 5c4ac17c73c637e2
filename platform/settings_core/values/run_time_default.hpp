#pragma once

#include <settings_core/tree/node.hpp>

#include <string>

namespace vx::core {

/// The value of a setting without an override, and what computed it.
struct DefaultValue
{
    /// Unassigned when the setting has neither a factory value nor a run-time default.
    foundation::verdixdata::Array value;
    /// The function that computed the value: "getDefault of libexample"; empty if none did.
    std::string computedBy;
};

/// Returns a setting's factory value or, if it has none, the value that its run-time default computes now.
/// Throws std::runtime_error, naming the function and what to do, when the value cannot be computed: the
/// library or function is missing, the function threw or assigned nothing, or it needs the scripting language
/// or the managed runtime, which are unavailable in this process.
[[nodiscard]] VX_API DefaultValue defaultValue(const Node& setting);

}  // namespace vx::core
