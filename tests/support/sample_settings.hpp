#pragma once

#include <settings_core/tree/settings_tree.hpp>

#include <settings/core/factory_settings_loader.hpp>

#include <string>
#include <vector>

namespace tests {

/// Provides a small tree with a setting of each class, constraint and kind of node, and a table of release
/// changes with moves and removals. Tests of what works on any tree use it, so that edits of the real tree do
/// not fail them. vx_sample_bundle offers it as a bundle.
class SampleSettings final : public settings::core::FactorySettingsLoader
{
public:
    [[nodiscard]] std::string getRootGroupName() const override { return "verdix"; }
    [[nodiscard]] bool queryFlag() override { return false; }
    void createTree(verdix::settings::FactoryGroup& root) override;
    void getReleaseChanges(settings::core::ReleaseChangeTable& changes) override;
    void getSettingPathList(std::vector<std::string>& paths) override;
};

/// The tree of SampleSettings.
[[nodiscard]] vx::core::SettingsTree sampleTree();

}  // namespace tests
