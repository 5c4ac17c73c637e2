// Changing many settings at once, and the files that the changes go to.

#include <boost/algorithm/string/replace.hpp>
#include <boost/json/parse.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <string>
#include <sys/stat.h>
#include <tests/support/files.hpp>
#include <tests/tool/sample_run.hpp>
#include <vector>

namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using tests::FailsInOneLine;
using tests::readFile;
using tests::ToolRun;
using tests::writeFile;

struct SettingsChangesTest : testing::Test
{
    [[nodiscard]] ToolRun run(const std::vector<std::string>& arguments,
                              const std::string& home = "home") const
    {
        return tests::runOnSample(arguments, {"XDG_CONFIG_HOME=" + (folder / home).string(),
                                              "XDG_CONFIG_DIRS=" + (folder / "first").string() + ":" +
                                                  (folder / "second").string()});
    }

    /// As run, with this standard input.
    [[nodiscard]] ToolRun runWith(const std::string& input, const std::vector<std::string>& arguments) const
    {
        EXPECT_NE(std::freopen(folder.with("input", input).c_str(), "r", stdin), nullptr);
        return run(arguments);
    }

    tests::TestFolder folder;
    fs::path personal = folder / "home/verdix/settings.json";
    fs::path first = folder / "first/verdix/settings.json";
    fs::path second = folder / "second/verdix/settings.json";
};

TEST_F(SettingsChangesTest, AreMadeTogetherOrNotAtAll)
{
    const std::string before = "{ \"settings\": { \"verdix.rule.words\":\"long\", \"own\" : 1 } }";
    writeFile(personal, before);
    writeFile(first, R"({"locked": ["verdix.web"]})");
    const ToolRun bad =
        runWith("# wrong\n\ncolors.KeywordColr = 1\n  WrapLines\r\nalias.First = long\nrule.words = short"
                "\ncommandwindow.fixed = 2\nweb.AccessToken = sesame\ncolors.KeywordColor =  [1 2; 3\n",
                {"set", "--stdin"});
    EXPECT_EQ(bad.exitCode, 1);
    EXPECT_EQ(bad.output, "");
    const std::string expected[] = {
        ":3:1: no such path: colors.KeywordColr; did you mean",
        ":4:3: expected PATH = VALUE\n",
        ":6:1: verdix.rule.words: is changed twice, first as alias.First in line 5",
        ":7:1: verdix.commandwindow.fixed: is read-only",
        ":8:1: verdix.web.AccessToken: cannot be changed: verdix.web is locked by " + first.string() +
            "; ask the administrator",
        ":9:31: verdix.colors.KeywordColor: expected whitespace"};
    std::size_t at = 0;
    for (const std::string& line : expected) {
        at = bad.errors.find("standard input" + line, at);
        ASSERT_NE(at, std::string::npos) << line << bad.errors;
    }
    EXPECT_THAT(bad.errors, AllOf(HasSubstr("nothing is changed: 6 errors\n"), Not(HasSubstr("sesame"))));
    EXPECT_THAT(
        runWith("{\"colors.CommentColor\": [1, 2,\n 300]}", {"set", "--stdin", "--json-value"}),
        FailsInOneLine(1, HasSubstr("input:1:25: verdix.colors.CommentColor: [1 2 300] is not allowed")));
    EXPECT_THAT(runWith("{\"colors.CommentColor\": [1, 2,\n \"x\"]}", {"set", "--stdin", "--json-value"}),
                FailsInOneLine(1, HasSubstr("input:2:2: verdix.colors.CommentColor: ")));
    EXPECT_EQ(readFile(personal), before);

    const std::string good =
        "rule.words=long\r\nUserPath = \" a=b \"\nconnector.InterfacesBlocklist = {\"a\"}";
    const ToolRun shown = runWith(good, {"set", "--stdin", "--dry-run"});
    EXPECT_EQ(readFile(personal), before);
    EXPECT_EQ(run({"undo", "--list"}).output, "");
    const ToolRun made = runWith(good, {"set", "--stdin"});
    EXPECT_EQ(made.output + "dry run, nothing written\n", shown.output);
    EXPECT_EQ(made.output, "verdix.UserPath: \"$documents\\VERDIX\" (factory) -> \" a=b \" (personal)\n"
                           "verdix.connector.InterfacesBlocklist: {} (factory) -> {\"a\"} (personal)\n"
                           "2 settings set in " +
                               personal.string() + ", 1 unchanged\n");
    EXPECT_EQ(readFile(personal),
              "{ \"settings\": { \"verdix.rule.words\":\"long\", \"own\" : 1, "
              "\"verdix.UserPath\" : \" a=b \", \"verdix.connector.InterfacesBlocklist\" : [\"a\"] } }");
    EXPECT_EQ(run({"undo"}).exitCode, 0);
    EXPECT_EQ(readFile(personal), before);
}

