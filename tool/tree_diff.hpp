#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tree_document.hpp"

namespace vx::tool {

enum class DifferenceKind : std::uint8_t
{
    added,
    moved,
    removed,
    lost,  ///< gone, and no record of the release table says where to
    changedDefault,
    changedValidator,
    changedVisibility
};

/// "added", "moved", "removed", "lost", "default", "validator", "visibility".
[[nodiscard]] std::string_view kindWord(DifferenceKind kind) noexcept;

/// One difference between two trees.
struct Difference
{
    DifferenceKind kind;
    std::string path;         ///< in the new tree; in the old one for what is gone
    std::string before = {};  ///< the old path of a moved setting, else what was there, as JSON
    std::string after = {};   ///< what is there now, as JSON; the release that removed it
};

/// What differs, by kind in the order above, paths in the order of their tree. The new tree's release table
/// tells moved and removed settings from lost ones. A group is lost only with a setting that was in it.
[[nodiscard]] std::vector<Difference> compareTrees(const TreeDocument& older, const TreeDocument& newer);

}  // namespace vx::tool
