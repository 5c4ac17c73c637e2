#pragma once

#include <settings_core/settings_tree.hpp>

#include <settings/core/settings_file_change.hpp>

#include <string>
#include <vector>

namespace vx::tool {

/// Something in the tree's description that its developers should mend.
struct LintFault
{
    std::string file;  ///< to edit
    std::string path;  ///< of the node, or of the record in the release table
    std::string message;
};

/// Looks over a live tree and its release table:
/// - factory values that the setting's own checks refuse, outside their range or their words included;
/// - ranges and lengths that no value can keep;
/// - names under one group that differ by letter case alone;
/// - groups with nothing in them that are no anchors for other modules;
/// - moves that lead nowhere, and paths that were moved away or removed and yet exist.
/// The few exceptions that are meant to be are known by their paths.
[[nodiscard]] std::vector<LintFault> lintTree(const core::SettingsTree& tree,
                                              const ::settings::core::ReleaseChangeTable& releases);

}  // namespace vx::tool
