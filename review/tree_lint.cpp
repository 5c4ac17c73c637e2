#include "tree_lint.hpp"

#include <settings_core/constraints/constraints.hpp>
#include <settings_core/constraints/validation.hpp>

#include <boost/algorithm/string/case_conv.hpp>

#include <algorithm>
#include <array>
#include <iterator>
#include <locale>
#include <map>
#include <string_view>
#include <utility>

#include "release_table.hpp"
#include "source_file.hpp"

namespace vx::review {

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
        std::ranges::move(checkReleaseTable(tree_, releases_), std::back_inserter(diagnostics_));
        return std::move(diagnostics_);
    }

private:
    void add(const Node& node, std::string message)
    {
        diagnostics_.push_back(
            {node.getFullName(), std::move(message), {.file = sourceFileOf(node.getFullName())}});
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
