#pragma once

#include <settings_core/settings_tree.hpp>

#include <tests/support/values.hpp>

namespace tests {

using Properties = vx::core::Node::Properties;

inline Properties noProperties()
{
    return {false, false, {}, {}, {}, false, false, {}};
}

/// A tree "root" with the one setting "root.Setting".
struct NewSetting
{
    explicit NewSetting(const Properties& properties) : tree("root")
    {
        tree.root()->createFactorySetting("Setting", true, properties);
    }

    [[nodiscard]] const vx::core::Node& operator*() const { return *tree.find("root.Setting"); }

    vx::core::SettingsTree tree;
};

}  // namespace tests
