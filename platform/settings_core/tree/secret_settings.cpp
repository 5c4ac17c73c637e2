#include <settings_core/tree/secret_settings.hpp>

#include <algorithm>

namespace vx::core {

bool isSecret(std::string_view path) noexcept
{
    constexpr std::array<std::string_view, 4> endings = {"Password", "Passphrase", "Secret", "Token"};
    return std::ranges::any_of(endings, [path](std::string_view ending) { return path.ends_with(ending); }) ||
           std::ranges::find(listedSecrets, path) != listedSecrets.end();
}

}  // namespace vx::core
