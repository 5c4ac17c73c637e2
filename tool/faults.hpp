#pragma once

#include <settings_core/file_check.hpp>

#include <boost/json/array.hpp>

#include <filesystem>
#include <vector>

#include "output.hpp"

namespace vx::tool {

/// A line for each fault: "<file>:<line>:<column>: <path>: <message>", what a message has on further lines
/// behind semicolons.
void writeFaults(const std::filesystem::path& file, const std::vector<core::FileFault>& faults, Output& out);

/// The same as objects with line, column, path and message.
[[nodiscard]] boost::json::array faultsJson(const std::vector<core::FileFault>& faults);

}  // namespace vx::tool
