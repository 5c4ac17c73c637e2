#include "release_table.hpp"

#include <settings_core/releases/release_history.hpp>
#include <settings_core/releases/release_name.hpp>

#include <algorithm>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "source_file.hpp"

namespace vx::review {

namespace {

using core::Diagnostic;
using settings::core::ReleaseChangeTable;

class TableCheck
{
public:
    TableCheck(const core::SettingsTree& tree, const ReleaseChangeTable& table)
        : tree_(tree), table_(table), history_(table)
    {}

    std::vector<Diagnostic> run() &&
    {
        checkReleaseNames();
        std::uint64_t release = 0;
        forEachLaterRow(table_, 0, [&](const TableRow& row) {
            if (row.index != release) {
                release = row.index;
                sources_.clear();
                targets_.clear();
                removed_.clear();
            }
            if (requireFullPaths(row)) {
                checkList(row);
                checkSource(row);
                checkTarget(row);
            }
            formerSources_.insert(row.source);
        });
        return std::move(diagnostics_);
    }

private:
    void report(std::string_view path, std::string message)
    {
        diagnostics_.push_back(
            {std::string(path), std::move(message), {.file = std::string(releaseTableFile)}});
    }

    void checkReleaseNames()
    {
        std::optional<core::ReleaseName> previous;
        for (const auto& [index, set] : table_) {
            const auto release = core::parseReleaseName(set.release);
            if (!release) {
                report(set.release, "is no release name: use R, the year, and a or b");
            } else if (release == previous) {
                report(set.release, "is in the table twice: name each list after its own release");
            } else if (previous && *release < *previous) {
                report(set.release, "does not follow " + formatReleaseName(*previous) +
                                        ", which precedes it in the table: sort the releases by age");
            } else {
                previous = release;
            }
        }
    }

    bool requireFullPaths(const TableRow& row)
    {
        const std::string_view root = tree_.root()->fullName();
        const bool sourceIsFull = core::isAtOrUnder(row.source, root);
        const bool isFull = sourceIsFull && (row.target.empty() || core::isAtOrUnder(row.target, root));
        if (!isFull) {
            report(sourceIsFull ? row.target : row.source, "is no full path: begin it with \"" +
                                                               std::string(root) + ".\" in the list of " +
                                                               std::string(row.release));
        }
        return isFull;
    }

    /// Returns the former rows of the release that remove a path or a group that it is in: number and path.
    [[nodiscard]] std::vector<std::pair<std::size_t, std::string_view>>
    removalsOf(std::string_view source) const
    {
        std::vector<std::pair<std::size_t, std::string_view>> removals;
        core::forEachEnclosingPath(source, [&](std::string_view path) {
            if (const auto found = removed_.find(path); found != removed_.end()) {
                for (const std::size_t number : found->second) {
                    removals.emplace_back(number, path);
                }
            }
        });
        std::ranges::sort(removals);
        return removals;
    }

    /// Compares a row with the former rows of its release.
    void checkList(const TableRow& row)
    {
        const std::string release(row.release);
        if (!sources_.insert(row.source).second) {
            report(row.source, release + " lists it twice: keep one of the changes");
        }
        if (row.target.empty()) {
            removed_[row.source].push_back(row.number);
            return;
        }
        for (const auto& [number, group] : removalsOf(row.source)) {
            report(row.source, release + " moves it after it removed " + std::string(group) +
                                   ", so that its values are lost: list the move first");
        }
        const auto [former, isNew] = targets_.emplace(row.target, row.source);
        if (!isNew && former->second != row.source) {
            report(row.source,
                   release + " moves it to " + std::string(row.target) + ", and " +
                       std::string(former->second) +
                       ", too, so that users keep only one of the values: fix one of the targets");
        }
    }

    /// A path that a release moved or removed may exist again only as the target of a later row.
    void checkSource(const TableRow& row)
    {
        if (row.isRestoration()) {
            bool isGone = false;
            core::forEachEnclosingPath(
                row.source, [&](std::string_view path) { isGone = isGone || formerSources_.contains(path); });
            if (!isGone) {
                report(row.source, std::string(row.release) +
                                       " brings it back, but no earlier change moved or removed it: delete "
                                       "this change");
            }
        } else if (tree_.find(row.source) != nullptr &&
                   history_.movesTo(row.source, row.index, row.number + 1).empty())
        {
            report(row.source, std::string(row.release) +
                                   " moved or removed it, but it is still in the tree: remove it from " +
                                   sourceFileOf(row.source) + " or fix the release change");
        }
    }

    void checkTarget(const TableRow& row)
    {
        if (!row.target.empty() && tree_.find(row.target) == nullptr &&
            history_.changesFrom(row.target, row.index, row.number + 1).empty())
        {
            report(row.source,
                   std::string(row.release) +
                       (row.isRestoration()
                            ? " brings it back, but it does not exist"
                            : " moved it to " + std::string(row.target) + ", which does not exist") +
                       ": define it in " + sourceFileOf(row.target) + " or fix the release change");
        }
    }

    const core::SettingsTree& tree_;
    const ReleaseChangeTable& table_;
    const core::ReleaseHistory history_;
    std::vector<Diagnostic> diagnostics_;
    std::unordered_set<std::string_view> formerSources_;  // of all rows before the current one
    // Of the current release:
    std::unordered_set<std::string_view> sources_;
    std::unordered_map<std::string_view, std::string_view> targets_;          // with their sources
    std::unordered_map<std::string_view, std::vector<std::size_t>> removed_;  // with the rows' numbers
};

}  // namespace

std::string TableRow::label() const
{
    std::string text(release);
    text.append(target.empty() ? ": remove " : ": move ").append(source);
    return target.empty() ? text : text.append(" to ").append(isRestoration() ? "itself" : target);
}

std::vector<Diagnostic> checkReleaseTable(const core::SettingsTree& tree, const ReleaseChangeTable& table)
{
    return TableCheck(tree, table).run();
}

}  // namespace vx::review
