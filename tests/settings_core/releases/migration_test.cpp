#include <settings_core/diagnostic.hpp>
#include <settings_core/releases/migration.hpp>
#include <settings_core/tree/settings_tree.hpp>

#include <gmock/gmock.h>

#include <algorithm>
#include <fuzz/fuzzing.hpp>
#include <random>
#include <set>
#include <string>
#include <tests/support/sample_settings.hpp>
#include <vector>

namespace {

using settings::core::ReleaseChangeTable;
using vx::core::Migration;
using vx::core::MigrationEvent;
using vx::core::ReleaseName;
using vx::core::SettingsFile;

constexpr int rounds = 3000;

struct MigrationTest : testing::Test
{
    MigrationTest()
    {
        tests::SampleSettings().getReleaseChanges(table);
        for (const auto& [index, set] : table) {
            for (const auto& change : set.changes) {
                paths.insert(change.from().front());
                paths.insert(change.to().begin(), change.to().end());
            }
        }
        for (const char* group :
             {"verdix.keyboard.suggestions", "verdix.editor.suggestions", "verdix.commandwindow.suggestions"})
        {
            paths.insert({std::string(group) + ".Forgotten", std::string(group) + ".deep.Setting",
                          std::string(group) + "Not.Member"});
        }
        paths.insert({"verdix.Untouched", "verdix.commandwindow.NumericFormat", "verdix.class.int32",
                      "verdix.class.char", "verdix.class.cell", "verdix.class",
                      "verdix.commandwindow.alias"});
    }

    std::size_t below(std::size_t limit) { return bits() % limit; }

    /// Releases before, between, in and after those of the table but the last.
    ReleaseName anyRelease() { return {2019 + static_cast<int>(below(7)), below(2) == 0 ? 'a' : 'b'}; }

    std::string anyLocks()
    {
        std::vector<std::string> locked;
        std::sample(paths.begin(), paths.end(), std::back_inserter(locked), below(5), bits);
        std::string text;
        for (const std::string& path : locked) {
            const std::string& lock = below(2) == 0 ? path : path.substr(0, path.rfind('.'));
            text += (text.empty() ? "\"locked\": [\"" : ", \"") + lock + '"';
        }
        return text.empty() ? text : text + "], ";
    }

    /// A file that states about half of the paths, in any order and one of several styles.
    std::string anyFile(const std::string& release)
    {
        const std::string values[] = {"700", "1", "true", R"("off")", R"("12")", R"(["a"])"};
        const std::string gaps[] = {"", " ", "\n  ", "\r\n\t"};
        std::vector<std::string> stated;
        std::sample(paths.begin(), paths.end(), std::back_inserter(stated), below(paths.size()), bits);
        std::shuffle(stated.begin(), stated.end(), bits);
        const std::string gap = gaps[below(4)];
        std::string text = "{" + (release.empty() ? "" : "\"release\": \"" + release + "\",") + gap +
                           anyLocks() + "\"settings\":{";
        for (const std::string& path : stated) {
            text += (&path == stated.data() ? "" : ",") + gap + "\"" + path +
                    "\": " + values[below(std::size(values))];
        }
        return text + "}" + gap + "}";
    }

    Migration migrate(const std::string& text, std::optional<ReleaseName> to = std::nullopt)
    {
        return vx::core::migrateSettings(SettingsFile(text), tree, table, {.to = to});
    }

