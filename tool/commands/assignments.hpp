#pragma once

// Changes that a user writes down, many at once.

#include <settings_core/diagnostic.hpp>
#include <settings_core/files/settings_editor.hpp>

#include <string>
#include <string_view>
#include <vector>

namespace vx::tool {

/// Changes with their positions in the input that they were read from.
struct Assignments
{
    std::vector<core::SettingChange> changes = {};
    std::vector<core::Diagnostic> diagnostics = {};  ///< about the parts that could not be read
};

/// Reads lines "PATH = VALUE" in the notation of the scripting language. Empty lines, and those that begin
/// with
/// "#", are ignored. `name` is what diagnostics call the input.
[[nodiscard]] Assignments readAssignments(std::string_view text, const std::string& name);

/// Reads a JSON object of paths and values.
[[nodiscard]] Assignments readJsonAssignments(std::string_view text, const std::string& name);

}  // namespace vx::tool
