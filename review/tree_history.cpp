#include "tree_history.hpp"

#include <settings_core/releases/release_history.hpp>
#include <settings_core/tree/suggestions.hpp>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>
#include <string_view>
#include <unordered_set>
#include <utility>

#include "release_table.hpp"
#include "source_file.hpp"

namespace vx::review {

namespace {

using core::Diagnostic;
using core::editDistance;
using core::Node;
using settings::core::SettingsFileChange;

Diagnostic inTable(std::string path, std::string message)
{
    return {std::move(path), std::move(message), {.file = std::string(releaseTableFile)}};
}

bool sameChange(const SettingsFileChange& left, const SettingsFileChange& right)
{
    return left.operation() == right.operation() && left.from() == right.from() && left.to() == right.to();
}

/// Checks the step from one release to the next: nothing is lost, and what was published stays.
class StepCheck
{
public:
    StepCheck(const ReleaseTree& older, const ReleaseTree& newer)
        : older_(older),
          newer_(newer),
          history_(newer.releaseChanges),
          suggestions_(older.tree),
          firstLater_(older.releaseChanges.size())
    {}

    std::vector<Diagnostic> run() &&
    {
        checkMissingSettings();
        checkFormerChanges();
        checkLaterRows();
        return std::move(diagnostics_);
    }

private:
    void checkMissingSettings()
    {
        for (const Node* node : older_.tree.nodes()) {
            const std::string path = node->getFullName();
            // A group with members is missed with them; others fill an empty one.
            if (node->children().empty() && newer_.tree.find(path) == nullptr &&
                history_.changesFrom(path, firstLater_).empty())
            {
                diagnostics_.push_back(
                    {path,
                     "is missing, and no later release change moves or removes it: restore it, or add a "
                     "release change to " +
                         std::string(releaseTableFile),
                     {.file = sourceFileOf(path)}});
            }
        }
    }

    /// The changes of a release are final: users' files have been migrated by them.
    void checkFormerChanges()
    {
        for (const auto& [index, set] : older_.releaseChanges) {
            const auto now = newer_.releaseChanges.find(index);
            if (now == newer_.releaseChanges.end() || now->second.release != set.release ||
                !std::ranges::equal(now->second.changes, set.changes, sameChange))
            {
                diagnostics_.push_back(inTable(set.release, "its changes are not those that were published: "
                                                            "restore them and add changes to a later "
                                                            "release"));
            }
        }
    }

    void checkLaterRows()
    {
        std::unordered_set<std::string_view> formerPaths;  // that files may hold
        forEachLaterRow(newer_.releaseChanges, 0, [&](const TableRow& row) {
            if (row.index < firstLater_) {
                formerPaths.insert(row.source);
            } else {
                checkLaterTarget(row);
                checkLaterSource(row, formerPaths);
            }
            formerPaths.insert(row.target);
        });
    }

    void checkLaterSource(const TableRow& row, const std::unordered_set<std::string_view>& formerPaths)
    {
        if (older_.tree.find(row.source) == nullptr && !formerPaths.contains(row.source)) {
            const auto similar = suggestions_.suggest(row.source);
            diagnostics_.push_back(
                inTable(row.label(), "no release had the path " + std::string(row.source) + ": " +
                                         (similar.empty() ? "fix the change" : core::didYouMean(similar))));
        }
    }

    void checkLaterTarget(const TableRow& row)
    {
        if (!row.target.empty() && newer_.tree.find(row.target) == nullptr &&
            history_.changesFrom(row.target, row.index, row.number + 1).empty())
        {
            diagnostics_.push_back(
                inTable(row.label(), "the target does not exist, and no later change moves it on: fix the "
                                     "change, or define the setting in " +
                                         sourceFileOf(row.target)));
        }
    }

    const ReleaseTree& older_;
    const ReleaseTree& newer_;
    const core::ReleaseHistory history_;  // of the newer
    core::PathSuggestions suggestions_;   // from the older
    std::uint64_t firstLater_;            // index of the first release after the older one
    std::vector<Diagnostic> diagnostics_;
};

/// Checks the moves since the last baseline against both trees.
class MoveCheck
{
public:
    MoveCheck(const ReleaseTree& baseline, const ReleaseTree& live) : baseline_(baseline), live_(live)
    {
        forEachLaterRow(live.releaseChanges, baseline.releaseChanges.size(), [this](const TableRow& row) {
            if (!row.target.empty() && !row.isRestoration()) {
                moves_.push_back({row, distanceOf(row)});
            }
        });
    }

