#pragma once

#include <span>
#include <string>
#include <string_view>

namespace vx::review {

/// A group or setting, and the source file that adds it, relative to the project's root.
struct SourceLocation
{
    std::string_view path;
    std::string_view file;
};

/// What is added to the root, and the groups that a source file of their own adds to another group; collected
/// from the sources by the build.
extern const std::span<const SourceLocation> locations;

/// Returns the source file that defines the setting or group at this full path, relative to the project's
/// root. For a path that no file defines, returns the file that would define it by its name.
[[nodiscard]] std::string sourceFileOf(std::string_view path);

/// The source file of the release change table.
inline constexpr std::string_view releaseTableFile = "migration/release_changes.cpp";

}  // namespace vx::review