    const vx::core::SettingsTree tree = tests::sampleTree();
    ReleaseChangeTable table;
    std::set<std::string> paths;
    std::mt19937 bits{2026};
};

TEST_F(MigrationTest, LawsHoldForAnyFile)
{
    const std::string kept = "verdix.editor.suggestionsNot.Member";
    for (int round = 0; round < rounds; ++round) {
        const ReleaseName first = anyRelease();
        const ReleaseName between = std::max(first, anyRelease());
        const std::string text = anyFile(below(5) == 0 ? "" : formatReleaseName(first));
        const Migration direct = migrate(text);
        ASSERT_EQ(migrate(migrate(text, between).text).text, direct.text) << text;
        // The other laws, above all that it does what it reports and nothing else, end the process where they
        // do not hold.
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
        const SettingsFile before(text);
        ASSERT_EQ(direct.untouched, std::ranges::count_if(before.settings(), [&](const auto& setting) {
                      return std::ranges::find(direct.events, setting.name, &MigrationEvent::path) ==
                             direct.events.end();
                  }));
        const SettingsFile after(direct.text);
        ASSERT_EQ(after.find(kept) == nullptr, before.find(kept) == nullptr)
            << "its name begins as a group's";
    }
}

TEST_F(MigrationTest, ReportsMovesAndKeepsWhatTheTargetStates)
{
    const std::string source = "verdix.commandwindow.EightyColumns";
    const std::string target = "verdix.commandwindow.UseEightyColumnDisplayWidth";
    const auto text = [&](const std::string& settings) {
        return "{\"release\": \"R2020b\", \"settings\": {" + settings + "}}";
    };
    const Migration moved = migrate(text("\"" + source + "\": true"));
    const std::string newest = "{\"release\": \"" + formatReleaseName(moved.to) + "\", ";
    EXPECT_EQ(moved.text, newest + "\"settings\": {\"" + target + "\": true}}");
    const Migration kept = migrate(text("\"" + target + "\": false, \"" + source + "\": true"));
    EXPECT_EQ(kept.text, newest + "\"settings\": {\"" + target + "\": false}}");
    ASSERT_EQ(kept.events.size(), 1U);
    EXPECT_EQ(kept.events.front().kind, MigrationEvent::Kind::targetKept);
    EXPECT_EQ(kept.events.front().release, "R2021a");
    // As of its own release the file was right already.
    EXPECT_EQ(vx::core::migrateSettings(SettingsFile(text("\"" + source + "\": true")), tree, table,
                                        {.from = ReleaseName{2021, 'a'}})
                  .events.size(),
              0U);
    // The changes of a release apply from top to bottom.
    table.rbegin()->second.changes = {{"move", {"a"}, {"b"}}, {"move", {"b"}, {"c"}}};
    EXPECT_EQ(migrate(text("\"a\": 1")).text, newest + "\"settings\": {\"c\": 1}}");
}

TEST_F(MigrationTest, LocksFollowTheirSettings)
{
    table = {{0, {"R2020b", false, {{"move", {"v.a.x"}, {"v.b.x"}}, {"move", {"v.a.y"}, {"v.a.z"}}}}},
             {1, {"R2021a", false, {{"move", {"v.b.x"}, {"v.c.x"}}, {"remove", {"v.old"}, {}}}}}};
    const std::pair<std::string, std::string> cases[] = {
        {R"(["v.a"])", R"(["v.a", "v.c.x"])"},  // what leaves a locked group stays locked
        {R"([ "v.a.x",
 "v.old.y" , "v.d" ])",
         R"([ "v.c.x",
 "v.d" ])"},
        {R"(["v.a.x", "v.b.x"])", R"(["v.c.x"])"},
        {R"([ "v.old" ])", R"([  ])"},
        {R"(["v"])", R"(["v"])"}};
    for (const auto& [before, after] : cases) {
        const auto text = [](const std::string& release, const std::string& locked) {
            return "{\"release\": \"" + release + "\", \"locked\": " + locked +
                   ", \"settings\": {\"v.d\": 1}}";
        };
        const Migration migration = migrate(text("R2020a", before));
        EXPECT_EQ(migration.text, text("R2021a", after));
        EXPECT_EQ(migration.untouched, 1U);
    }
}

TEST_F(MigrationTest, ConvertsRejectedValuesWithoutLoss)
{
    struct
    {
        std::string path;
        std::string before;
        std::string after;  ///< empty if the value is kept and reported
    } const cases[] = {
        {"class.int32", "true", "1"},
        {"class.logical", "0.0", "false"},
        {"class.logical", "2", ""},
        {"class.logical", "-0", ""},
        {"class.char", "1.50", R"("1.5")"},
        {"class.char", "9007199254740993", R"("9007199254740993")"},
        {"class.char", "1e400", ""},
        {"class.int64", R"("9007199254740993")", "9007199254740993"},
        {"class.double", R"("9007199254740993")", ""},
        {"class.double", R"("1.50")", ""},
        {"class.double", R"(" 1")", ""},
        {"class.double", R"("[1]")", ""},
        {"class.char", "false", R"("false")"},
        {"class.logical", R"("true")", "true"},
        {"class.logical", R"("off")", "false"},
        {"class.logical", R"("yes")", ""},
        {"rule.switch", "true", R"("on")"},
        {"class.cell", R"("\u0061")", R"(["\u0061"])"},
        {"class.char", R"(["a"])", R"("a")"},
        {"class.char", R"(["a", "b"])", ""},
        {"class.row", "[true,\n false]", "[1, 0]"},
        {"class.row", "[true, 2]", ""},
        {"rule.list", R"("c")", ""},
        {"rule.range", "2000", ""},
        {"commandwindow.fixed", "true", ""},
    };
    for (const auto& [path, before, after] : cases) {
        const std::string start = R"({"settings": {"verdix.Own": {}, "verdix.)" + path + "\": ";
        const std::string end = R"( , "verdix.class.none": true}, "release": "R2099b"})";
        table.rbegin()->second.release = "R2099b";
        const std::string& kept = after.empty() ? before : after;
        const Migration migration = migrate(start + before + end);
        EXPECT_EQ(migration.text, start + kept + end);
        EXPECT_EQ(migration.events.size(), after.empty() ? 0U : 1U) << path << before;
        EXPECT_EQ(checkMigratedValues(migration, "", tree, table).empty(), !after.empty()) << before;
    }
    // The tree does not describe an older release.
    const Migration older = migrate(R"({"settings": {"verdix.class.int32": true}})", ReleaseName{2025, 'b'});
    EXPECT_TRUE(older.events.empty());
    const auto diagnostics = checkMigratedValues(older, "", tree, table);
    ASSERT_EQ(diagnostics.size(), 1U);
    EXPECT_TRUE(diagnostics.front().message.ends_with("converts it to 1"));
}