    /// Moves that cannot be right.
    [[nodiscard]] std::vector<Diagnostic> findErrors() const
    {
        std::vector<Diagnostic> diagnostics;
        for (const Move& move : moves_) {
            if (std::string message = errorOf(move.row); !message.empty()) {
                diagnostics.push_back(inTable(move.row.label(), std::move(message)));
            }
        }
        return diagnostics;
    }

    /// Other moves that are wrong unless there is a reason for them.
    [[nodiscard]] std::vector<Difference> findSuspicious() const
    {
        std::vector<Difference> suspicious;
        for (const Move& move : moves_) {
            if (!errorOf(move.row).empty()) {
                continue;
            }
            if (baseline_.tree.find(move.row.target) != nullptr) {
                add(suspicious, move.row, "the last release has it already, with values of its own");
            } else if (const Move* other = findCrossed(move)) {
                add(suspicious, move.row, "its name is more like " + std::string(other->row.source));
            }
        }
        return suspicious;
    }

private:
    struct Move
    {
        TableRow row;
        std::optional<std::size_t> distance;  ///< see distanceOf
    };

    [[nodiscard]] std::string errorOf(const TableRow& move) const
    {
        const Node* const source = baseline_.tree.find(move.source);
        const Node* const target = live_.tree.find(move.target);
        if (source != nullptr && source->kind() == core::NodeKind::group) {
            return "the source is a group: list the moves of its settings one by one";
        }
        if (target == nullptr) {
            return "";
        }
        if (target->kind() != core::NodeKind::setting) {
            return "the target is " +
                   std::string(target->kind() == core::NodeKind::group ? "a group" : "an alias") +
                   ": only a setting can take the values";
        }
        return target->properties().readOnly.value()
                   ? "the target is read-only, so that users lose their values: choose another target, or "
                     "remove the setting"
                   : "";
    }

    static void add(std::vector<Difference>& suspicious, const TableRow& move, const std::string& summary)
    {
        suspicious.push_back({DifferenceKind::moved, std::string(move.target), std::string(move.source),
                              std::string(move.release),
                              std::string(move.release) + " gives it the values of " +
                                  std::string(move.source) + ", but " + summary});
    }

    /// Returns another move of the same release, if exchanging the targets would make source and target names
    /// more alike; else null. Moves in several steps are not compared, nor those that are far from each
    /// other in a long list: comparing all pairs would take too long.
    [[nodiscard]] const Move* findCrossed(const Move& move) const
    {
        constexpr std::ptrdiff_t reach = 30;
        const std::ptrdiff_t index = &move - moves_.data();
        const auto first = std::next(moves_.begin(), std::max<std::ptrdiff_t>(index - reach, 0));
        const auto end = std::next(moves_.begin(), std::min(index + reach + 1, std::ssize(moves_)));
        const auto found =
            std::find_if(first, end, [&move](const Move& other) { return areCrossed(move, other); });
        return found == end ? nullptr : &*found;
    }

    static bool areCrossed(const Move& left, const Move& right)
    {
        if (left.row.index != right.row.index || !left.distance || !right.distance) {
            return false;
        }
        const std::size_t current = *left.distance + *right.distance;
        const std::size_t exchanged = editDistance(left.row.source, right.row.target, current);
        return exchanged < current &&
               exchanged + editDistance(right.row.source, left.row.target, current - exchanged) < current;
    }

    /// Returns the distance between the names; nothing unless the move leads from the last release to the
    /// tree in one step.
    [[nodiscard]] std::optional<std::size_t> distanceOf(const TableRow& move) const
    {
        const bool isWhole =
            baseline_.tree.find(move.source) != nullptr && live_.tree.find(move.target) != nullptr;
        const std::size_t longest = std::max(move.source.size(), move.target.size());
        return isWhole ? std::optional(editDistance(move.source, move.target, longest)) : std::nullopt;
    }

