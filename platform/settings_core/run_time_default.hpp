#pragma once

#include <settings_core/node.hpp>

#include <string>

namespace vx::core {

/// The value that a setting has when nobody set it, and where it comes from.
struct DefaultValue
{
    /// Unassigned when the setting has none.
    foundation::verdixdata::Array value;
    /// "factory value", or the function that computed it: "getDefault of libexample"; empty without a value.
    std::string source;
};

/// A setting's factory value or, where it states none, the value that its run-time default computes now.
/// Raises std::runtime_error, naming the function and what to do, when that cannot be computed: library or
/// function missing, the function failed or assigned nothing, or it is one of the scripting language or of
/// the managed runtime, which this process does not have.
[[nodiscard]] VX_API DefaultValue defaultValue(const Node& setting);

}  // namespace vx::core
