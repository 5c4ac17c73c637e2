#include "tree_history.hpp"

#include <settings_core/releases/release_history.hpp>

#include <algorithm>
#include <cstdint>
#include <sstream>
#include <string_view>
#include <utility>

#include "source_file.hpp"
#include "tree_diff.hpp"

namespace vx::review {

namespace {

using settings::core::ReleaseChangeSet;
using settings::core::ReleaseChangeTable;
using settings::core::SettingsFileChange;

const std::string tableFile(releaseTableFile);
constexpr const char* listFile = "docs/changed-defaults";

std::string changeLabel(const ReleaseChangeSet& set, const SettingsFileChange& change)
{
    const std::string target = change.to().empty() ? "" : " to " + change.to().front();
    return set.release + ": " + change.operation() + " " + change.from().front() + target;
}

std::string missingSetting(const std::string& path)
{
    return path + " is missing, and no later release change moves or removes it: restore it in " +
           sourceFileOf(path) + " or add a release change to " + tableFile;
}

bool sameChange(const SettingsFileChange& left, const SettingsFileChange& right)
{
    return left.operation() == right.operation() && left.from() == right.from() && left.to() == right.to();
}

class HistoryCheck
{
public:
    HistoryCheck(const TreeDocument& baseline, const TreeDocument& live)
        : baseline_(baseline), live_(live), firstLater_(baseline.releaseChanges().size())
    {}

    std::vector<std::string> run(const ChangedDefaults& changedDefaults) &&
    {
        checkMissingSettings();
        checkFormerChanges();
        checkTargets();
        checkSources();
        checkDefaults(changedDefaults);
        return std::move(diagnostics_);
    }

private:
    /// Whether the release at this index or a later one moves or removes the path.
    [[nodiscard]] bool isChangedLater(std::string_view path, std::uint64_t first) const
    {
        return !core::changesFrom(live_.releaseChanges(), path, first).empty();
    }

    void checkMissingSettings()
    {
        for (const DocumentNode& node : baseline_.nodes()) {
            const std::string& path = node.path;
            if (!node.isGroup() && live_.find(path) == nullptr && !isChangedLater(path, firstLater_)) {
                diagnostics_.push_back(missingSetting(path));
            }
        }
    }

    /// The changes of a release are final: users' files have been migrated by them.
    void checkFormerChanges()
    {
        for (const auto& [index, set] : baseline_.releaseChanges()) {
            const auto now = live_.releaseChanges().find(index);
            if (now == live_.releaseChanges().end() || now->second.release != set.release ||
                !std::ranges::equal(now->second.changes, set.changes, sameChange))
            {
                diagnostics_.push_back("the changes of " + set.release +
                                       " are not those of its baseline: restore them in " + tableFile +
                                       " and add changes to a later release");
            }
        }
    }

    void checkTargets()
    {
        for (const auto& [index, set] : live_.releaseChanges()) {
            for (const SettingsFileChange& change : set.changes) {
                if (!change.to().empty() && live_.find(change.to().front()) == nullptr &&
                    !isChangedLater(change.to().front(), index + 1))
                {
                    diagnostics_.push_back(
                        changeLabel(set, change) +
                        ": the target does not exist, and no later change moves it on: fix the change in " +
                        tableFile + " or define the setting in " + sourceFileOf(change.to().front()));
                }
            }
        }
    }

    void checkSources()
    {
        ChangedDefaults known;
        const ReleaseChangeTable& table = live_.releaseChanges();
        for (auto later = table.lower_bound(firstLater_); later != table.end(); ++later) {
            for (const SettingsFileChange& change : later->second.changes) {
                const std::string& source = change.from().front();
                if (baseline_.find(source) == nullptr && !known.contains(source)) {
                    diagnostics_.push_back(changeLabel(later->second, change) +
                                           ": no release had this path: fix the change in " + tableFile);
                }
                known.insert(change.to().begin(), change.to().end());
            }
        }
    }

    void checkDefaults(const ChangedDefaults& listed)
    {
        ChangedDefaults changed;
        for (const Difference& difference : compareTrees(baseline_, live_)) {
            if (difference.kind != DifferenceKind::changedDefault) {
                continue;
            }
            changed.insert(difference.path);
            if (!listed.contains(difference.path)) {
                diagnostics_.push_back(difference.path + ": the default changed (" + difference.before +
                                       " -> " + difference.after + "): list it in " + listFile +
                                       " if that is intended, otherwise fix " +
                                       sourceFileOf(difference.path));
            }
        }
        for (const std::string& path : listed) {
            if (!changed.contains(path)) {
                diagnostics_.push_back(path + " is listed in " + listFile +
                                       ", but its default is unchanged: remove it from the list");
            }
        }
    }

    const TreeDocument& baseline_;
    const TreeDocument& live_;
    std::uint64_t firstLater_;  // index of the first release after the baseline
    std::vector<std::string> diagnostics_;
};

}  // namespace

ChangedDefaults readChangedDefaults(const std::string& file)
{
    ChangedDefaults paths;
    std::istringstream lines(contentOf(file));
    for (std::string line; std::getline(lines, line);) {
        std::istringstream uncommented(line.substr(0, line.find('#')));
        if (std::string path; uncommented >> path) {
            paths.insert(std::move(path));
        }
    }
    return paths;
}

std::vector<std::string> checkHistory(const TreeDocument& baseline, const TreeDocument& live,
                                      const ChangedDefaults& changedDefaults)
{
    return HistoryCheck(baseline, live).run(changedDefaults);
}

}  // namespace vx::review
