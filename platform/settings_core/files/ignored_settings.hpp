#pragma once

#include <settings_core/files/layers.hpp>
#include <settings_core/tree/settings_tree.hpp>

#include <foundation/export.hpp>

#include <cstddef>
#include <filesystem>
#include <string_view>
#include <vector>

namespace vx::core {

/// The settings of one file that have no effect. Settings outside the tree's root may belong to other
/// plug-ins, so they are not among them.
struct IgnoredSettings
{
    const std::filesystem::path& file;                ///< refers to the layers
    std::vector<std::string_view> unknownPaths = {};  ///< that the tree does not have, in the file's order
    std::size_t locked = 0;                           ///< number of settings that a lock excludes
    std::size_t invalid = 0;  ///< number of others, with an invalid value or of no setting
};

/// Returns the settings that have no effect, file by file, lowest layer first. Throws what Layers throws.
[[nodiscard]] VX_API std::vector<IgnoredSettings> ignoredSettings(Layers& layers, const SettingsTree& tree);

}  // namespace vx::core
