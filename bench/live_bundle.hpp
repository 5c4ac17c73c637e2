#pragma once

#include <settings_core/tree/settings_tree.hpp>
#include <tool/host/host.hpp>

#include <bench/recorded_calls.hpp>

namespace bench {

/// Returns the loader of the bundle, started once per program in the same way as the command does.
inline settings::core::FactorySettingsLoader& liveLoader()
{
    static const vx::tool::Host host(vx::tool::defaultBundleFile());
    return host.loader();
}

/// Returns a tree with several copies of the bundle's tree, each in a separate group.
inline vx::core::SettingsTree buildCopies(int copies)
{
    vx::core::SettingsTree tree("verdix");
    const Properties group(false, false, {}, {}, {}, false, false, {});
    for (int copy = 0; copy < copies; ++copy) {
        const std::string name = "copy" + std::to_string(copy);
        auto root = rootGroup(tree.root()->createFactorySetting(name, false, group), name);
        liveLoader().createTree(root);
    }
    return tree;
}

/// Returns all settings that have a factory value.
inline std::vector<const vx::core::Node*> settingsWithValue(const vx::core::SettingsTree& tree)
{
    std::vector<const vx::core::Node*> settings;
    for (const vx::core::Node* node : tree.nodes()) {
        if (node->kind() == vx::core::NodeKind::setting && node->properties().factoryValue.isAssigned()) {
            settings.push_back(node);
        }
    }
    return settings;
}

}  // namespace bench
