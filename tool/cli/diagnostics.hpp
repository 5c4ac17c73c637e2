#pragma once

#include <settings_core/files/file_check.hpp>

#include <boost/json/array.hpp>

#include <filesystem>
#include <vector>

#include "render/output.hpp"

namespace vx::tool {

/// Writes one line for each diagnostic: "<file>:<line>:<column>: <path>: <message>". Line breaks in a message
/// become semicolons.
void writeDiagnostics(const std::filesystem::path& file, const std::vector<core::FileFault>& diagnostics,
                      Output& out);

/// Returns an array of objects with line, column, path and message.
[[nodiscard]] boost::json::array diagnosticsJson(const std::vector<core::FileFault>& diagnostics);

}  // namespace vx::tool
