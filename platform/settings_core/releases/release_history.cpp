#include <settings_core/releases/release_history.hpp>

#include <algorithm>
#include <tuple>

namespace vx::core {

bool isAtOrUnder(std::string_view path, std::string_view group) noexcept
{
    return path.starts_with(group) && (path.size() == group.size() || path[group.size()] == '.');
}

std::string describeMalformed(const ::settings::core::SettingsFileChange& change)
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

ReleaseHistory::ReleaseHistory(const ::settings::core::ReleaseChangeTable& table)
{
    for (const auto& [index, set] : table) {
        for (std::size_t number = 0; const auto& change : set.changes) {
            const std::string_view from = change.from().front();
            const std::string_view to = change.to().empty() ? std::string_view() : change.to().front();
            const std::size_t row = rows_.size();
            rows_.push_back({index, number++, {set.release, from, to}});
            if (to.empty()) {
                removals_[from].push_back(row);
                continue;
            }
            arrivals_[to].push_back(row);
            if (from != to) {
                moves_[from].push_back(row);
            }
        }
    }
}

std::vector<ReleaseStep> ReleaseHistory::movesTo(std::string_view path, std::uint64_t first,
                                                 std::size_t firstRow) const
{
    std::vector<ReleaseStep> steps;
    const std::size_t begin = rowAt(first, firstRow);
    std::size_t end = rows_.size();
    for (auto found = arrivals_.find(path); found != arrivals_.end(); found = arrivals_.find(path)) {
        const auto& rows = found->second;
        const auto later = std::ranges::lower_bound(rows, end);
        if (later == rows.begin() || *(later - 1) < begin) {
            break;
        }
        end = *(later - 1);
        steps.push_back(rows_[end].step);
        path = steps.back().from;
    }
    return steps;
}

std::vector<ReleaseStep> ReleaseHistory::changesFrom(std::string_view path, std::uint64_t first,
                                                     std::size_t firstRow) const
{
    std::vector<ReleaseStep> steps;
    for (std::size_t row = nextChange(path, rowAt(first, firstRow)); row != rows_.size();
         row = nextChange(path, row + 1))
    {
        const ReleaseStep& step = rows_[row].step;
        steps.push_back({step.release, path, step.to});
        if (step.to.empty()) {
            break;
        }
        path = step.to;
    }
    return steps;
}

/// Returns the index of the first row that is not before this one.
std::size_t ReleaseHistory::rowAt(std::uint64_t index, std::size_t number) const
{
    const auto isBefore = [](const Row& row, const auto& wanted) {
        return std::tie(row.index, row.number) < wanted;
    };
    const auto found = std::lower_bound(rows_.begin(), rows_.end(), std::tie(index, number), isBefore);
    return static_cast<std::size_t>(found - rows_.begin());
}

/// Returns the index of the first row, from `row` on, that moves or removes this path or removes a group that
/// it is in; the number of rows if there is none.
std::size_t ReleaseHistory::nextChange(std::string_view path, std::size_t row) const
{
    std::size_t next = rows_.size();
    const auto lookIn = [&](const RowsByPath& rowsByPath, std::string_view source) {
        if (const auto found = rowsByPath.find(source); found != rowsByPath.end()) {
            const auto later = std::ranges::lower_bound(found->second, row);
            next = later == found->second.end() ? next : std::min(next, *later);
        }
    };
    lookIn(moves_, path);
    forEachEnclosingPath(path, [&](std::string_view enclosing) { lookIn(removals_, enclosing); });
    return next;
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
