#pragma once

// The table of release changes, row by row.

#include <settings_core/diagnostic.hpp>
#include <settings_core/tree/settings_tree.hpp>

#include <settings/core/settings_file_change.hpp>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vx::review {

/// A row of the table, which it refers to.
struct TableRow
{
    std::uint64_t index;       ///< of the release
    std::size_t number;        ///< in the list of the release, from 0
    std::string_view release;  ///< such as "R2022b"
    std::string_view source;
    std::string_view target;  ///< empty for a removal

    /// Whether the row brings a removed setting back: it moves the path to itself.
    [[nodiscard]] bool isRestoration() const noexcept { return source == target; }

    /// Returns "R2022b: move verdix.a.B to verdix.a.C", or "... to itself".
    [[nodiscard]] std::string label() const;
};

/// Calls visitor(TableRow) for every row of the release at this index and later ones, oldest first.
template <class Visitor>
void forEachLaterRow(const ::settings::core::ReleaseChangeTable& table, std::uint64_t first, Visitor visitor)
{
    for (auto release = table.lower_bound(first); release != table.end(); ++release) {
        const auto& [index, set] = *release;
        for (std::size_t number = 0; const auto& change : set.changes) {
            visitor(TableRow{index, number++, set.release, change.from().front(),
                             change.to().empty() ? std::string_view() : change.to().front()});
        }
    }
}

/// Checks the table by itself and against the tree. Returns a diagnostic for
/// - an invalid release name, and releases that are not in ascending order;
/// - a path that does not begin with the root;
/// - two rows of a release with the same source, or with the same target;
/// - a removal of a group before the move of one of its members;
/// - a path that was moved or removed, and is still in the tree;
/// - a path that is brought back, and was never moved or removed;
/// - a target that is not in the tree, and that no later row moves on.
[[nodiscard]] std::vector<core::Diagnostic>
checkReleaseTable(const core::SettingsTree& tree, const ::settings::core::ReleaseChangeTable& table);

}  // namespace vx::review
