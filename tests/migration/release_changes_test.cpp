#include <migration/release_changes.hpp>

#include <gtest/gtest.h>

namespace {

using namespace settings::verdix;
using settings::core::ReleaseChangeSet;
using settings::core::ReleaseChangeTable;

TEST(ReleaseChanges, CrossingIsDecidedByTheFirstSegmentAndStays)
{
    const struct
    {
        const char* from;
        const char* to;
        bool crosses;
    } cases[] = {{"verdix.a", "verdix.b.c", false},
                 {"verdix.a", "verdixx.a", true},
                 {"a", "b", true},
                 {"", "verdix.a", true}};
    for (const auto& [from, to, crosses] : cases) {
        ReleaseChangeSet set;
        addMove(set, from, to);
        EXPECT_EQ(set.crossesRootGroups, crosses) << from << " to " << to;
        addMove(set, "same.x", "same.y");
        addRemove(set, "elsewhere");
        EXPECT_EQ(set.crossesRootGroups, crosses) << from << " to " << to;
        EXPECT_EQ(set.changes.size(), 3U);
        EXPECT_TRUE(set.changes.back().to().empty());
    }
}

TEST(ReleaseChanges, FillingReplacesItsOwnEntriesAndNoOthers)
{
    ReleaseChangeTable table;
    fillReleaseChanges(table);
    const std::size_t releases = table.size();
    const std::size_t records = table.at(0).changes.size();
    table[0].crossesRootGroups = true;
    table[99].release = "mine";
    fillReleaseChanges(table);
    EXPECT_EQ(table.size(), releases + 1);
    EXPECT_EQ(table.at(0).changes.size(), records);
    EXPECT_FALSE(table.at(0).crossesRootGroups);
    EXPECT_EQ(table.at(99).release, "mine");
}

}  // namespace
