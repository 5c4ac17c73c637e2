#pragma once

#include <string>
#include <string_view>

namespace vx::review {

/// Returns the source file that defines the setting or group at this full path, relative to the project's
/// root.
[[nodiscard]] std::string sourceFileOf(std::string_view path);

/// The source file of the release change table.
inline constexpr std::string_view releaseTableFile = "migration/release_changes.cpp";

}  // namespace vx::review
