#pragma once

#include <settings_core/releases/release_history.hpp>
#include <settings_core/tree/settings_tree.hpp>
#include <settings_core/tree/suggestions.hpp>

#include <settings/core/settings_file_change.hpp>

#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace vx::core {

/// Thrown for a path without a node. The message says which release moved or removed it, or suggests paths.
class VX_API UnknownPath : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// Returns the full path of a path that may omit the tree's root.
[[nodiscard]] VX_API std::string fullPath(const SettingsTree& tree, std::string_view path);

/// Explains why paths are unknown.
class VX_API UnknownPaths
{
public:
    /// The tree and the table must outlive this object.
    UnknownPaths(const SettingsTree& tree, const ::settings::core::ReleaseChangeTable& releases)
        : releases_(releases), suggestions_(tree)
    {}

    /// Returns which releases moved or removed this full path, or else suggestions for the first hundred
    /// paths, or else how to list all paths.
    [[nodiscard]] std::string explain(std::string_view path);

private:
    const ::settings::core::ReleaseChangeTable& releases_;
    std::optional<ReleaseHistory> history_;  // of them, from the first path on
    PathSuggestions suggestions_;
};

/// Returns the node at this path, which may omit the root. Throws UnknownPath, explained by `unknownPaths` or
/// from `releases`. For many paths, take one UnknownPaths.
///@{
[[nodiscard]] VX_API const Node& nodeAt(const SettingsTree& tree, UnknownPaths& unknownPaths,
                                        std::string_view path);
[[nodiscard]] VX_API const Node&
nodeAt(const SettingsTree& tree, const ::settings::core::ReleaseChangeTable& releases, std::string_view path);
///@}

/// Returns the node if it is a setting, or the setting that an alias leads to, also through further aliases.
/// Throws std::runtime_error for a group and for an unresolved alias: one that is circular or whose target is
/// not in the tree.
[[nodiscard]] VX_API const Node& resolveSetting(const SettingsTree& tree, const Node& node);

}  // namespace vx::core
