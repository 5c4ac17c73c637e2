#include <settings_core/tree/settings_tree.hpp>
#include <settings_core/tree/suggestions.hpp>

#include <gmock/gmock.h>

#include <string>
#include <tests/settings_core/new_setting.hpp>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using vx::core::suggestNames;
using vx::core::suggestPaths;

TEST(Nearest, FindsNamesByTheLettersThatDiffer)
{
    const std::string_view names[] = {"summary", "tree", "list", "describe", "get", "lint"};
    EXPECT_THAT(suggestNames("tere", names), ElementsAre("tree"));  // neighbours swapped
    EXPECT_THAT(suggestNames("TREE", names), ElementsAre("tree"));  // case does not matter
    EXPECT_THAT(suggestNames("lst", names), ElementsAre("list"));   // one missing
    EXPECT_THAT(suggestNames("lisnt", names), ElementsAre("list", "lint"));
    EXPECT_THAT(suggestNames("xyz", names), IsEmpty());
    EXPECT_THAT(suggestNames(std::string(100000, 'x'), names), IsEmpty());
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
    EXPECT_THAT(suggestPaths("root.editor.Fontsize", tree), testing::Contains("root.editor.FontSize"));
    EXPECT_EQ(suggestPaths("editr.FontSize", tree).front(), "root.editor.FontSize");
    EXPECT_THAT(suggestPaths("FontSize", tree), ElementsAre("root.editor.FontSize", "root.desktop.FontSize"));
    EXPECT_EQ(suggestPaths("root.desktop.editorOnly", tree).front(), "root.editor.editorOnly");
}

}  // namespace
