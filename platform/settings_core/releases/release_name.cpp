#include <settings_core/releases/release_name.hpp>

#include <algorithm>
#include <charconv>
#include <stdexcept>

namespace vx::core {

std::optional<ReleaseName> parseReleaseName(std::string_view name) noexcept
{
    constexpr std::size_t length = 6;
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    if (name.size() != length || name[0] != 'R' || (name[5] != 'a' && name[5] != 'b') ||
        !std::all_of(name.begin() + 1, name.begin() + 5, isDigit))
    {
        return std::nullopt;
    }
    ReleaseName release{0, name[5]};
    std::from_chars(name.data() + 1, name.data() + 5, release.year);
    return release;
}

std::string formatReleaseName(const ReleaseName& release)
{
    std::string digits = std::to_string(release.year);
    digits.insert(0, digits.size() < 4 ? 4 - digits.size() : 0, '0');
    return "R" + digits + release.half;
}

ReleaseName releaseOf(const ::settings::core::ReleaseChangeSet& set)
{
    const auto release = parseReleaseName(set.release);
    if (!release) {
        throw std::runtime_error("the table of release changes has the invalid release name \"" +
                                 set.release + "\": correct it to R, the year and a or b.");
    }
    return *release;
}

std::optional<ReleaseName> newestRelease(const ::settings::core::ReleaseChangeTable& table)
{
    std::optional<ReleaseName> newest;
    for (const auto& [index, set] : table) {
        newest = std::max(newest, std::optional(releaseOf(set)));
    }
    return newest;
}

}  // namespace vx::core
