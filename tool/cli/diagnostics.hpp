#pragma once

#include <settings_core/diagnostic.hpp>

#include <boost/json/array.hpp>

#include <string_view>
#include <vector>

#include "cli/command_error.hpp"
#include "render/output.hpp"

namespace vx::tool {

/// Writes "vxsettings: " and the message to standard error as one line, with unprintable characters escaped.
void printMessage(std::string_view message);

/// Writes one line for each diagnostic. Line breaks become semicolons.
void writeDiagnostics(const std::vector<core::Diagnostic>& diagnostics, Output& out);

/// Returns an array of objects with line, column, path and message.
[[nodiscard]] boost::json::array diagnosticsJson(const std::vector<core::Diagnostic>& diagnostics);

/// Writes the errors in the definition of a tree, with the files to edit, as text or as JSON. Returns failed
/// if there are any.
[[nodiscard]] ExitCode reportDefinitionErrors(const std::vector<core::Diagnostic>& errors, Output& out);

}  // namespace vx::tool
