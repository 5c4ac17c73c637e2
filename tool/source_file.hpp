#pragma once

#include <string>
#include <string_view>

namespace vx::tool {

/// The file that describes the setting or group at this full path, where the tree's developers edit it.
[[nodiscard]] std::string sourceFileOf(std::string_view path);

/// The file that holds the release table.
inline constexpr std::string_view releaseTableFile = "migration/release_changes.cpp";

}  // namespace vx::tool
