#include <settings_core/tree/path_lookup.hpp>

namespace vx::core {

using ::settings::core::ReleaseChangeTable;

std::string fullPath(const SettingsTree& tree, std::string_view path)
{
    const Node& root = *tree.root();
    return isAtOrUnder(path, root.fullName()) ? std::string(path)
                                              : root.getFullName() + "." + std::string(path);
}

const Node& nodeAt(const SettingsTree& tree, UnknownPaths& unknownPaths, std::string_view path)
{
    const std::string full = fullPath(tree, path);
    if (const Node* found = tree.find(full)) {
        return *found;
    }
    throw UnknownPath(path.empty()
                          ? "the path is empty; " + unknownPaths.explain(path)
                          : "no such path: " + std::string(path) + "; " + unknownPaths.explain(full));
}

const Node& nodeAt(const SettingsTree& tree, const ReleaseChangeTable& releases, std::string_view path)
{
    UnknownPaths unknownPaths(tree, releases);
    return nodeAt(tree, unknownPaths, path);
}

std::string UnknownPaths::explain(std::string_view path)
{
    if (!history_) {
        history_.emplace(releases_);
    }
    const auto steps = history_->changesFrom(path);
    if (!steps.empty()) {
        return describeSteps(steps);
    }
    const auto suggestions = suggestions_.suggest(path);
    return suggestions.empty() ? "list all paths with: vxsettings list --hidden" : didYouMean(suggestions);
}

const Node& resolveSetting(const SettingsTree& tree, const Node& node)
{
    const Node* setting = &node;
    // A chain with more steps than the tree has nodes is circular.
    for (std::size_t steps = 0; setting->kind() == NodeKind::alias; ++steps) {
        const std::string& target = setting->properties().aliasName();
        const Node* next = tree.find(target);
        if (next == nullptr || steps > tree.nodes().size()) {
            throw std::runtime_error(setting->getFullName() + " is an alias of " + target +
                                     (next == nullptr ? ", which is not in this tree: unresolved"
                                                      : ", which leads back to it: unresolved"));
        }
        setting = next;
    }
    if (setting->kind() == NodeKind::group) {
        throw std::runtime_error(setting->getFullName() +
                                 " is a group, not a setting; show its settings with: vxsettings tree " +
                                 setting->getFullName());
    }
    return *setting;
}

}  // namespace vx::core
