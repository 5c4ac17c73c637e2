#include <settings_core/tree/search.hpp>
#include <settings_core/tree/settings_tree.hpp>

#include <gtest/gtest.h>

#include <tests/settings_core/new_setting.hpp>

namespace {

using vx::core::MatchRank;

TEST(Search, RanksByWhereAWordStandsInThePath)
{
    vx::core::SettingsTree tree("root");
    tree.root()->createFactorySetting("LabelURLToHyperlink", true, tests::noProperties());
    tree.root()->createFactorySetting("snake_Case2", true, tests::noProperties());
    tree.root()->createFactorySetting("Spacing", true, tests::propertiesOf(tests::text("loose")));

    const struct
    {
        const char* word;
        const char* name;
        MatchRank rank;
    } cases[] = {
        {"labelURLtohyperlink", "LabelURLToHyperlink", MatchRank::exactPath},
        {"root.Spacing", "Spacing", MatchRank::exactPath},
        {"label", "LabelURLToHyperlink", MatchRank::prefix},
        {"url", "LabelURLToHyperlink", MatchRank::word},
        {"hyper", "LabelURLToHyperlink", MatchRank::substring},
        {"case2", "snake_Case2", MatchRank::word},
        {"LOOSE", "Spacing", MatchRank::value},
        {"Spacng", "Spacing", MatchRank::similar},
    };
    for (const auto& [word, name, rank] : cases) {
        const auto found = vx::core::search(tree, {word});
        ASSERT_EQ(found.size(), 1U) << word;
        EXPECT_EQ(found.front().node->name(), name) << word;
        EXPECT_EQ(rankName(found.front().rank), rankName(rank)) << word;
    }
}

}  // namespace
