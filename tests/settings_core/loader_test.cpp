#include <builder/factory_node.hpp>
#include <settings_core/settings_tree.hpp>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <tests/settings_core/new_setting.hpp>

namespace {

/// Builds one setting, checks the group it was given, and then fails if it is told to.
class Provider : public settings::core::FactorySettingsLoader
{
public:
    explicit Provider(bool fails) : fails_(fails) {}

    [[nodiscard]] std::string getRootGroupName() const override { return "root"; }
    [[nodiscard]] bool queryFlag() override { return false; }

    void createTree(verdix::settings::FactoryGroup& root) override
    {
        EXPECT_EQ(root.parentSettingsNode, nullptr);
        EXPECT_EQ(root.settingsNode->getFullName(), "root");
        EXPECT_EQ(root.name, "root");
        EXPECT_NE(root.treeContext, nullptr);
        root.settingsNode->createFactorySetting("First", true, tests::noProperties());
        if (fails_) {
            throw std::logic_error("in the middle");
        }
    }

    void getReleaseChanges(settings::core::ReleaseChangeTable& changes) override
    {
        changes[3].release = "R3";
    }
    void getSettingPathList(std::vector<std::string>& paths) override { paths.emplace_back("root.First"); }

private:
    bool fails_;
};

TEST(Loader, HandsTheProviderItsRootAndTakesItsLists)
{
    Provider provider(false);
    EXPECT_NE(vx::core::loadTree(provider).find("root.First"), nullptr);
    EXPECT_EQ(vx::core::loadReleaseChanges(provider).at(3).release, "R3");
    EXPECT_THAT(vx::core::loadSettingPathList(provider), testing::ElementsAre("root.First"));
    EXPECT_NO_THROW(provider.migrateData(u"/folder"));
}

TEST(Loader, AFailureLeavesTheNodesMadeUntilThen)
{
    Provider provider(true);
    vx::core::SettingsTree tree("root");
    EXPECT_THROW(vx::core::loadTree(provider, tree), std::logic_error);
    EXPECT_NE(tree.find("root.First"), nullptr);

    vx::core::SettingsTree other("other");
    EXPECT_THROW(vx::core::loadTree(provider, other), std::invalid_argument);
    EXPECT_TRUE(other.nodes().empty());
}

}  // namespace
