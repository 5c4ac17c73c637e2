#pragma once

#include <settings/core/settings_file_change.hpp>

#include <string_view>

namespace settings::verdix {

/// Appends a move, and notes when it leads from one root group to another.
void addMove(::settings::core::ReleaseChangeSet& set, std::string_view source, std::string_view target);

/// Appends a removal: of a setting, or of a group with everything under it.
void addRemove(::settings::core::ReleaseChangeSet& set, std::string_view path);

/// Puts every release's moves and removals into the table, one entry a release, the oldest with index 0.
/// Entries of these indexes are replaced, others left alone.
void fillReleaseChanges(::settings::core::ReleaseChangeTable& table);

}  // namespace settings::verdix