TEST_F(MigrationTest, RefusesWhatItCannotKnow)
{
    const std::string from2022 = "{\"release\": \"R2022a\"}";
    EXPECT_THROW((void)migrate("{\"release\": \"R2099b\"}"), std::runtime_error);
    EXPECT_THROW((void)migrate(from2022, ReleaseName{2020, 'b'}), std::runtime_error);
    EXPECT_THROW((void)migrate("{\"settings\": {\"a\": 1, \"a\": 2}}"), vx::core::ParseError);
}

TEST_F(MigrationTest, StopsAtThePublishedReleaseAndKeepsWhatIsBroughtBack)
{
    table[6] = {
        "R2026b", false, {{"move", {"verdix.A"}, {"verdix.B"}}, {"move", {"verdix.C"}, {"verdix.C"}}}};
    const std::string text = R"({"release": "R2026a", "settings": {"verdix.A": 1, "verdix.C": 2}})";
    const auto migrateTo = [&](std::optional<ReleaseName> to, ReleaseName published) {
        return vx::core::migrateSettings(SettingsFile(text), tree, table, {.to = to, .published = published});
    };
    EXPECT_EQ(migrateTo(std::nullopt, {2026, 'a'}).text, text);
    const Migration next = migrateTo(ReleaseName{2026, 'b'}, {2026, 'a'});
    EXPECT_EQ(next.text, R"({"release": "R2026b", "settings": {"verdix.B": 1, "verdix.C": 2}})");
    EXPECT_EQ(next.events.size(), 1U);
    EXPECT_EQ(formatReleaseName(migrateTo(std::nullopt, {2027, 'a'}).to), "R2027a") << "it has no changes";
}

TEST(ReleaseChanges, AreRefusedWhereTheyAreRead)
{
    struct Loader : settings::core::FactorySettingsLoader
    {
        [[nodiscard]] std::string getRootGroupName() const override { return "v"; }
        [[nodiscard]] bool queryFlag() override { return false; }
        void createTree(verdix::settings::FactoryGroup& /*root*/) override {}
        void getReleaseChanges(ReleaseChangeTable& changes) override
        {
            changes = {{3, {"R2021a", false, {{"move", {"a"}, {"a"}}, bad}}}};
        }
        void getSettingPathList(std::vector<std::string>& /*paths*/) override {}

        settings::core::SettingsFileChange bad{"", {}, {}};
    };
    const std::pair<settings::core::SettingsFileChange, std::string> cases[] = {
        {{"remove", {}, {}}, "it has no source"},
        {{"copy", {"a"}, {"b"}}, "its operation is \"copy\", neither move nor remove"},
        {{"move", {"a"}, {}}, "it is a move without a target"},
        {{"remove", {"a"}, {"b"}}, "it is a removal with a target"},
        {{"move", {"a", "b"}, {"c"}}, "it has more than one source"},
        {{"move", {"a"}, {"b", "c"}}, "it has more than one target"},
        {{"move", {"a"}, {""}}, "it has an empty path"}};
    for (const auto& [change, message] : cases) {
        Loader loader;
        loader.bad = change;
        EXPECT_THAT([&] { static_cast<void>(vx::core::loadReleaseChanges(loader)); },
                    testing::ThrowsMessage<std::invalid_argument>("release R2021a, change 2: " + message));
    }
}

}  // namespace
