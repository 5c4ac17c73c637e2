#pragma once

// The files and folders of this program in the XDG base directories. Relative folders in their variables are
// ignored, as the rules of these directories demand.

#include <foundation/export.hpp>

#include <filesystem>
#include <vector>

namespace vx::core {

/// Returns the personal settings file: verdix/settings.json in $XDG_CONFIG_HOME (default ~/.config, with the
/// home of the user database where HOME is not set). Throws std::runtime_error when HOME is relative, or no
/// home is known: the working folder never takes its place.
[[nodiscard]] VX_API std::filesystem::path defaultPersonalFile();

/// Returns the installation settings files, which need not exist: verdix/settings.json in each folder of
/// $XDG_CONFIG_DIRS (default /etc/xdg), in that order. Never empty.
[[nodiscard]] VX_API std::vector<std::filesystem::path> defaultInstallationFiles();

/// Returns the state folder: verdix in $XDG_STATE_HOME (default ~/.local/state). Finds the home and throws
/// like defaultPersonalFile.
[[nodiscard]] VX_API std::filesystem::path defaultStateFolder();

}  // namespace vx::core
