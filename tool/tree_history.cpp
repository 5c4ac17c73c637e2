#include "tree_history.hpp"

#include <settings_core/atomic_file.hpp>
#include <settings_core/release_history.hpp>

#include <algorithm>
#include <sstream>
#include <string_view>
#include <utility>

#include "failure.hpp"
#include "source_file.hpp"
#include "tree_diff.hpp"

namespace vx::tool {

namespace {

using settings::core::ReleaseChangeSet;
using settings::core::ReleaseChangeTable;
using settings::core::SettingsFileChange;

const std::string recordsFile(releaseTableFile);
constexpr const char* listFile = "docs/changed-defaults";

std::string describe(const ReleaseChangeSet& set, const SettingsFileChange& change)
{
    const std::string target = change.to().empty() ? "" : " to " + change.to().front();
    return set.release + ": " + change.operation() + " " + change.from().front() + target;
}

std::string goneWithoutRecord(const std::string& path)
{
    return path + " is gone, and no record of a later release moves or removes it: put it back in " +
           sourceFileOf(path) + " or add a record to " + recordsFile;
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
        checkDisappeared();
        checkFormerRecords();
        checkTargets();
        checkSources();
        checkDefaults(changedDefaults);
        return std::move(faults_);
    }

private:
    void checkDisappeared()
    {
        for (const DocumentNode& node : baseline_.nodes()) {
            const std::string& path = node.path;
            if (!node.isGroup() && live_.find(path) == nullptr && core::changesFrom(later_, path).empty()) {
                faults_.push_back(goneWithoutRecord(path));
            }
        }
    }

    /// What a release said when it came out cannot be unsaid: users' files were carried forward by it.
    void checkFormerRecords()
    {
        for (const auto& [index, set] : baseline_.releaseChanges()) {
            const auto now = live_.releaseChanges().find(index);
            if (now == live_.releaseChanges().end() || now->second.release != set.release ||
                !std::ranges::equal(now->second.changes, set.changes, sameChange))
            {
                faults_.push_back("the records of " + set.release +
                                  " are no longer those that it came out with: "
                                  "put them back in " +
                                  recordsFile + " and add records to a later release");
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
                    faults_.push_back(
                        describe(entry->second, change) +
                        ": the target does not exist, and no later record carries it on: mend the "
                        "record in " +
                        recordsFile + " or describe the setting in " + sourceFileOf(change.to().front()));
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
                    faults_.push_back(describe(set, change) +
                                      ": no release had this path: mend the record in " + recordsFile);
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
                faults_.push_back(difference.path + " has another default (" + difference.before + " -> " +
                                  difference.after + "): list it in " + listFile +
                                  " if that is intended, else mend " + sourceFileOf(difference.path));
            }
        }
        for (const std::string& path : listed) {
            if (!changed.contains(path)) {
                faults_.push_back(path + " is listed in " + listFile +
                                  ", but its default is as it was: take it "
                                  "off the list");
            }
        }
    }

    const TreeDocument& baseline_;
    const TreeDocument& live_;
    ReleaseChangeTable later_;  // the releases after the baseline
    std::vector<std::string> faults_;
};

}  // namespace

ChangedDefaults readChangedDefaults(const std::string& file)
{
    const auto content = core::readFile(file);
    if (!content) {
        throw Failure(ExitCode::failed, "no such file: " + file);
    }
    ChangedDefaults paths;
    std::istringstream lines(*content);
    for (std::string line; std::getline(lines, line);) {
        std::istringstream words(line.substr(0, line.find('#')));
        if (std::string path; words >> path) {
            paths.insert(std::move(path));
        }
    }
    return paths;
}

std::vector<std::string> findHistoryFaults(const TreeDocument& baseline, const TreeDocument& live,
                                           const ChangedDefaults& changedDefaults)
{
    return HistoryCheck(baseline, live).run(changedDefaults);
}

}  // namespace vx::tool
