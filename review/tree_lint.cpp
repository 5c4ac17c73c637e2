#include "tree_lint.hpp"

#include <settings_core/constraints/constraints.hpp>
#include <settings_core/constraints/validation.hpp>
#include <settings_core/releases/release_history.hpp>

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

/// Settings with an invalid factory value: the platform is unknown when the tree is built, and no allowed
/// value means unknown.
constexpr std::array<std::string_view, 1> invalidByDesign = {"verdix.keyboard.shortcuts.ActivePlatform"};

/// Names that differ only in letter case: the setting Zoom and the group zoom, which other modules fill.
constexpr std::array<std::string_view, 1> differsOnlyInCase = {"verdix.web.zoom"};

/// Empty groups, which other modules fill.
constexpr std::array<std::string_view, 5> filledElsewhere = {"verdix.desktop.displayedroots",
                                                             "verdix.project", "verdix.sourcecontrol",
                                                             "verdix.vexo.upgrade", "verdix.web.zoom"};

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

    std::vector<LintDiagnostic> run() &&
    {
        checkNames(*tree_.root());
        for (const Node* node : tree_.nodes()) {
            if (node->kind() == NodeKind::group) {
                checkContents(*node);
                checkNames(*node);
            } else if (node->kind() == NodeKind::setting) {
                checkConstraint(*node);
                checkFactoryValue(*node);
            }
        }
        checkReleases();
        return std::move(diagnostics_);
    }

private:
    void add(const Node& node, std::string message)
    {
        diagnostics_.push_back({sourceFileOf(node.getFullName()), node.getFullName(), std::move(message)});
    }

    void addChange(const std::string& path, std::string message)
    {
        diagnostics_.push_back({std::string(releaseTableFile), path, std::move(message)});
    }

    void checkContents(const Node& group)
    {
        if (group.children().empty() && !isKnown(filledElsewhere, group.fullName())) {
            add(group, "the group is empty: add settings to it, or remove it");
        }
    }

    void checkNames(const Node& group)
    {
        std::map<std::string, const Node*> seen;
        for (const Node& child : group.children()) {
            const auto lower =
                boost::algorithm::to_lower_copy(std::string(child.name()), std::locale::classic());
            const auto [same, isNew] = seen.emplace(lower, &child);
            if (!isNew && !isKnown(differsOnlyInCase, child.fullName())) {
                add(child, "the name differs from " + same->second->getFullName() +
                               " only in letter case: choose another name");
            }
        }
    }

    void checkConstraint(const Node& setting)
    {
        if (!core::constraintOf(setting.properties()).isSatisfiable()) {
            add(setting,
                "no value can be " + core::describeConstraint(setting.properties()) + ": fix its constraint");
        }
    }

    void checkFactoryValue(const Node& setting)
    {
        const auto diagnostics = core::checkDefaultValue(setting);
        if (!diagnostics.empty() && !isKnown(invalidByDesign, setting.fullName())) {
            add(setting, "invalid factory value: " + diagnostics.front().message);
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

    /// A path that a release moved or removed may exist again only as the target of a later move.
    void checkSource(const std::string& release, const settings::core::SettingsFileChange& change,
                     const ReleaseChangeTable& following)
    {
        const std::string& path = change.from().front();
        if (tree_.find(path) != nullptr && core::movesTo(following, path).empty()) {
            addChange(path, release + " moved or removed it, but it is still in the tree: remove it from " +
                                sourceFileOf(path) + " or fix the release change");
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
            addChange(change.from().front(), release + " moved it to " + target +
                                                 ", which does not exist: define it in " +
                                                 sourceFileOf(target) + " or fix the release change");
        }
    }

    const core::SettingsTree& tree_;
    const ReleaseChangeTable& releases_;
    std::vector<LintDiagnostic> diagnostics_;
};

}  // namespace

std::vector<LintDiagnostic> lintTree(const core::SettingsTree& tree, const ReleaseChangeTable& releases)
{
    return Lint(tree, releases).run();
}

}  // namespace vx::tool
