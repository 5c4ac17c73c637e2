#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "release_tree.hpp"

namespace vx::review {

/// The kinds of differences: those of the whole node, then one for each property.
enum class DifferenceKind : std::uint8_t
{
    added,
    moved,
    removed,
    lost,  ///< missing without a release change, or moved to a path that does not exist
    node,  ///< whether it is a group, a setting or an alias
    valueClass,
    size,
    defaultValue,
    constraint,
    validator,
    errorHandler,
    runTimeDefault,
    computedValue,
    visibility,
    effectiveVisibility,  ///< only if the node's own visibility is unchanged
    readOnly,
    aliasTarget,
    additionalFile,
    order
};

/// The number of kinds.
inline constexpr std::size_t differenceKindCount = static_cast<std::size_t>(DifferenceKind::order) + 1;

/// Returns the name of a kind for users: "added", "class", "default", "effective-visibility", ...
[[nodiscard]] std::string_view kindLabel(DifferenceKind kind) noexcept;

/// Returns the kind with this name; nothing if there is none.
[[nodiscard]] std::optional<DifferenceKind> differenceKindNamed(std::string_view label) noexcept;

/// Whether the kind is about a property rather than about the whole node.
[[nodiscard]] constexpr bool isPropertyKind(DifferenceKind kind) noexcept
{
    return kind > DifferenceKind::lost;
}

/// One difference between two trees.
struct Difference
{
    DifferenceKind kind;
    std::string path;         ///< in the new tree; in the old one if the node is removed or lost
    std::string before = {};  ///< old path of a moved setting; otherwise the old property
    std::string after = {};   ///< new property; or the release that moved or removed the setting
    /// Description that replaces that of before and after: "also allows: x".
    std::string summary = {};
};

/// Returns what differs beside kind and path: "from verdix.a.Old in R2026b", "true -> false".
[[nodiscard]] std::string describeDifference(const Difference& difference);

/// Returns the differences, ordered by kind as above, then by tree order. The newer tree's release changes
/// tell moved and removed settings from lost ones. A group that is missing without a release change counts as
/// removed, not lost. Where the class of a value differs, size and value are not compared, and the value is
/// not where its size differs. Group members that a hidden group hides have no difference of their own.
[[nodiscard]] std::vector<Difference> compareTrees(const ReleaseTree& older, const ReleaseTree& newer);

}  // namespace vx::review
