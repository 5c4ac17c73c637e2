#pragma once

#include <foundation/export.hpp>
#include <settings/core/settings_file_change.hpp>

#include <string>
#include <string_view>
#include <vector>

namespace vx::core {

/// One step in the life of a path.
struct ReleaseStep
{
    std::string_view release;  ///< that made it
    std::string_view from;     ///< full path before
    std::string_view to;       ///< empty where `from` was removed
};

/// The moves that led to this path, the latest first. The steps refer to the table.
[[nodiscard]] VX_API std::vector<ReleaseStep> movesTo(const ::settings::core::ReleaseChangeTable& table,
                                                      std::string_view path);

/// What became of this path, or of the group it was in, the earliest first: moves, and a removal at the end.
[[nodiscard]] VX_API std::vector<ReleaseStep> changesFrom(const ::settings::core::ReleaseChangeTable& table,
                                                          std::string_view path);

/// The steps in words: "it was moved to <path> in R2022b, then removed in R2026a"; empty without steps.
[[nodiscard]] VX_API std::string describeSteps(const std::vector<ReleaseStep>& steps);

/// Whether a path is the group's own or that of something in it.
[[nodiscard]] VX_API bool isAtOrUnder(std::string_view path, std::string_view group) noexcept;

}  // namespace vx::core