    const ReleaseTree& baseline_;
    const ReleaseTree& live_;
    std::vector<Move> moves_;
};

/// Only one release may follow the last baseline: the one that is being prepared.
std::vector<Diagnostic> checkComingRelease(const Baseline& last, const ReleaseTree& live)
{
    std::vector<Diagnostic> diagnostics;
    const core::ReleaseName coming = releaseAfter(last.release);
    for (const auto& [index, set] : live.releaseChanges) {
        const auto release = core::parseReleaseName(set.release);
        if (!release) {
            continue;
        }
        if (index >= last.content.releaseChanges.size() && *release <= last.release) {
            diagnostics.push_back(inTable(set.release, "is published, so that its changes are final: add "
                                                       "changes to the list of " +
                                                           formatReleaseName(coming)));
        } else if (coming < *release) {
            diagnostics.push_back(
                inTable(set.release, "the release after " + last.name + " is " + formatReleaseName(coming) +
                                         ": name the list after that, or, if that is published, record its "
                                         "baseline with scripts/release.sh"));
        }
    }
    return diagnostics;
}

void append(std::vector<Diagnostic>& all, std::vector<Diagnostic> more)
{
    std::ranges::move(more, std::back_inserter(all));
}

/// A patch release must not need a migration, as settings files do not name it.
std::vector<Diagnostic> checkPatch(const Baseline& former, const Baseline& patch)
{
    std::vector<Diagnostic> diagnostics;
    for (const Difference& difference : compareTrees(former.content, patch.content)) {
        const bool isAllowed =
            difference.kind == DifferenceKind::added || difference.kind >= DifferenceKind::defaultValue;
        if (!isAllowed) {
            const std::string details = describeDifference(difference);
            diagnostics.push_back({difference.path,
                                   std::string(kindLabel(difference.kind)) +
                                       (isPropertyKind(difference.kind) ? " changed" : "") + " since " +
                                       former.name + (details.empty() ? "" : ": " + details) +
                                       "; a patch release must not do that: leave it to the next release",
                                   {.file = patch.file}});
        }
    }
    return diagnostics;
}

/// Checks each baseline against the one before it. A patch release may be published after the next release,
/// which then lacks its settings; only the tree must have them.
std::vector<Diagnostic> checkBaselines(const std::vector<Baseline>& list, const ReleaseTree& live)
{
    std::vector<Diagnostic> diagnostics;
    const Baseline* release = &list.front();
    for (std::size_t i = 1; i < list.size(); ++i) {
        const Baseline& baseline = list[i];
        const core::ReleaseName next = baseline.isPatch ? baseline.release : releaseAfter(release->release);
        if (baseline.release != (baseline.isPatch ? release->release : next)) {
            diagnostics.push_back({"",
                                   "does not follow " + list[i - 1].name + ": the baseline of " +
                                       formatReleaseName(next) + " is missing",
                                   {.file = baseline.file}});
        }
        if (baseline.isPatch) {
            append(diagnostics, checkPatch(list[i - 1], baseline));
            continue;
        }
        if (list[i - 1].isPatch) {
            append(diagnostics, StepCheck(list[i - 1].content, live).run());
        }
        append(diagnostics, StepCheck(release->content, baseline.content).run());
        release = &baseline;
    }
    return diagnostics;
}

}  // namespace

std::vector<Diagnostic> checkHistory(const Baselines& baselines, const ReleaseTree& live,
                                     const ChangedSettings& changedSettings)
{
    if (!baselines.diagnostics.empty()) {
        return baselines.diagnostics;  // comparisons with other files would mislead
    }
    if (baselines.list.empty()) {
        return {{"", "has no baseline", {.file = baselines.folder}}};
    }
    std::vector<Diagnostic> diagnostics;
    append(diagnostics, checkBaselines(baselines.list, live));
    const Baseline& last = baselines.list.back();
    append(diagnostics, checkComingRelease(last, live));
    append(diagnostics, StepCheck(last.content, live).run());
    const MoveCheck moves(last.content, live);
    append(diagnostics, moves.findErrors());
    std::vector<Difference> differences = moves.findSuspicious();
    std::ranges::copy_if(compareTrees(last.content, live), std::back_inserter(differences),
                         [](const Difference& difference) { return isPropertyKind(difference.kind); });
    append(diagnostics, checkChangedSettings(changedSettings, differences, live));
    return diagnostics;
}

}  // namespace vx::review
