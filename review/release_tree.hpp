#pragma once

#include <settings_core/tree/settings_tree.hpp>

#include <foundation/verdixdata/array.hpp>
#include <settings/core/settings_file_change.hpp>

#include <map>
#include <string>
#include <string_view>

namespace vx::review {

/// Values that run-time defaults computed, by full path of the setting. Settings whose function is
/// unavailable are left out.
using ComputedValues = std::map<std::string, foundation::verdixdata::Array, std::less<>>;

/// The tree of a release, and the changes of this release and all former ones, indexed from 0.
struct ReleaseTree
{
    core::SettingsTree tree;
    ::settings::core::ReleaseChangeTable releaseChanges;
    ComputedValues computedValues;
};

/// Takes a live tree and computes its run-time defaults.
[[nodiscard]] ReleaseTree makeReleaseTree(const core::SettingsTree& tree,
                                          const ::settings::core::ReleaseChangeTable& releases);

/// Reads an exported tree or a baseline; "-" is standard input. Callables of the exported process do nothing.
/// Throws std::runtime_error with the file, line and column, and what is expected there.
[[nodiscard]] ReleaseTree readReleaseTree(const std::string& file);

/// As above, from the content of a file; `file` is its name for messages.
[[nodiscard]] ReleaseTree parseReleaseTree(std::string_view text, const std::string& file);

/// Returns the content of a file; "-" is standard input. Throws std::runtime_error if it cannot be read.
[[nodiscard]] std::string contentOf(const std::string& file);

}  // namespace vx::review
