#pragma once

// Settings whose values are secrets, such as passwords: programs do not show them unasked.

#include <foundation/export.hpp>

#include <array>
#include <string_view>

namespace vx::core {

/// What is shown in place of a secret.
inline constexpr std::string_view maskedValue = "********";

/// The full paths of the secret settings of the tree whose names do not end like those of secrets.
inline constexpr std::array<std::string_view, 1> listedSecrets = {"verdix.desktop.login.SessionId"};

/// Whether the value of the setting at this full path is a secret: the path is listed, or ends in Password,
/// Passphrase, Secret or Token. This also protects settings of other plug-ins and of other releases.
[[nodiscard]] VX_API bool isSecret(std::string_view path) noexcept;

}  // namespace vx::core
