#pragma once

#include <foundation/export.hpp>

#include <compare>
#include <optional>
#include <string>
#include <string_view>

namespace vx::core {

/// A release of the environment, two a year: R2022a, R2022b. Earlier ones are less.
struct ReleaseName
{
    int year = 0;
    char half = 'a';

    [[nodiscard]] friend auto operator<=>(const ReleaseName&, const ReleaseName&) = default;
};

/// Nothing for a text that is not R, four digits and a or b.
[[nodiscard]] VX_API std::optional<ReleaseName> parseReleaseName(std::string_view text) noexcept;

[[nodiscard]] VX_API std::string toText(const ReleaseName& release);

}  // namespace vx::core
