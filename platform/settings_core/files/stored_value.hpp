#pragma once

#include <settings_core/diagnostic.hpp>
#include <settings_core/files/json_reader.hpp>
#include <settings_core/files/text_position.hpp>
#include <settings_core/tree/node.hpp>

#include <foundation/verdixdata/array.hpp>

#include <filesystem>
#include <vector>

namespace vx::core {

/// A setting's value in a settings file.
struct StoredValue
{
    foundation::verdixdata::Array value;  ///< in the setting's class; unassigned if it could not be parsed
    /// Any diagnostic makes the value invalid, so that it is ignored.
    std::vector<Diagnostic> diagnostics;
};

/// Parses the value of a setting in a settings file and checks it against the setting's constraints.
/// `positions` are those in the content of the file.
[[nodiscard]] VX_API StoredValue readStoredValue(const Node& setting, const JsonMember& member,
                                                 const std::filesystem::path& file,
                                                 const PositionIndex& positions);

}  // namespace vx::core
