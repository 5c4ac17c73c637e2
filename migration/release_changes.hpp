#pragma once

#include <settings/core/settings_file_change.hpp>

#include <string_view>

namespace settings::verdix {

/// Appends a move and sets crossesRootGroups if the target is in another root group.
void addMove(::settings::core::ReleaseChangeSet& set, std::string_view source, std::string_view target);

/// Appends the removal of a setting, or of a group with all of its members.
void addRemove(::settings::core::ReleaseChangeSet& set, std::string_view path);

/// Sets one entry of the table for each release, the oldest at index 0. Replaces existing entries with these
/// indices and keeps all others.
void fillReleaseChanges(::settings::core::ReleaseChangeTable& table);

}  // namespace settings::verdix
