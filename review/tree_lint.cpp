#include "tree_lint.hpp"

#include <settings_core/constraints/constraints.hpp>
#include <settings_core/constraints/validation.hpp>
#include <settings_core/tree/path_lookup.hpp>

#include <foundation/verdixdata/text.hpp>

#include <boost/algorithm/string/case_conv.hpp>
#include <boost/algorithm/string/trim.hpp>

#include <algorithm>
#include <array>
#include <iterator>
#include <locale>
#include <map>
#include <set>
#include <string_view>
#include <utility>
#include <variant>

#include "release_table.hpp"
#include "source_file.hpp"

namespace vx::review {

namespace {

using core::Node;
using core::NodeKind;
using foundation::verdixdata::Array;
using foundation::verdixdata::ArrayType;
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

bool isLetter(char character)
{
    return (character >= 'A' && character <= 'Z') || (character >= 'a' && character <= 'z');
}

bool isKnown(std::span<const std::string_view> exceptions, std::string_view path)
{
    return std::ranges::find(exceptions, path) != exceptions.end();
}

class Lint
{
public:
    Lint(const core::SettingsTree& tree, const ReleaseChangeTable& releases)
        : tree_(tree), releases_(releases), unknownPaths_(tree, releases)
    {}

    std::vector<core::Diagnostic> run() &&
    {
        checkNames(*tree_.root());
        for (const Node* node : tree_.nodes()) {
            checkCharacters(*node);
            if (node->kind() == NodeKind::group) {
                checkContents(*node);
                checkNames(*node);
            } else if (node->kind() == NodeKind::alias) {
                checkAlias(*node);
            } else {
                checkConstraint(*node);
                checkValueValidators(*node);
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

    void checkCharacters(const Node& node)
    {
        constexpr auto isAllowed = [](char c) { return isLetter(c) || (c >= '0' && c <= '9') || c == '_'; };
        if (!isLetter(node.name().front()) || !std::ranges::all_of(node.name(), isAllowed)) {
            add(node,
                "\"" + std::string(node.name()) +
                    "\" is not a letter followed by letters, digits and _, all ASCII: choose another name");
        }
    }

    void checkAlias(const Node& alias)
    {
        const std::string& target = alias.properties().aliasName();
        const Node* node = tree_.find(target);
        if (node == nullptr && target.starts_with(tree_.root()->getFullName() + ".")) {
            add(alias,
                "its target " + target + " does not exist: correct it; " + unknownPaths_.explain(target));
        } else if (node != nullptr && node->kind() == NodeKind::group) {
            add(alias, "its target " + target + " is a group: give the full path of a setting");
        } else if (isCircular(alias)) {
            add(alias, "its target " + target + " leads back to it: give the full path of a setting");
        }
    }

    /// Whether the alias leads to itself, also through further aliases.
    bool isCircular(const Node& alias) const
    {
        const Node* node = &alias;
        for (std::size_t steps = 0; steps < tree_.nodes().size(); ++steps) {
            node = tree_.find(node->properties().aliasName());
            if (node == nullptr || node == &alias || node->kind() != NodeKind::alias) {
                break;
            }
        }
        return node == &alias;
    }

    void checkConstraint(const Node& setting)
    {
        const Node::Properties& properties = setting.properties();
        if (!core::constraintOf(properties).isSatisfiable()) {
            add(setting, "no value can be " + core::describeConstraint(properties) + ": fix its constraint");
        }
        if (std::holds_alternative<std::monostate>(properties.validator) &&
            properties.valueValidators.empty()) {
            if (!properties.factoryValue.isAssigned()) {
                add(setting,
                    "it has neither a factory value nor a constraint: add one of them, or a validator");
            }
            if (properties.errorHandler) {
                add(setting,
                    "its error handler explains constraints, but there is none: add a constraint or a "
                    "validator, or remove the handler");
            }
        }
    }

    void checkValueValidators(const Node& setting)
    {
        const Array& factory = setting.properties().factoryValue;
        for (const core::ValueValidator& validator : setting.properties().valueValidators) {
            if (core::exportedConstraints(validator).empty()) {
                add(setting,
                    "a value validator has no constraint, for example an empty list of allowed strings: "
                    "complete it, or remove it");
            }
            if (validator.maximumLength == 0) {
                add(setting, "the maximum length is 0: raise it");
            }
            if (validator.maximumLength && factory.isAssigned() && factory.getType() != ArrayType::CELL &&
                !core::isStringClass(factory.getType()))
            {
                add(setting, "the maximum length is for strings and cells, but the factory value is neither: "
                             "remove it, or change the value");
            }
            checkAllowedStrings(setting, validator.allowedValues);
        }
    }

    void checkAllowedStrings(const Node& setting, const std::vector<std::u16string>& allowed)
    {
        std::set<std::u16string_view> seen;
        for (const std::u16string& string : allowed) {
            const std::string utf8 = foundation::verdixdata::toUtf8(string);
            if (!seen.insert(string).second) {
                add(setting, "the allowed string \"" + utf8 + "\" is repeated: remove it");
            }
            if (boost::algorithm::trim_copy(utf8, std::locale::classic()) != utf8) {
                add(setting,
                    "the allowed string \"" + utf8 + "\" begins or ends with whitespace: remove that");
            }
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
    core::UnknownPaths unknownPaths_;
    std::vector<core::Diagnostic> diagnostics_;
};

}  // namespace

std::vector<core::Diagnostic> lintTree(const core::SettingsTree& tree, const ReleaseChangeTable& releases)
{
    return Lint(tree, releases).run();
}

}  // namespace vx::review
