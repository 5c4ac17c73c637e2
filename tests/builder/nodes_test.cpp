#include <builder/factory_tree.hpp>

#include <gtest/gtest.h>

#include <tests/support/outside_core.hpp>

namespace {

using namespace verdix::settings;
using tests::OutsideCore;

TEST(FactoryTree, NodesReachTheSettingsCoreInTheOrderOfTheCalls)
{
    OutsideCore core("verdix");
    FactoryGroup editor = addGroup(core.root, "editor");
    addSetting(editor, "Zoom", "FactoryValue", 1);
    FactoryGroup tab = addGroup(editor, "tab", "Hidden", true);
    addAlias(tab, "Size", "verdix.editor.Zoom");
    addSetting(editor, "Alpha");

    std::vector<std::pair<std::string, bool>> created;
    for (const auto& node : core.nodes) {
        created.emplace_back(node.path, node.isSetting);
    }
    const std::vector<std::pair<std::string, bool>> expected = {{"verdix.editor", false},
                                                                {"verdix.editor.Zoom", true},
                                                                {"verdix.editor.tab", false},
                                                                {"verdix.editor.tab.Size", true},
                                                                {"verdix.editor.Alpha", true}};
    EXPECT_EQ(created, expected);
    EXPECT_TRUE(core.at("verdix.editor.tab").properties.visible.isWritten());
    EXPECT_EQ(fullName(tab), "verdix.editor.tab");
    EXPECT_EQ(tab.treeContext, core.root.treeContext);

    const auto& alias = core.at("verdix.editor.tab.Size").properties;
    EXPECT_EQ(alias.aliasName(), "verdix.editor.Zoom");
    EXPECT_FALSE(alias.factoryValue.isAssigned());
    EXPECT_EQ(alias.validator.index(), 0U);

    EXPECT_TRUE(editor.settings.at("Zoom").isSetting());
    EXPECT_FALSE(editor.isSetting());
    EXPECT_EQ(editor.groups.at("tab").settingsNode, tab.settingsNode);
    EXPECT_EQ(core.root.groups.at("editor").settingsNode->getFullName(), "verdix.editor");
}

TEST(FactoryTree, TheFirstNodeOfANameStaysInTheIndex)
{
    OutsideCore core("verdix");
    const auto first = addGroup(core.root, "x").settingsNode;
    const auto second = addGroup(core.root, "x").settingsNode;
    EXPECT_NE(first, second);
    EXPECT_EQ(core.root.groups.at("x").settingsNode, first);
}

TEST(FactoryTree, CopiesShareTheNodeAndOwnTheirIndex)
{
    OutsideCore core("verdix");
    FactoryGroup group = addGroup(core.root, "group");
    FactoryGroup copy = group;
    addSetting(copy, "S");
    EXPECT_EQ(copy.settingsNode, group.settingsNode);
    EXPECT_EQ(copy.settings.size(), 1U);
    EXPECT_TRUE(group.settings.empty());
}

}  // namespace
