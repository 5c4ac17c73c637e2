#pragma once

// Finds out why a bundle file does not work. The messages do not depend on the service framework in use.

#include <cppmicroservices/Bundle.h>

#include <filesystem>
#include <string>
#include <string_view>

namespace vx::tool {

/// Throws CommandError unless the file is readable and a shared library.
void requireLibrary(const std::filesystem::path& file);

/// Returns why the components in the bundle's manifest cannot be created: the library does not load, or lacks
/// an export. Empty if neither is the case.
[[nodiscard]] std::string findComponentError(const cppmicroservices::Bundle& bundle);

/// Returns the string up to its first line break: frameworks append dumps to their messages.
[[nodiscard]] std::string firstLine(std::string_view string);

}  // namespace vx::tool
