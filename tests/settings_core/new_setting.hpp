#pragma once

#include <settings_core/constraints/constraints.hpp>
#include <settings_core/constraints/validation.hpp>
#include <settings_core/diagnostic.hpp>
#include <settings_core/tree/settings_tree.hpp>

#include <gtest/gtest.h>

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

struct Verdicts
{
    std::vector<foundation::verdixdata::Array> accepted;
    std::vector<foundation::verdixdata::Array> refused;
};

inline void expectVerdicts(const std::string& what, const NewSetting& setting, const Verdicts& expected)
{
    for (std::size_t i = 0; i < expected.accepted.size(); ++i) {
        EXPECT_EQ(messagesOf(checkValue(*setting, expected.accepted[i])), "") << what << ", accepted " << i;
    }
    for (std::size_t i = 0; i < expected.refused.size(); ++i) {
        EXPECT_EQ(checkValue(*setting, expected.refused[i]).size(), 1U) << what << ", refused " << i;
    }
}

}  // namespace tests
