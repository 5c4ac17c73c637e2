#include <settings_core/tree/suggestions.hpp>

#include <gmock/gmock.h>

#include <string>
#include <tests/support/sample_settings.hpp>

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
    const vx::core::SettingsTree tree = tests::sampleTree();
    EXPECT_THAT(suggestPaths("verdix.colors.Keywordcolor", tree),
                testing::Contains("verdix.colors.KeywordColor"));
    EXPECT_EQ(suggestPaths("colrs.KeywordColor", tree).front(), "verdix.colors.KeywordColor");
    EXPECT_THAT(suggestPaths("Position", tree), ElementsAre("verdix.rule.position"));
    EXPECT_EQ(suggestPaths("verdix.ui.KeywordColor", tree).front(), "verdix.colors.KeywordColor");
}

}  // namespace