TEST_F(SettingsChangesTest, MoveToAnotherHome)
{
    writeFile(second, R"({"settings": {"verdix.class.row": [1, -2], "verdix.rule.words": "long"}})");
    writeFile(personal, R"({"settings": {"verdix.web.AccessToken": "sesame", "verdix.rule.words": "short",
        "verdix.class.matrix": [["NaN", 1, 2], [3, 4, "-Inf"]], "verdix.class.none": [["NaN"]],
        "verdix.class.logical": 7}})");
    const std::string exported = folder / "exported.json";
    EXPECT_THAT(run({"export", "--modified", "-o", exported}).errors, HasSubstr("1 secret left out"));
    EXPECT_THAT(readFile(exported), AllOf(HasSubstr(R"("release": "R2026a")"), Not(HasSubstr("sesame"))));
    const std::string withSecrets = folder / "secret.json";
    EXPECT_EQ(run({"export", "--modified", "--secrets", "-o", withSecrets}).errors, "");
    EXPECT_EQ(fs::status(withSecrets).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(run({"export", "--modified", "--format", "csv"}).exitCode, 2);

    const auto effective = [this](const std::string& home) {
        return run({"export", "--modified"}, home).output;
    };
    EXPECT_EQ(run({"import", exported, "--dry-run"}, "new").exitCode, 0);
    EXPECT_FALSE(fs::exists(folder / "new"));
    EXPECT_THAT(run({"import", exported, "--installation", folder / "none"}, "new").output,
                HasSubstr("\n3 settings imported into "));
    fs::remove(second);
    EXPECT_EQ(effective("new"), readFile(exported));
    EXPECT_THAT(run({"import", withSecrets}, "new").output, HasSubstr("\n1 setting imported into "));
}

TEST_F(SettingsChangesTest, ComeFromFilesOfOlderReleases)
{
    const std::string file = folder.with("old.json", R"({ "release": "R2020b", "settings": {
  "verdix.findfiles.GoToFileEnabled": true,
  "verdix.commandwindow.EightyColumns": "no", "verdix.UserPath": "a" } })");
    EXPECT_THAT(
        run({"import", file}),
        FailsInOneLine(1, HasSubstr("old.json:3:41: verdix.commandwindow.UseEightyColumnDisplayWidth")));
    EXPECT_FALSE(fs::exists(personal));
    writeFile(file, boost::algorithm::replace_first_copy(readFile(file), "\"no\"", "true"));
    EXPECT_THAT(run({"import", file}).output,
                AllOf(testing::ContainsRegex("R2021a +dropped +verdix.findfiles.GoToFileEnabled +removed in"),
                      HasSubstr("UseEightyColumnDisplayWidth: false (factory) -> true (personal)\n")));
    EXPECT_THAT(readFile(personal), HasSubstr(R"("release": "R2026a")"));
}

TEST_F(SettingsChangesTest, GoToTheInstallationAndObeyItsLocks)
{
    const mode_t usual = ::umask(022);
    EXPECT_EQ(run({"set", "commandwindow.WrapLines", "true", "--scope", "installation"}).errors, "");
    ::umask(usual);
    EXPECT_EQ(static_cast<unsigned>(fs::status(first).permissions()), 0644U);
    EXPECT_EQ(static_cast<unsigned>(fs::status(first.parent_path()).permissions()), 0755U);
    EXPECT_EQ(run({"undo", "--scope", "installation"}).exitCode, 0);
    EXPECT_FALSE(fs::exists(first));

    writeFile(second,
              R"({"locked": ["verdix.colors.CommentColor", "verdix.commandwindow"], "settings": {}})");
    writeFile(
        personal,
        R"({"settings": {"verdix.colors.CommentColor": [1, 2, 3], "verdix.colors.KeywordColor": [1, 2, 3],
        "verdix.commandwindow.WrapLines": true}})");
    const std::string before = readFile(personal);
    for (const char* path : {"commandwindow", "commandwindow.WrapLines", "colors.CommentColor"}) {
        EXPECT_THAT(run({"reset", path}), FailsInOneLine(1, HasSubstr(" locked by " + second.string())));
    }
    EXPECT_EQ(readFile(personal), before);
    EXPECT_EQ(run({"reset", "--all"}).output,
              "verdix.colors.KeywordColor: [1 2 3] (personal) -> [14 0 255] (factory)\n"
              "1 setting reset in " +
                  personal.string() + "; 2 locked settings left\n");

    EXPECT_EQ(run({"set", "commandwindow.WrapLines", "true", "--scope", "installation"}).errors, "")
        << "what locks does not lock itself";
    EXPECT_THAT(run({"set", "commandwindow.WrapLines", "false", "--scope", "installation", "--installation",
                     first, "--installation", second}),
                testing::Field(&ToolRun::exitCode, 0))
        << "the second is the first that exists";
    writeFile(first, "{}");
    EXPECT_THAT(run({"set", "commandwindow.WrapLines", "true", "--scope", "installation"}),
                FailsInOneLine(1, HasSubstr("verdix.commandwindow is locked by " + second.string())));
    writeFile(personal, R"({"settings": {"verdix.UserPath": "mine"}})");
    const ToolRun overridden = run({"set", "UserPath", "ours", "--scope", "installation"});
    EXPECT_THAT(overridden.output,
                HasSubstr(": \"mine\" (personal) -> \"mine\" (personal), in " + first.string()));
    EXPECT_THAT(overridden.errors, HasSubstr("has no effect, as " + personal.string() + " overrides it"));
}

}  // namespace
