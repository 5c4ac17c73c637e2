#pragma once

// Why a bundle file does not work, in words that are the same whatever service framework runs it.

#include <cppmicroservices/Bundle.h>

#include <filesystem>
#include <string>
#include <string_view>

namespace vx::tool {

/// Raises Failure unless this is a file that can be read and holds a shared library.
void requireLibrary(const std::filesystem::path& file);

/// What keeps the components that the bundle's manifest names from being made: the library does not load, or
/// lacks an export. Empty when neither is the case.
[[nodiscard]] std::string findComponentDefect(const cppmicroservices::Bundle& bundle);

/// The text up to its first line break: frameworks add dumps below.
[[nodiscard]] std::string firstLine(std::string_view text);

}  // namespace vx::tool
