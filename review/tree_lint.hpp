#pragma once

#include <settings_core/diagnostic.hpp>
#include <settings_core/tree/settings_tree.hpp>

#include <settings/core/settings_file_change.hpp>

#include <vector>

namespace vx::review {

/// Returns a diagnostic, with the source file to edit, for:
/// - each factory value that violates a constraint of its own setting;
/// - each range that contains no value;
/// - names in one group that differ only in letter case;
/// - empty groups;
/// - release changes that move a setting to a path that does not exist, and moved or removed paths that are
///   still in the tree.
/// A few intended exceptions are listed by path.
[[nodiscard]] std::vector<core::Diagnostic> lintTree(const core::SettingsTree& tree,
                                                     const ::settings::core::ReleaseChangeTable& releases);

}  // namespace vx::review
