#pragma once

#include <settings_core/constraints/constraints.hpp>
#include <settings_core/diagnostic.hpp>
#include <settings_core/tree/settings_tree.hpp>

#include <tests/support/values.hpp>

namespace tests {

using Properties = vx::core::Node::Properties;

/// A setting that says no more than this.
inline Properties propertiesOf(foundation::verdixdata::Array factoryValue,
                               settings::core::Validator validator = {},
                               std::vector<vx::core::ValueValidator> records = {})
{
    return {false, false, std::move(factoryValue), std::move(validator), {},
            false, false, std::move(records)};
}

inline Properties noProperties()
{
    return propertiesOf({});
}

/// The messages, one per line.
inline std::string messagesOf(const std::vector<vx::core::Diagnostic>& diagnostics)
{
    std::string lines;
    for (const vx::core::Diagnostic& diagnostic : diagnostics) {
        lines += (lines.empty() ? "" : "\n") + diagnostic.message;
    }
    return lines;
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
