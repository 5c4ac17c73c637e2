#pragma once

#include <foundation/export.hpp>
#include <settings/core/settings_file_change.hpp>

#include <compare>
#include <optional>
#include <string>
#include <string_view>

namespace vx::core {

/// A release of the environment, two a year: R2022a, R2022b. Earlier ones are less.
struct ReleaseName
{
    int year = 0;     ///< 2022 of R2022b
    char half = 'a';  ///< 'a' or 'b'

    /// By year, then by half.
    // The check takes the comparison with 0 that is generated for a pointer.
    // NOLINTNEXTLINE(modernize-use-nullptr)
    [[nodiscard]] friend auto operator<=>(const ReleaseName&, const ReleaseName&) = default;
};

/// Nothing for a text that is not R, four digits and a or b.
[[nodiscard]] VX_API std::optional<ReleaseName> parseReleaseName(std::string_view text) noexcept;

/// "R2022b".
[[nodiscard]] VX_API std::string formatReleaseName(const ReleaseName& release);

/// The newest release that the table has changes of; nothing for an empty table. Raises std::runtime_error
/// for a table with a name that is no release.
[[nodiscard]] VX_API std::optional<ReleaseName>
newestRelease(const ::settings::core::ReleaseChangeTable& table);

/// The name of a release of the table. Raises std::runtime_error when it is none.
[[nodiscard]] VX_API ReleaseName releaseOf(const ::settings::core::ReleaseChangeSet& set);

}  // namespace vx::core
