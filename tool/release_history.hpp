#pragma once

#include <settings/core/settings_file_change.hpp>

#include <string>
#include <string_view>
#include <vector>

namespace vx::tool {

/// One step in the life of a path.
struct ReleaseStep
{
    std::string_view release;
    std::string_view from;
    std::string_view to;  ///< empty where `from` was removed
};

/// The moves that led to this path, the latest first. The steps refer to the table.
[[nodiscard]] std::vector<ReleaseStep> movesTo(const settings::core::ReleaseChangeTable& table,
                                               std::string_view path);

/// What became of this path, or of the group it was in, the earliest first: moves, and a removal at the end.
[[nodiscard]] std::vector<ReleaseStep> changesFrom(const settings::core::ReleaseChangeTable& table,
                                                   std::string_view path);

}  // namespace vx::tool
