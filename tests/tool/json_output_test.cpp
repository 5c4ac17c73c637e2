// What programs read of every command.

#include <boost/json/object.hpp>
#include <boost/json/parse.hpp>
#include <gtest/gtest.h>

#include <string>
#include <tests/support/files.hpp>
#include <tests/tool/process.hpp>
#include <vector>

namespace {

namespace json = boost::json;
using tests::runTool;

/// The tree of a release.
const std::string baseline = VX_SOURCE_DIR "/docs/baseline/R2026a.json";

struct JsonOutputTest : testing::Test
{
    /// The document that a command writes; it has to end as in text, and to say nothing else.
    [[nodiscard]] json::object run(std::vector<std::string> arguments, int exitCode = 0) const
    {
        const std::string layers[] = {"--personal", file, "--installation", folder / "none"};
        arguments.insert(arguments.end(), std::begin(layers), std::end(layers));
        arguments.insert(arguments.end(), {"--format", "json"});
        const auto done = runTool(arguments);
        EXPECT_EQ(done.exitCode, exitCode) << done.errors;
        return json::parse(done.output).as_object();
    }

    tests::TestFolder folder;
    std::string file = folder.with("settings.json", R"({ "release": "R2020b", "settings": {
  "verdix.commandwindow.NumericFormat": "hex",
  "verdix.commandwindow.EightyColumns": "yes" } })");
};

TEST_F(JsonOutputTest, IsOneDocumentOfEveryVerb)
{
    const struct
    {
        std::vector<std::string> arguments;
        int exitCode;
        std::string member;  ///< a list, and how many there have to be at least
        std::size_t entries;
    } cases[] = {
        {{}, 0, "areas", 40},
        {{"tree", "commandwindow", "--hidden"}, 0, "children", 10},
        {{"list", "commandwindow*"}, 0, "nodes", 10},
        {{"search", "wrap"}, 0, "matches", 2},
        {{"describe", "commandwindow.NumericFormat"}, 0, "layers", 2},
        {{"check"}, 1, "faults", 1},
        {{"migrate", file}, 1, "events", 1},
        {{"changes"}, 0, "releases", 6},
        {{"export"}, 0, "nodes", 1000},
        {{"diff", baseline, baseline}, 0, "differences", 0},
        {{"history", "--baseline", baseline, "--tree", baseline}, 0, "faults", 0},
        {{"lint"}, 0, "faults", 0},
        {{"doctor"}, 0, "findings", 15},
        {{"doctor", "--bundle", VX_PLAIN_LIBRARY}, 3, "findings", 3},
    };
    for (const auto& [arguments, exitCode, member, entries] : cases) {
        SCOPED_TRACE(arguments.empty() ? "no command" : arguments.front());
        const json::object document = run(arguments, exitCode);
        ASSERT_TRUE(document.contains(member));
        EXPECT_GE(document.at(member).as_array().size(), entries);
    }
}

TEST_F(JsonOutputTest, TellsWhatTheTextTells)
{
    const json::object got = run({"get", "commandwindow.NumericFormat"});
    EXPECT_EQ(got.at("value"), json::parse(R"({ "class": "char", "dims": [1, 3], "data": "hex" })"));
    EXPECT_EQ(got.at("source"), json::value(file));

    const json::value fault = run({"check"}, 1).at("faults").at(0);
    EXPECT_EQ(fault.at("line"), 3);
    EXPECT_EQ(fault.at("column"), 3);
    EXPECT_EQ(fault.at("path"), "verdix.commandwindow.EightyColumns");

    const json::object planned = run({"migrate", file}, 1);
    EXPECT_EQ(planned.at("events").at(0), json::parse(R"({ "release": "R2021a", "change": "moved",
        "path": "verdix.commandwindow.EightyColumns",
        "target": "verdix.commandwindow.UseEightyColumnDisplayWidth" })"));
    EXPECT_EQ(planned.at("isWritten"), false);
    EXPECT_EQ(run({"migrate", file, "--write"}, 1).at("backup"), "settings.json.R2020b.bak");

    EXPECT_EQ(run({"set", "colors.KeywordColor", "[1 2 3]"}).at("path"), "verdix.colors.KeywordColor");
    EXPECT_EQ(run({"get", "colors.KeywordColor", "commandwindow.NumericFormat"}).at("values").at(1), got);
    EXPECT_EQ(run({"reset", "colors"}).at("count"), 1);
}

}  // namespace
