#pragma once

#include <settings_core/json_reader.hpp>
#include <settings_core/node.hpp>

#include <foundation/verdixdata/array.hpp>

#include <cstddef>
#include <string>
#include <vector>

namespace vx::core {

/// What is wrong with a value in a settings file.
struct ValueFault
{
    std::size_t offset;   ///< in the file's text
    std::string message;  ///< what is wrong, and what is accepted
};

/// A setting's value as a file has it; unassigned where it could not be read.
struct StoredValue
{
    foundation::verdixdata::Array value;  ///< in the class of the setting
    /// Every one makes the value one that does not count.
    std::vector<ValueFault> faults;
};

/// Reads the value that a settings file gives a setting, and runs everything that the tree says of it.
[[nodiscard]] VX_API StoredValue readStoredValue(const Node& setting, const JsonMember& member);

}  // namespace vx::core
