// The commands that work on settings files, as users run them.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <tests/support/files.hpp>
#include <tests/tool/process.hpp>
#include <vector>

namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using tests::FailsInOneLine;
using tests::readFile;
using tests::ToolRun;
using tests::writeFile;

struct SettingsFilesTest : testing::Test
{
    [[nodiscard]] ToolRun run(const std::vector<std::string>& arguments) const
    {
        return tests::runTool(
            arguments, {"XDG_CONFIG_HOME=" + (folder / "home").string(),
                        "XDG_CONFIG_DIRS=" + (folder / "none").string() + ":" + (folder / "site").string()});
    }

    tests::TestFolder folder;
    fs::path personal = folder / "home/verdix/settings.json";
};

TEST_F(SettingsFilesTest, ValuesGoThroughTheLayers)
{
    writeFile(folder / "site/verdix/settings.json",
              R"({"settings": {"verdix.commandwindow.NumericFormat": "hex"}})");
    const std::string other = folder / "other.json";
    EXPECT_EQ(run({"set", "commandwindow.NumericFormat", "longG", "--personal", other}).exitCode, 0);
    EXPECT_EQ(run({"get", "commandwindow.NumericFormat"}).output, "hex\n");
    EXPECT_EQ(run({"get", "commandwindow.NumericFormat", "--installation", other}).output, "longG\n");
    EXPECT_EQ(run({"set", "commandwindow.WrapLines", "false"}).exitCode, 0);  // the factory value
    EXPECT_EQ(run({"set", "UserPath", "--json", R"("a\nb")"}).exitCode, 0);
    EXPECT_EQ(run({"get", "UserPath"}).output, "a\nb\n");
    EXPECT_EQ(run({"get", "UserPath", "commandwindow.WindowSize"}).output, "a\\nb\n[180 45]\n");
    const std::string modified = run({"list", "--modified"}).output;
    EXPECT_THAT(modified, testing::ContainsRegex("verdix.UserPath +\"a.nb\" +personal\n"));
    EXPECT_EQ(std::ranges::count(modified, '\n'), 2);
}

TEST_F(SettingsFilesTest, RefusalsAndDamageEndInOneLine)
{
    EXPECT_THAT(run({"set", "commandwindow.NumberOfLinesInScrollBuffer", "-5"}),
                FailsInOneLine(1, HasSubstr("cannot be -5: must be from 1000 to 25000")));
    EXPECT_THAT(run({"reset", "--all"}).output, testing::StartsWith("0 settings reset in "));
    EXPECT_EQ(run({"reset"}).exitCode, 2);
    EXPECT_FALSE(fs::exists(personal));

    const std::string damaged = "{\"settings\": {\n  \"verdix.commandwindow.WrapLines\": tru }}";
    writeFile(personal, damaged);
    EXPECT_THAT(run({"set", "commandwindow.WrapLines", "true"}),
                FailsInOneLine(1, HasSubstr("settings.json:2:37: expected a value")));
    EXPECT_EQ(readFile(personal), damaged);
}

TEST_F(SettingsFilesTest, MigrationShowsFirstAndKeepsTheOldFile)
{
    const fs::path file = folder / "old.json";
    const std::string before =
        R"({"release": "R2020b", "settings": {"verdix.commandwindow.EightyColumns": "yes",
        "verdix.desktop.help.SingleSource": 1, "verdix.Own": 1}})";
    writeFile(file, before);
    const ToolRun shown = run({"migrate", file});
    EXPECT_EQ(shown.exitCode, 1) << "the value does not fit its new setting";
    EXPECT_THAT(shown.output, testing::ContainsRegex("from R2020b to R[0-9]+[ab], 1 setting unchanged\n"));
    EXPECT_THAT(shown.output, testing::ContainsRegex("moves +verdix.commandwindow.EightyColumns +to verdix"));
    EXPECT_THAT(shown.output, HasSubstr("expected true or false"));
    EXPECT_EQ(readFile(file), before);

    // Values are converted in a file that is migrated to the newest release, which may be in preparation.
    const std::string newer = run({"migrate", file, "--to", "R9999b"}).errors;
    const std::string newest = newer.substr(newer.rfind('R'), 6);
    writeFile(folder / "list.json", "{\"settings\": {\"verdix.commandwindow.WrapLines\": [\n0]}}");
    EXPECT_THAT(run({"migrate", folder / "list.json", "--to", newest}).output,
                HasSubstr("  " + newest + "  converts  verdix.commandwindow.WrapLines  [0] to [false]\n"));

    writeFile(folder / "old.json.R2020b.bak", "of before");
    EXPECT_THAT(run({"migrate", file, "--write"}).output, HasSubstr("old.json.R2020b.2.bak"));
    EXPECT_EQ(readFile(folder / "old.json.R2020b.bak"), "of before");
    EXPECT_EQ(readFile(folder / "old.json.R2020b.2.bak"), before);
    const ToolRun again = run({"migrate", file});
    EXPECT_THAT(again.output, HasSubstr("old.json\nnothing changed: only the invalid"));
    EXPECT_EQ(again.exitCode, 1) << "a value is still ignored";
    EXPECT_EQ(run({"set", "commandwindow.UseEightyColumnDisplayWidth", "true", "--personal", file}).exitCode,
              0);
    EXPECT_THAT(run({"migrate", file}).output, HasSubstr("nothing to do"));
    EXPECT_EQ(run({"migrate", file, "--from", "yesterday"}).exitCode, 2);
}

}  // namespace
