// What programs read of every command.

#include <boost/json/parse.hpp>
#include <gmock/gmock.h>

#include <string>
#include <tests/support/files.hpp>
#include <tests/tool/sample_run.hpp>
#include <vector>

namespace {

TEST(JsonOutput, IsOneDocumentThatTellsWhatTheTextTells)
{
    const tests::TestFolder folder;
    const std::string file = folder / "verdix/settings.json";
    tests::writeFile(file, R"({ "release": "R2020b", "settings": {
  "verdix.commandwindow.NumericFormat": "hex",
  "verdix.commandwindow.EightyColumns": "yes",
  "verdix.commandwindow.NumberOfLinesInScrollBuffer": "5000",
  "verdix.commandwindow.WrapLines": 7 } })");
    const std::string listed = folder.with("listed", "verdix.UserPath  default  x\n");
    const std::string imported = folder.with("imported.json", R"({ "release": "R2025a", "settings": {
  "verdix.connector.InterfacesBlacklist": ["a"], "verdix.commandwindow.NumericFormat": "hex" } })");
    const std::string baseline = folder / "baseline.json";
    ASSERT_EQ(tests::runOnSample({"export", "--format", "json", "-o", baseline}).exitCode, 0);
    const std::string format = "commandwindow.NumericFormat";
    const std::string hex =
        R"("value": { "class": "char", "dims": [1, 3], "data": "hex" }, "origin": "personal", "file": ")" +
        file;
    struct Case
    {
        std::vector<std::string> arguments;
        std::vector<std::string> fragments;  ///< of the document
        int exitCode = 0;                    ///< as with text
    };
    const Case cases[] = {
        {{}, {R"x("(directly in verdix)", "groups": 0, "settings": 2, "aliases": 1)x", R"("hidden": 23 })"}},
        {{"tree", "qorv"}, {R"("aliasTarget": "qorv")"}},
        {{"list", "--modified"}, {"\"node\": \"setting\", " + hex + "\", \"lockedBy\": null }"}},
        {{"search", "wrapl"}, {R"("node": "setting", "rank": "prefix", "value": { "class": "logical")"}},
        {{"tree", "--depth", "1"}, {"\"hiddenLeftOut\": 2\n"}},
        {{"list", "commandw*"}, {"\"hiddenLeftOut\": 1\n"}},
        {{"describe", "commandwindow.WrapLines"},
         {R"("file": null, "isValid": true)", R"(json", "isValid": false, "diagnostics": [")",
          R"("readOnly": null)"}},
        {{"describe", "suggestions.ShowTips"}, {R"(suggestions.ShowTips", "release": "R2025b" })"}},
        {{"describe", "commandwindow.WindowSize"}, {R"("accepts": "2 whole numbers from 1 to 1000")"}},
        {{"check"},
         {R"("exists": true)", R"({ "line": 3, "column": 3, "path": "verdix.commandwindow.EightyColumns", )",
          R"("message": "7 is not allowed: must be true or false")"},
         1},
        {{"check", "--personal", folder / "none"}, {R"("exists": false)"}},
        {{"changes"}, {R"("index": 3, "release": "R2025b")"}},
        {{"export"}, {R"("path": "verdix.commandwindow.WrapLines", "node": "setting")"}},
        {{"diff", baseline, baseline}, {R"("differences": [])"}},
        {{"history", "--baseline", baseline, "--changed-settings", listed},
         {R"("line": 1, "path": "verdix.UserPath", "message": "default is listed but)"},
         1},
        {{"lint"},
         {R"("file": "tree/root.cpp", "line": 0, "path": "verdix.class.none", "message": "it has)"},
         1},
        {{"doctor"},
         {R"("isWell": false)", R"("text": "unset", "isGood": null })", R"(webui", "text": "off")",
          R"("text": "R2020b, 4 settings, 3 errors; see vxsettings check )"},
         1},
        {{"set", "colors.KeywordColor", "[1 2 3]"},
         {R"("before": { "value": { "class": "int32", "dims": [1, 3], "data": [14, 0, 255] }, "origin": "factory", "file": null })",
          R"("data": [1, 2, 3] }, "origin": "personal", "file": ")" + file, R"("isWritten": true)"}},
        {{"import", imported, "--dry-run"},
         {R"("change": "moved", "path": "verdix.connector.InterfacesBlacklist", )", R"("isWritten": false)",
          R"("changes": [
    { "path": "verdix.connector.InterfacesBlocklist", "before")",
          R"("unchanged": 1)"}},
        {{"get", "colors.KeywordColor", format}, {"{ \"path\": \"verdix." + format + "\", " + hex}},
        {{"reset", "colors"}, {R"("count": 1)", R"("unknownLeft": 0)", R"("lockedLeft": 0)"}},
        {{"undo", "--list"},
         {R"({ "number": 2, "time": "2)", R"(Z", "command": "set colors.KeywordColor" })"}},
        {{"undo"},
         {R"("command": "reset colors")", R"("isRemoved": false)",
          R"({ "path": "verdix.colors.KeywordColor", "before": null, "after": "[1, 2, 3]" })"}},
        {{"undo"}, {R"("before": "[1, 2, 3]", "after": null })"}},
        {{"migrate", file},
         {R"("untouched": 2)", R"("line": 3, "column": 55, "path": "verdix.commandwindow.UseEightyC)",
          R"("change": "moved", "path": "verdix.commandwindow.EightyColumns", "target": "verdix.commandwindow.UseE)",
          R"("change": "converted", "path": "verdix.commandwindow.NumberOfLinesInScrollBuffer", "target": null, )",
          R"("before": "\"5000\"", "after": "5000" })", R"({ "release": "R2021a", )", R"("isChange": true)",
          R"("isWritten": false)"},
         1},
        {{"migrate", file, "--write"}, {R"("backup": "settings.json.R2020b.bak")"}, 1},
    };
    for (const auto& [given, fragments, exitCode] : cases) {
        std::vector<std::string> arguments{"--json"};
        arguments.insert(arguments.end(), given.begin(), given.end());
        const auto run = tests::runOnSample(
            arguments, {"XDG_CONFIG_HOME=" + (folder / "").string(), "XDG_CONFIG_DIRS=/none"});
        EXPECT_EQ(run.exitCode, exitCode) << run.errors;
        EXPECT_NO_THROW(boost::json::parse(run.output)) << run.output;
        for (const std::string& fragment : fragments) {
            EXPECT_THAT(run.output, testing::HasSubstr(fragment));
        }
    }
}

}  // namespace
