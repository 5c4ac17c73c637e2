// The verbs that work on settings files, as a person calls them.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <tests/tool/process.hpp>
#include <vector>

namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using tests::ToolRun;

struct SettingsFilesTest : testing::Test
{
    SettingsFilesTest()
    {
        std::string pattern = (fs::temp_directory_path() / "vxsettings_XXXXXX").string();
        folder = ::mkdtemp(pattern.data());
        personal = folder / "home" / "verdix" / "settings.json";
    }
    ~SettingsFilesTest() override { fs::remove_all(folder); }

    [[nodiscard]] ToolRun run(const std::vector<std::string>& arguments) const
    {
        return tests::runTool(
            arguments, {"XDG_CONFIG_HOME=" + (folder / "home").string(),
                        "XDG_CONFIG_DIRS=" + (folder / "none").string() + ":" + (folder / "site").string()});
    }

    static std::string contentOf(const fs::path& file)
    {
        std::ifstream stream(file);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    static void write(const fs::path& file, const std::string& text)
    {
        fs::create_directories(file.parent_path());
        std::ofstream(file) << text;
    }

    fs::path folder;
    fs::path personal;
};

TEST_F(SettingsFilesTest, ValuesGoThroughTheLayers)
{
    write(folder / "site" / "verdix" / "settings.json",
          "{\"settings\": {\"verdix.commandwindow.NumericFormat\": \"hex\", \"verdix.colors.KeywordColor\": "
          "1}}");
    EXPECT_EQ(run({"get", "commandwindow.NumericFormat"}).output, "hex\n");
    EXPECT_EQ(run({"set", "commandwindow.NumericFormat", "bank"}).exitCode, 0);
    EXPECT_EQ(run({"set", "commandwindow.WindowSize", "--json", "[100, 50]"}).exitCode, 0);
    EXPECT_EQ(run({"get", "commandwindow.NumericFormat"}).output, "bank\n");
    EXPECT_EQ(run({"get", "commandwindow.WindowSize"}).output, "[100 50]\n");

    const std::string described = run({"describe", "commandwindow.NumericFormat"}).output;
    for (const char* words : {"\"hex\", in ", "\"bank\", in ", "the personal value", "\"short\""}) {
        EXPECT_THAT(described, HasSubstr(words));
    }
    const ToolRun ignored = run({"get", "colors.KeywordColor"});
    EXPECT_EQ(ignored.exitCode, 0);
    EXPECT_THAT(ignored.errors, HasSubstr("settings.json:1:90: verdix.colors.KeywordColor"));

    const std::string modified = run({"list", "--modified"}).output;
    EXPECT_THAT(modified, testing::MatchesRegex("verdix.commandwindow.WindowSize +\\[100 50\\] +personal\n"
                                                "verdix.commandwindow.NumericFormat +\"bank\" +personal\n|"
                                                "verdix.commandwindow.NumericFormat +\"bank\" +personal\n"
                                                "verdix.commandwindow.WindowSize +\\[100 50\\] +personal\n"));
    EXPECT_THAT(run({"reset", "commandwindow"}).output, HasSubstr("2 settings reset"));
    EXPECT_EQ(run({"get", "commandwindow.NumericFormat"}).output, "hex\n");
    EXPECT_EQ(run({"reset"}).exitCode, 2);
}

TEST_F(SettingsFilesTest, RefusalsAndDamageEndInOneLine)
{
    const ToolRun refused = run({"set", "commandwindow.NumberOfLinesInScrollBuffer", "-5"});
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_THAT(refused.errors, HasSubstr("cannot be -5: must be from 1000 to 25000"));
    EXPECT_FALSE(fs::exists(personal));

    write(personal, "{\"settings\": {\n  \"verdix.commandwindow.WrapLines\": tru }}");
    const std::string damaged = contentOf(personal);
    for (const std::vector<std::string>& command :
         {std::vector<std::string>{"get", "commandwindow.WrapLines"},
          {"set", "commandwindow.WrapLines", "true"},
          {"reset", "--all"}})
    {
        const ToolRun run1 = run(command);
        EXPECT_EQ(run1.exitCode, 1);
        EXPECT_THAT(run1.errors, HasSubstr("settings.json:2:37: expected a value"));
        EXPECT_EQ(std::count(run1.errors.begin(), run1.errors.end(), '\n'), 1);
    }
    EXPECT_EQ(contentOf(personal), damaged);
    const ToolRun checked = run({"check"});
    EXPECT_EQ(checked.exitCode, 1);
    EXPECT_THAT(checked.output, HasSubstr("settings.json:2:37: expected a value"));
}

TEST_F(SettingsFilesTest, MigrationShowsFirstAndKeepsTheOldFile)
{
    const fs::path file = folder / "old.json";
    const std::string before = "{ \"release\": \"R2020b\", \"settings\": {\n"
                               "  \"verdix.commandwindow.EightyColumns\": \"yes\",\n"
                               "  \"verdix.desktop.help.SingleSource\": 1, \"verdix.Own\": 1 } }";
    write(file, before);
    const ToolRun shown = run({"migrate", file});
    EXPECT_EQ(shown.exitCode, 1) << "the value does not fit its new setting";
    for (const char* words :
         {"from R2020b to R2026a, 1 setting stays", "removed in R2026a",
          "to verdix.commandwindow.UseEightyColumnDisplayWidth", "expected true or false"})
    {
        EXPECT_THAT(shown.output, HasSubstr(words));
    }
    EXPECT_EQ(contentOf(file), before);

    write(folder / "old.json.R2020b.bak", "of before");
    EXPECT_THAT(run({"migrate", file, "--write"}).output, HasSubstr("old.json.R2020b.2.bak"));
    EXPECT_EQ(contentOf(folder / "old.json.R2020b.bak"), "of before");
    EXPECT_EQ(contentOf(folder / "old.json.R2020b.2.bak"), before);
    EXPECT_EQ(contentOf(file), "{ \"release\": \"R2026a\", \"settings\": {\n"
                               "  \"verdix.commandwindow.UseEightyColumnDisplayWidth\": \"yes\",\n"
                               "  \"verdix.Own\": 1 } }");
    EXPECT_THAT(run({"migrate", file, "--write"}).output, HasSubstr("nothing to do"));
    EXPECT_EQ(run({"migrate", file, "--to", "R2020b"}).exitCode, 1);
    EXPECT_EQ(run({"migrate", file, "--from", "yesterday"}).exitCode, 2);
}

}  // namespace
