#pragma once

// Finds out why a bundle file does not work. The messages do not depend on the service framework in use.

#include <cppmicroservices/Bundle.h>

#include <filesystem>
#include <string>
#include <string_view>

namespace vx::tool {

/// Throws CommandError unless the file is readable and a shared library.
void requireLibrary(const std::filesystem::path& file);

/// Returns the name of a function that creates or deletes the component and that the bundle's loaded library
/// does not export; empty if there is none.
[[nodiscard]] std::string findMissingExport(const cppmicroservices::Bundle& bundle,
                                            const std::string& component);

/// Returns the string up to its first line break: frameworks append dumps to their messages.
[[nodiscard]] std::string firstLine(std::string_view string);

}  // namespace vx::tool
