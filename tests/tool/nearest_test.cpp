#include <settings_core/nearest.hpp>
#include <settings_core/settings_tree.hpp>

#include <gmock/gmock.h>

#include <string>
#include <tests/settings_core/new_setting.hpp>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using vx::core::nearestNames;
using vx::core::nearestPaths;

TEST(Nearest, FindsNamesByTheLettersThatDiffer)
{
    const std::string_view names[] = {"summary", "tree", "list", "describe", "get", "lint"};
    EXPECT_THAT(nearestNames("tere", names), ElementsAre("tree"));  // neighbours swapped
    EXPECT_THAT(nearestNames("TREE", names), ElementsAre("tree"));  // case does not matter
    EXPECT_THAT(nearestNames("lst", names), ElementsAre("list"));   // one missing
    EXPECT_THAT(nearestNames("lisnt", names), ElementsAre("list", "lint"));
    EXPECT_THAT(nearestNames("xyz", names), IsEmpty());
    EXPECT_THAT(nearestNames(std::string(100000, 'x'), names), IsEmpty());
    EXPECT_EQ(vx::core::didYouMean(names), "did you mean summary, tree, list, describe, get or lint?");
}

TEST(Nearest, FindsPathsByWholeOrByLastComponent)
{
    const vx::core::SettingsTree tree("root");
    const auto none = tests::noProperties();
    for (const char* group : {"editor", "desktop"}) {
        const auto node = tree.root()->createFactorySetting(group, false, none);
        node->createFactorySetting("FontSize", true, none);
        node->createFactorySetting(std::string(group) + "Only", true, none);
    }
    EXPECT_THAT(nearestPaths("root.editor.Fontsize", tree), testing::Contains("root.editor.FontSize"));
    EXPECT_EQ(nearestPaths("editr.FontSize", tree).front(), "root.editor.FontSize");
    EXPECT_THAT(nearestPaths("FontSize", tree), ElementsAre("root.editor.FontSize", "root.desktop.FontSize"));
    EXPECT_EQ(nearestPaths("root.desktop.editorOnly", tree).front(), "root.editor.editorOnly");
}

}  // namespace
