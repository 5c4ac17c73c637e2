#pragma once

#include <settings_core/files/json_reader.hpp>
#include <settings_core/tree/node.hpp>

#include <foundation/verdixdata/array.hpp>

#include <cstddef>
#include <string>
#include <vector>

namespace vx::core {

/// A diagnostic about a value in a settings file.
struct ValueFault
{
    std::size_t offset;   ///< in the file, in bytes
    std::string message;  ///< what is wrong, and which values are allowed
};

/// A setting's value in a settings file.
struct StoredValue
{
    foundation::verdixdata::Array value;  ///< in the setting's class; unassigned if it could not be parsed
    /// Any diagnostic makes the value invalid, so that it is ignored.
    std::vector<ValueFault> diagnostics;
};

/// Parses the value of a setting in a settings file and checks it against the setting's constraints.
[[nodiscard]] VX_API StoredValue readStoredValue(const Node& setting, const JsonMember& member);

}  // namespace vx::core
