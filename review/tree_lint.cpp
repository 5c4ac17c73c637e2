#include "tree_lint.hpp"

#include <settings_core/constraints/constraints.hpp>
#include <settings_core/constraints/validation.hpp>
#include <settings_core/releases/release_history.hpp>

#include <boost/algorithm/string/case_conv.hpp>

#include <algorithm>
#include <array>
#include <cstdint>
#include <locale>
#include <map>
#include <string_view>
#include <utility>

#include "source_file.hpp"

namespace vx::review {

namespace {

using core::Node;
using core::NodeKind;
using settings::core::ReleaseChangeTable;
using settings::core::SettingsFileChange;

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

    std::vector<core::Diagnostic> run() &&
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
        diagnostics_.push_back(
            {node.getFullName(), std::move(message), {.file = sourceFileOf(node.getFullName())}});
    }

    void addChange(const std::string& path, std::string message)
    {
        diagnostics_.push_back({path, std::move(message), {.file = std::string(releaseTableFile)}});
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
        for (const auto& [index, set] : releases_) {
            for (const auto& change : set.changes) {
                checkSource(set.release, change, index + 1);
                checkTarget(set.release, change, index + 1);
            }
        }
    }

    /// A path that a release moved or removed may exist again only as the target of a later move.
    void checkSource(const std::string& release, const SettingsFileChange& change, std::uint64_t following)
    {
        const std::string& path = change.from().front();
        if (tree_.find(path) != nullptr && core::movesTo(releases_, path, following).empty()) {
            addChange(path, release + " moved or removed it, but it is still in the tree: remove it from " +
                                sourceFileOf(path) + " or fix the release change");
        }
    }

    void checkTarget(const std::string& release, const SettingsFileChange& change, std::uint64_t following)
    {
        if (change.to().empty()) {
            return;
        }
        const std::string& target = change.to().front();
        if (tree_.find(target) == nullptr && core::changesFrom(releases_, target, following).empty()) {
            addChange(change.from().front(), release + " moved it to " + target +
                                                 ", which does not exist: define it in " +
                                                 sourceFileOf(target) + " or fix the release change");
        }
    }

    const core::SettingsTree& tree_;
    const ReleaseChangeTable& releases_;
    std::vector<core::Diagnostic> diagnostics_;
};

}  // namespace

std::vector<core::Diagnostic> lintTree(const core::SettingsTree& tree, const ReleaseChangeTable& releases)
{
    return Lint(tree, releases).run();
}

}  // namespace vx::review
