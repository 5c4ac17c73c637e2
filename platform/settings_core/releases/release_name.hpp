#pragma once

#include <foundation/export.hpp>
#include <settings/core/settings_file_change.hpp>

#include <compare>
#include <optional>
#include <string>
#include <string_view>

namespace vx::core {

/// The name of a release, two a year: R2022a, R2022b. Ordered by age, the oldest is the smallest.
struct ReleaseName
{
    int year = 0;     ///< 2022 in R2022b
    char half = 'a';  ///< 'a' or 'b'

    /// By year, then by half.
    // clang-tidy mistakes the generated comparison with 0 for one of a pointer.
    // NOLINTNEXTLINE(modernize-use-nullptr)
    [[nodiscard]] friend auto operator<=>(const ReleaseName&, const ReleaseName&) = default;
};

/// Parses a release name; returns nothing for a string that is not R, four digits and a or b.
[[nodiscard]] VX_API std::optional<ReleaseName> parseReleaseName(std::string_view name) noexcept;

/// Returns the release name as a string: "R2022b".
[[nodiscard]] VX_API std::string formatReleaseName(const ReleaseName& release);

/// Returns the newest release in the table, or nothing for an empty table. Throws std::runtime_error for an
/// invalid release name in the table.
[[nodiscard]] VX_API std::optional<ReleaseName>
newestRelease(const ::settings::core::ReleaseChangeTable& table);

/// Returns the release of a change set. Throws std::runtime_error when its name is invalid.
[[nodiscard]] VX_API ReleaseName releaseOf(const ::settings::core::ReleaseChangeSet& set);

}  // namespace vx::core
