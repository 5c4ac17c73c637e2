#pragma once

#include <settings_core/tree/settings_tree.hpp>

#include <settings/core/settings_file_change.hpp>

#include <string>
#include <vector>

namespace vx::tool {

/// An error in the definition of the tree.
struct LintDiagnostic
{
    std::string file;  ///< to edit
    std::string path;  ///< of the node, or the old path of the release change
    std::string message;
};

/// Returns an error for:
/// - each factory value that violates a constraint of its own setting;
/// - each range that contains no value;
/// - names in one group that differ only in letter case;
/// - empty groups;
/// - release changes that move a setting to a path that does not exist, and moved or removed paths that are
///   still in the tree.
/// A few intended exceptions are listed by path.
[[nodiscard]] std::vector<LintDiagnostic> lintTree(const core::SettingsTree& tree,
                                                   const ::settings::core::ReleaseChangeTable& releases);

}  // namespace vx::tool
