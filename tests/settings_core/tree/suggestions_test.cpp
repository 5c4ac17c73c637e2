#include <settings_core/tree/suggestions.hpp>

#include <gmock/gmock.h>

#include <array>
#include <string>
#include <string_view>
#include <tests/support/sample_settings.hpp>

namespace {

using std::string_view_literals::operator""sv;
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
    EXPECT_THAT(suggestNames("describes", std::array{"describes a"sv, "DESCRIBES"sv}),
                ElementsAre("DESCRIBES"));
    EXPECT_THAT(suggestNames("xyz", names), IsEmpty());
    EXPECT_THAT(suggestNames("5", std::array{"+"sv}), IsEmpty());
    EXPECT_THAT(suggestNames(std::string(100000, 'x'), names), IsEmpty());
    EXPECT_EQ(vx::core::didYouMean(names), "did you mean summary, tree, list, describe, get or lint?");
}

TEST(Nearest, FindsPathsByWholeOrByLastComponent)
{
    const vx::core::SettingsTree tree = tests::sampleTree();
    EXPECT_THAT(suggestPaths("verdix.colors.Keywordcolor", tree),
                testing::Contains("verdix.colors.KeywordColor"));
    EXPECT_THAT(suggestPaths("commandwindow.", tree), ElementsAre("verdix.commandwindow"));
    EXPECT_THAT(suggestPaths("commandwindow.quit", tree), IsEmpty());
    EXPECT_EQ(suggestPaths("colrs.KeywordColor", tree).front(), "verdix.colors.KeywordColor");
    EXPECT_THAT(suggestPaths("Position", tree), ElementsAre("verdix.rule.position"));
    EXPECT_EQ(suggestPaths("verdix.ui.KeywordColor", tree).front(), "verdix.colors.KeywordColor");
}

}  // namespace
