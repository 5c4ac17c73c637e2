#pragma once

#include <settings_core/files/settings_file.hpp>
#include <settings_core/tree/settings_tree.hpp>

#include <settings/core/settings_file_change.hpp>

#include <string>
#include <vector>

namespace vx::core {

/// A diagnostic about a settings file.
struct FileFault
{
    TextPosition position;  ///< of the setting, the member or the value
    /// Full path of the setting, or name of the top-level member; empty for the whole file.
    std::string path;
    std::string message;  ///< what is wrong, and what to do
};

/// Returns all diagnostics about the content of a settings file, ordered by position. Content that cannot be
/// parsed as a settings file yields the parse error alone.
[[nodiscard]] VX_API std::vector<FileFault>
checkSettingsFile(std::string text, const SettingsTree& tree,
                  const ::settings::core::ReleaseChangeTable& releases);

}  // namespace vx::core
