#include <algorithm>
#include <charconv>
#include <settings_core/release_name.hpp>

namespace vx::core {

std::optional<ReleaseName> parseReleaseName(std::string_view text) noexcept
{
    constexpr std::size_t length = 6;
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    if (text.size() != length || text[0] != 'R' || (text[5] != 'a' && text[5] != 'b') ||
        !std::all_of(text.begin() + 1, text.begin() + 5, isDigit)) {
        return std::nullopt;
    }
    ReleaseName release{0, text[5]};
    std::from_chars(text.data() + 1, text.data() + 5, release.year);
    return release;
}

std::string toText(const ReleaseName& release)
{
    std::string digits = std::to_string(release.year);
    digits.insert(0, digits.size() < 4 ? 4 - digits.size() : 0, '0');
    return "R" + digits + release.half;
}

}  // namespace vx::core
