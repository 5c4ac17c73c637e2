#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tree_document.hpp"

namespace vx::review {

enum class DifferenceKind : std::uint8_t
{
    added,
    moved,
    removed,
    lost,  ///< missing without a release change, or moved to a path that does not exist
    changedDefault,
    changedValidator,
    changedVisibility
};

/// Returns "added", "moved", "removed", "lost", "default", "validator" or "visibility".
[[nodiscard]] std::string_view kindLabel(DifferenceKind kind) noexcept;

/// One difference between two trees.
struct Difference
{
    DifferenceKind kind;
    std::string path;         ///< in the new tree; in the old one if the node is removed or lost
    std::string before = {};  ///< old path of a moved setting; otherwise the old properties, as JSON
    std::string after = {};   ///< new properties, as JSON; or the release that moved or removed the setting
};

/// Returns the differences, ordered by kind as above, then by tree order. The newer tree's release changes
/// tell moved and removed settings from lost ones. A group that is missing without a release change counts as
/// removed, not lost.
[[nodiscard]] std::vector<Difference> compareTrees(const TreeDocument& older, const TreeDocument& newer);

}  // namespace vx::review
