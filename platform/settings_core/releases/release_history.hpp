#pragma once

#include <foundation/export.hpp>
#include <settings/core/settings_file_change.hpp>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace vx::core {

/// A move or removal of a path by one release.
struct ReleaseStep
{
    std::string_view release;  ///< that made the change
    std::string_view from;     ///< full path before the change
    std::string_view to;       ///< full path after it; empty when `from` was removed
};

/// Returns what makes a change unusable, "it has no source", so that no table with it is read; empty if it is
/// a move with one source and one target, or a removal with one source.
[[nodiscard]] VX_API std::string describeMalformed(const ::settings::core::SettingsFileChange& change);

/// Finds what releases did to paths. Look-ups take no longer for a long table.
class VX_API ReleaseHistory
{
public:
    /// Reads the table once; it must outlive the history and its results.
    explicit ReleaseHistory(const ::settings::core::ReleaseChangeTable& table);

    /// Returns the moves that led to this path, latest first, by the release at index `first` of the table,
    /// from its row `firstRow` on, and by later ones.
    [[nodiscard]] std::vector<ReleaseStep> movesTo(std::string_view path, std::uint64_t first = 0,
                                                   std::size_t firstRow = 0) const;

    /// Returns the moves and the final removal, if any, of a path or its group, earliest first, by the
    /// release at index `first` of the table, from its row `firstRow` on, and by later ones. A move of a path
    /// to itself is no step. The steps also refer to `path`.
    [[nodiscard]] std::vector<ReleaseStep> changesFrom(std::string_view path, std::uint64_t first = 0,
                                                       std::size_t firstRow = 0) const;

private:
    struct Row
    {
        std::uint64_t index;  ///< of the release
        std::size_t number;   ///< in the list of the release
        ReleaseStep step;
    };
    /// Ascending indexes in rows_, by path.
    using RowsByPath = std::unordered_map<std::string_view, std::vector<std::size_t>>;

    [[nodiscard]] std::size_t rowAt(std::uint64_t index, std::size_t number) const;
    [[nodiscard]] std::size_t nextChange(std::string_view path, std::size_t row) const;

    std::vector<Row> rows_;
    RowsByPath moves_;     // by source; without moves of a path to itself
    RowsByPath removals_;  // by the removed setting or group
    RowsByPath arrivals_;  // moves by target
};

/// Describes the steps: "it was moved to <path> in R2022b, then removed in R2026a"; empty without steps.
[[nodiscard]] VX_API std::string describeSteps(const std::vector<ReleaseStep>& steps);

/// Whether a path is that of the group or of a node in it.
[[nodiscard]] VX_API bool isAtOrUnder(std::string_view path, std::string_view group) noexcept;

/// Calls visitor(path) for each path that this one is at or under: its groups, from the root on, and itself.
template <class Visitor>
void forEachEnclosingPath(std::string_view path, Visitor visitor)
{
    for (std::size_t dot = path.find('.'); dot != std::string_view::npos; dot = path.find('.', dot + 1)) {
        visitor(path.substr(0, dot));
    }
    visitor(path);
}

}  // namespace vx::core
