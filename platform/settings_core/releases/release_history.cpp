#include <settings_core/releases/release_history.hpp>

#include <boost/range/adaptor/reversed.hpp>
#include <boost/range/iterator_range_core.hpp>

#include <algorithm>
#include <cstddef>

namespace vx::core {

namespace {

using ::settings::core::ReleaseChangeSet;
using ::settings::core::ReleaseChangeTable;
using ::settings::core::SettingsFileChange;

bool isMoveTo(const SettingsFileChange& change, std::string_view path)
{
    return !change.to().empty() && change.to().front() == path;
}

/// Whether the change moves or removes this path. Only a removal can name a group.
bool affects(const SettingsFileChange& change, std::string_view path)
{
    return change.to().empty() ? isAtOrUnder(path, change.from().front())
                               : change.from().front() == path && !isMoveTo(change, path);
}

auto releasesFrom(const ReleaseChangeTable& table, std::uint64_t first)
{
    return boost::make_iterator_range(table.lower_bound(first), table.end());
}

/// Returns the changes of a release from this row on.
auto changesOf(const ReleaseChangeSet& set, std::size_t firstRow)
{
    const auto skipped = static_cast<std::ptrdiff_t>(std::min(firstRow, set.changes.size()));
    return boost::make_iterator_range(set.changes.begin() + skipped, set.changes.end());
}

}  // namespace

bool isAtOrUnder(std::string_view path, std::string_view group) noexcept
{
    return path.starts_with(group) && (path.size() == group.size() || path[group.size()] == '.');
}

std::string describeMalformed(const SettingsFileChange& change)
{
    const auto isEmpty = [](const std::string& path) { return path.empty(); };
    const bool isMove = change.operation() == "move";
    if (!isMove && change.operation() != "remove") {
        return "its operation is \"" + change.operation() + "\", neither move nor remove";
    }
    if (change.from().size() != 1) {
        return change.from().empty() ? "it has no source" : "it has more than one source";
    }
    if (isMove && change.to().size() != 1) {
        return change.to().empty() ? "it is a move without a target" : "it has more than one target";
    }
    if (!isMove && !change.to().empty()) {
        return "it is a removal with a target";
    }
    return std::ranges::any_of(change.from(), isEmpty) || std::ranges::any_of(change.to(), isEmpty)
               ? "it has an empty path"
               : "";
}

std::vector<ReleaseStep> movesTo(const ReleaseChangeTable& table, std::string_view path, std::uint64_t first,
                                 std::size_t firstRow)
{
    std::vector<ReleaseStep> steps;
    for (const auto& [index, set] : boost::adaptors::reverse(releasesFrom(table, first))) {
        const auto changes = changesOf(set, index == first ? firstRow : 0);
        for (const SettingsFileChange& change : boost::adaptors::reverse(changes)) {
            if (isMoveTo(change, path)) {
                path = change.from().front();
                steps.push_back({set.release, path, change.to().front()});
            }
        }
    }
    return steps;
}

std::vector<ReleaseStep> changesFrom(const ReleaseChangeTable& table, std::string_view path,
                                     std::uint64_t first, std::size_t firstRow)
{
    std::vector<ReleaseStep> steps;
    for (const auto& [index, set] : releasesFrom(table, first)) {
        for (const SettingsFileChange& change : changesOf(set, index == first ? firstRow : 0)) {
            if (!affects(change, path)) {
                continue;
            }
            steps.push_back(
                {set.release, path, change.to().empty() ? "" : std::string_view(change.to().front())});
            if (change.to().empty()) {
                return steps;
            }
            path = steps.back().to;
        }
    }
    return steps;
}

std::string describeSteps(const std::vector<ReleaseStep>& steps)
{
    std::string text;
    for (const ReleaseStep& step : steps) {
        text += text.empty() ? "it was " : ", then ";
        text += step.to.empty() ? "removed" : "moved to " + std::string(step.to);
        text.append(" in ").append(step.release);
    }
    return text;
}

}  // namespace vx::core
