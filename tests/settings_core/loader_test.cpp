#include <builder/factory_node.hpp>
#include <settings_core/settings_tree.hpp>

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

/// Checks the group it was given.
class Provider : public settings::core::FactorySettingsLoader
{
public:
    [[nodiscard]] std::string getRootGroupName() const override { return "root"; }
    [[nodiscard]] bool queryFlag() override { return false; }

    void createTree(verdix::settings::FactoryGroup& root) override
    {
        EXPECT_EQ(root.parentSettingsNode, nullptr);
        EXPECT_EQ(root.settingsNode->getFullName(), "root");
        EXPECT_EQ(root.name, "root");
        EXPECT_NE(root.treeContext, nullptr);
    }

    void getReleaseChanges(settings::core::ReleaseChangeTable& /*changes*/) override {}
    void getSettingPathList(std::vector<std::string>& /*paths*/) override {}
};

TEST(Loader, HandsTheProviderItsOwnRootAndNoOther)
{
    Provider provider;
    vx::core::SettingsTree tree("root");
    EXPECT_NO_THROW(vx::core::loadTree(provider, tree));
    vx::core::SettingsTree other("other");
    EXPECT_THROW(vx::core::loadTree(provider, other), std::invalid_argument);
    EXPECT_NO_THROW(provider.migrateData(u"/folder"));
}

}  // namespace
