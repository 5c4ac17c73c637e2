#include "tree_history.hpp"

#include <settings_core/files/atomic_file.hpp>
#include <settings_core/releases/release_history.hpp>

#include <algorithm>
#include <sstream>
#include <string_view>
#include <utility>

#include "cli/command_error.hpp"
#include "source_file.hpp"
#include "tree_diff.hpp"

namespace vx::tool {

namespace {

using settings::core::ReleaseChangeSet;
using settings::core::ReleaseChangeTable;
using settings::core::SettingsFileChange;

const std::string tableFile(review::releaseTableFile);
constexpr const char* listFile = "docs/changed-defaults";

std::string changeLabel(const ReleaseChangeSet& set, const SettingsFileChange& change)
{
    const std::string target = change.to().empty() ? "" : " to " + change.to().front();
    return set.release + ": " + change.operation() + " " + change.from().front() + target;
}

std::string missingSetting(const std::string& path)
{
    return path + " is missing, and no later release change moves or removes it: restore it in " +
           review::sourceFileOf(path) + " or add a release change to " + tableFile;
}

bool sameChange(const SettingsFileChange& left, const SettingsFileChange& right)
{
    return left.operation() == right.operation() && left.from() == right.from() && left.to() == right.to();
}

class HistoryCheck
{
public:
    HistoryCheck(const TreeDocument& baseline, const TreeDocument& live) : baseline_(baseline), live_(live)
    {
        for (const auto& [index, set] : live_.releaseChanges()) {
            if (!baseline_.releaseChanges().contains(index)) {
                later_.emplace(index, set);
            }
        }
    }

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
    void checkMissingSettings()
    {
        for (const DocumentNode& node : baseline_.nodes()) {
            const std::string& path = node.path;
            if (!node.isGroup() && live_.find(path) == nullptr && core::changesFrom(later_, path).empty()) {
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
        const auto& table = live_.releaseChanges();
        for (auto entry = table.begin(); entry != table.end(); ++entry) {
            const ReleaseChangeTable following(std::next(entry), table.end());
            for (const SettingsFileChange& change : entry->second.changes) {
                if (!change.to().empty() && live_.find(change.to().front()) == nullptr &&
                    core::changesFrom(following, change.to().front()).empty())
                {
                    diagnostics_.push_back(
                        changeLabel(entry->second, change) +
                        ": the target does not exist, and no later change moves it on: fix the change in " +
                        tableFile + " or define the setting in " + review::sourceFileOf(change.to().front()));
                }
            }
        }
    }

    void checkSources()
    {
        ChangedDefaults known;
        for (const auto& [index, set] : later_) {
            for (const SettingsFileChange& change : set.changes) {
                const std::string& source = change.from().front();
                if (baseline_.find(source) == nullptr && !known.contains(source)) {
                    diagnostics_.push_back(changeLabel(set, change) +
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
                                       review::sourceFileOf(difference.path));
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
    ReleaseChangeTable later_;  // the releases after the baseline
    std::vector<std::string> diagnostics_;
};

}  // namespace

ChangedDefaults readChangedDefaults(const std::string& file)
{
    const auto content = core::readFile(file);
    if (!content) {
        throw CommandError(ExitCode::failed, "no such file: " + file);
    }
    ChangedDefaults paths;
    std::istringstream lines(*content);
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

}  // namespace vx::tool
