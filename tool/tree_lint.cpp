#include "tree_lint.hpp"

#include <settings_core/release_history.hpp>
#include <settings_core/validation.hpp>

#include <boost/algorithm/string/case_conv.hpp>

#include <algorithm>
#include <array>
#include <iterator>
#include <locale>
#include <map>
#include <string_view>
#include <utility>

#include "source_file.hpp"

namespace vx::tool {

namespace {

using core::Node;
using core::NodeKind;
using settings::core::ReleaseChangeTable;

/// Nobody has chosen a platform when the tree is built, and there is no word for that.
constexpr std::array<std::string_view, 1> refusedByItself = {"verdix.keyboard.shortcuts.ActivePlatform"};

/// The browser's zoom is a setting, and the group of the same word an anchor.
constexpr std::array<std::string_view, 1> sameButForCase = {"verdix.web.zoom"};

/// Groups that other modules fill.
constexpr std::array<std::string_view, 5> anchors = {"verdix.desktop.displayedroots", "verdix.project",
                                                     "verdix.sourcecontrol", "verdix.vexo.upgrade",
                                                     "verdix.web.zoom"};

bool isKnown(std::span<const std::string_view> exceptions, std::string_view path)
{
    return std::ranges::find(exceptions, path) != exceptions.end();
}

class Lint
{
public:
    Lint(const core::SettingsTree& tree, const ReleaseChangeTable& releases)
        : tree_(tree), releases_(releases)
    {}

    std::vector<LintFault> run() &&
    {
        checkNames(*tree_.root());
        for (const Node* node : tree_.nodes()) {
            if (node->kind() == NodeKind::group) {
                checkContents(*node);
                checkNames(*node);
            } else if (node->kind() == NodeKind::setting) {
                checkRules(*node);
                checkOwnValue(*node);
            }
        }
        checkReleases();
        return std::move(faults_);
    }

private:
    void add(const Node& node, std::string message)
    {
        faults_.push_back({sourceFileOf(node.getFullName()), node.getFullName(), std::move(message)});
    }

    void addRecord(const std::string& path, std::string message)
    {
        faults_.push_back({std::string(releaseTableFile), path, std::move(message)});
    }

    void checkContents(const Node& group)
    {
        if (group.children().empty() && !isKnown(anchors, group.fullName())) {
            add(group, "the group is empty: describe settings in it, or take it away");
        }
    }

    void checkNames(const Node& group)
    {
        std::map<std::string, const Node*> seen;
        for (const Node& child : group.children()) {
            const auto lower =
                boost::algorithm::to_lower_copy(std::string(child.name()), std::locale::classic());
            const auto [same, isNew] = seen.emplace(lower, &child);
            if (!isNew && !isKnown(sameButForCase, child.fullName())) {
                add(child, "the name differs from " + same->second->getFullName() +
                               " by letter case alone: choose another");
            }
        }
    }

    void checkRules(const Node& setting)
    {
        for (const auto& record : setting.properties().valueValidators) {
            if (record.range && !(record.range->lower <= record.range->upper)) {
                add(setting,
                    "no value is in the range " + core::describeValueValidator(record) + ": mend its bounds");
            }
        }
    }

    void checkOwnValue(const Node& setting)
    {
        const core::Verdict verdict = core::checkDefaultValue(setting);
        if (!verdict.accepted() && !isKnown(refusedByItself, setting.fullName())) {
            add(setting, "its own factory value is refused: " + verdict.failures.front().message);
        }
    }

    void checkReleases()
    {
        for (auto release = releases_.begin(); release != releases_.end(); ++release) {
            const ReleaseChangeTable following(std::next(release), releases_.end());
            for (const auto& change : release->second.changes) {
                checkSource(release->second.release, change, following);
                checkTarget(release->second.release, change, following);
            }
        }
    }

    /// A path that a release took away may come back only as the target of a later move.
    void checkSource(const std::string& release, const settings::core::SettingsFileChange& change,
                     const ReleaseChangeTable& following)
    {
        const std::string& path = change.from().front();
        if (tree_.find(path) != nullptr && core::movesTo(following, path).empty()) {
            addRecord(path, release + " took it away, and yet it is in the tree: take it out of " +
                                sourceFileOf(path) + " or mend the record");
        }
    }

    void checkTarget(const std::string& release, const settings::core::SettingsFileChange& change,
                     const ReleaseChangeTable& following)
    {
        if (change.to().empty()) {
            return;
        }
        const std::string& target = change.to().front();
        if (tree_.find(target) == nullptr && core::changesFrom(following, target).empty()) {
            addRecord(change.from().front(), release + " moved it to " + target +
                                                 ", which does not exist: describe it in " +
                                                 sourceFileOf(target) + " or mend the record");
        }
    }

    const core::SettingsTree& tree_;
    const ReleaseChangeTable& releases_;
    std::vector<LintFault> faults_;
};

}  // namespace

std::vector<LintFault> lintTree(const core::SettingsTree& tree, const ReleaseChangeTable& releases)
{
    return Lint(tree, releases).run();
}

}  // namespace vx::tool
