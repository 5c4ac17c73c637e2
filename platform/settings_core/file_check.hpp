#pragma once

#include <settings_core/settings_file.hpp>
#include <settings_core/settings_tree.hpp>

#include <settings/core/settings_file_change.hpp>

#include <string>
#include <vector>

namespace vx::core {

/// Something wrong in a settings file, and what to do about it.
struct FileFault
{
    TextPosition position;  ///< where it stands in the text
    /// Of the setting it is about, or the name of the file's own member; empty for the file as a whole.
    std::string path;
    std::string message;  ///< what is wrong, and what to do
};

/// Everything that is wrong in the text of a settings file, in the file's order; nothing but the first error
/// when it is not JSON of a settings file's form.
[[nodiscard]] VX_API std::vector<FileFault>
checkSettingsFile(std::string text, const SettingsTree& tree,
                  const ::settings::core::ReleaseChangeTable& releases);

}  // namespace vx::core
