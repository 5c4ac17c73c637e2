#pragma once

#include <settings_core/constraints/constraints.hpp>
#include <settings_core/diagnostic.hpp>
#include <settings_core/tree/settings_tree.hpp>

#include <optional>
#include <string>
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

inline std::string messageOf(const std::optional<vx::core::Diagnostic>& diagnostic)
{
    return diagnostic ? diagnostic->message : "";
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
