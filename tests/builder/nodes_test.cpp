#include <builder/factory_tree.hpp>

#include <gtest/gtest.h>

#include <tests/support/outside_core.hpp>

namespace {

using namespace verdix::settings;
using tests::OutsideCore;

TEST(FactoryTree, GroupsAndAliasesAreDescribedByWhatTheyAreGiven)
{
    OutsideCore core("verdix");
    FactoryGroup editor = addGroup(core.root, "editor");
    FactoryGroup tab = addGroup(editor, "tab", "Hidden", true);
    EXPECT_TRUE(core.at("verdix.editor.tab").properties.visible.isWritten());
    EXPECT_FALSE(core.at("verdix.editor").properties.visible.isWritten()) << "nothing was said of it";
    EXPECT_EQ(editor.groups.at("tab").settingsNode, tab.settingsNode);
    EXPECT_EQ(tab.treeContext, core.root.treeContext);
    EXPECT_EQ(fullName(tab), "verdix.editor.tab");

    addAlias(tab, "Size", "verdix.editor.Zoom");
    const auto& alias = core.at("verdix.editor.tab.Size").properties;
    EXPECT_EQ(alias.aliasName(), "verdix.editor.Zoom");
    EXPECT_FALSE(alias.visible.isWritten() || alias.readOnly.isWritten());
    EXPECT_FALSE(alias.factoryValue.isAssigned());
    EXPECT_EQ(alias.validator.index(), 0U);
}

TEST(FactoryTree, TheFirstNodeOfANameStaysInTheIndex)
{
    OutsideCore core("verdix");
    const auto first = addGroup(core.root, "x").settingsNode;
    const auto second = addGroup(core.root, "x").settingsNode;
    EXPECT_NE(first, second);
    EXPECT_EQ(core.root.groups.at("x").settingsNode, first);
}

TEST(FactoryTree, TheNameIsAskedForBeforeAnOptionIsApplied)
{
    OutsideCore core("verdix");
    core.refuseAt = 0;
    EXPECT_THROW(addSetting(core.root, "S", "Hidden", 1), tests::Refused);
    EXPECT_THROW(addGroup(core.root, "g", "Hidden", 1), tests::Refused);
}

}  // namespace
