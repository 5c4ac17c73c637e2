#pragma once

#include <settings_core/diagnostic.hpp>
#include <settings_core/files/settings_file.hpp>
#include <settings_core/tree/settings_tree.hpp>

#include <settings/core/settings_file_change.hpp>

#include <filesystem>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace vx::core {

/// Returns all diagnostics about the content of a settings file, ordered by position: that of the setting,
/// the top-level member or the value. Content that cannot be parsed as a settings file yields the parse error
/// alone.
[[nodiscard]] VX_API std::vector<Diagnostic>
checkSettingsFile(const std::filesystem::path& file, const std::string& text, const SettingsTree& tree,
                  const ::settings::core::ReleaseChangeTable& releases);

/// Returns the diagnostics about the settings at these full paths, in the order of the file.
[[nodiscard]] VX_API std::vector<Diagnostic>
checkSettings(const std::filesystem::path& file, const SettingsFile& content,
              const std::set<std::string_view>& paths, const SettingsTree& tree,
              const ::settings::core::ReleaseChangeTable& releases);

}  // namespace vx::core
