// Effective values, their origins and locks, as the commands show them.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <sys/stat.h>
#include <tests/support/files.hpp>
#include <tests/tool/sample_run.hpp>
#include <vector>

namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using tests::writeFile;

struct EffectiveValuesTest : testing::Test
{
    EffectiveValuesTest()
    {
        writeFile(first, R"({"release": "R2026a", "settings": {"verdix.class.char": "site"}})");
        writeFile(second, R"({"locked": ["verdix.class", "verdix.web.NeedsToken"],
                              "settings": {"verdix.class.int32": 7, "verdix.class.char": "other"}})");
        writeFile(personal, R"({"release": "R2020b", "settings": {
            "verdix.class.int32": 9, "verdix.commandwindow.WrapLines": true, "verdix.web.AccessToken": "s3cret",
            "verdix.commandwindow.NumericFormat": "lnog", "verdix.commandwindow.EightyColumns": true,
            "verdix.suggestions.ShowTips": true, "other.plugin": 1}})");
    }

    [[nodiscard]] tests::ToolRun run(const std::vector<std::string>& arguments) const
    {
        return tests::runOnSample(arguments, {"XDG_CONFIG_HOME=" + (folder / "home").string(),
                                              "XDG_CONFIG_DIRS=" + (folder / "first").string() + ":" +
                                                  (folder / "second").string()});
    }

    tests::TestFolder folder;
    const std::string first = folder / "first/verdix/settings.json";
    const std::string second = folder / "second/verdix/settings.json";
    const std::string personal = folder / "home/verdix/settings.json";
};

TEST_F(EffectiveValuesTest, AreShownByEveryView)
{
    const auto shows = [&](std::vector<std::string> arguments, const auto& matcher) {
        EXPECT_THAT(run(arguments).output, matcher);
        arguments.emplace_back("--factory");
        const tests::ToolRun factory = run(arguments);
        EXPECT_THAT(factory.output, Not(matcher));
        EXPECT_EQ(factory.errors, "");
    };
    shows({"tree", "class"},
          AllOf(HasSubstr("verdix.class (locked)\n"), HasSubstr(" int32 = 7 (installation)\n")));
    shows({"tree", "web"}, AllOf(HasSubstr("AccessToken = \"********\" (personal)\n"),
                                 HasSubstr("NeedsToken = false (locked)\n")));
    shows({"list", "--values", "*.WrapLines"}, "verdix.commandwindow.WrapLines  true  personal\n");
    shows({"search", "int32"}, HasSubstr("verdix.class.int32  7  installation\n"));
    shows({"describe", "class.int32"},
          AllOf(HasSubstr("effective     7, the installation value\n"),
                HasSubstr("locked        verdix.class is locked by " + second + "\n"),
                HasSubstr("has no effect: verdix.class is locked by " + second)));
    shows({"get", "class.int32", "--show-origin"}, "installation:" + second + "\t7\n");
    shows({"export", "--format", "csv"},
          AllOf(HasSubstr("WrapLines,logical,1-by-1,true,,,default,personal\r\n"), Not(HasSubstr("s3cret")),
                HasSubstr("class.int32,int32,1-by-1,7,,,default,installation\r\n")));
    shows({"export", "--format", "html"},
          AllOf(HasSubstr("<code>true</code></div><div class=\"factory\">factory: <code>false</code>"),
                HasSubstr("locked by <code>" + second)));
    shows({"export", "--format", "json-schema"}, HasSubstr("Locked by " + second));
    EXPECT_EQ(run({"get", "class.char"}).output, "other\n") << "the first file is above the lock";
    EXPECT_THAT(
        run({"export", "--json", "--effective"}).output,
        HasSubstr(
            "\"additionalFile\": false, \"effective\": { \"value\": { \"class\": \"int32\", \"dims\": [1, "
            "1], \"data\": [7] }, \"origin\": \"installation\", \"file\": \"" +
            second + "\" } }"));
    EXPECT_EQ(run({"export", "--json"}).output, run({"export", "--json", "--factory"}).output);
}

TEST_F(EffectiveValuesTest, AreToldFromWhatFilesState)
{
    const std::string modified = run({"list", "--modified", "--hidden"}).output;
    EXPECT_THAT(modified, AllOf(HasSubstr("class.int32 "), Not(HasSubstr("ShowTips"))));
    EXPECT_THAT(run({"list", "--set", "--origin", "personal"}).output,
                AllOf(HasSubstr("verdix.suggestions.ShowTips         true        personal\n"),
                      HasSubstr("9           personal  ignored\n"), Not(HasSubstr("class.char"))));
    EXPECT_THAT(run({"list", "--set"}).output, HasSubstr("class.char                   \"site\""));
    EXPECT_THAT(run({"list", "--locked", "verdix.web.*", "--json"}).output,
                AllOf(HasSubstr("\"lockedBy\": { \"file\": \"" + second +
                                "\", \"path\": \"verdix.web.NeedsToken\" }"),
                      Not(HasSubstr("AccessToken"))));
    EXPECT_EQ(run({"list", "--origin", "personal"}).exitCode, 2);
}

TEST_F(EffectiveValuesTest, AreNeverIgnoredInSilence)
{
    const auto hints =
        AllOf(HasSubstr("1 setting in " + personal +
                        " was moved or removed by a later release, and has no effect; see "
                        "vxsettings migrate " +
                        personal + " --write\n"),
              HasSubstr("1 setting in " + personal +
                        " has an unknown path or an invalid value, and is ignored; see "
                        "vxsettings check " +
                        personal + "\n"),
              HasSubstr("1 setting in " + personal + " is locked by the installation, and has no effect"),
              HasSubstr("1 setting in " + first + " is locked"));
    for (const char* command : {"get", "tree", "describe"}) {
        EXPECT_THAT(run({command, "commandwindow.fixed"}).errors, hints);
        EXPECT_EQ(run({command, "commandwindow.fixed", "--quiet"}).errors, "");
    }
    EXPECT_THAT(run({"list", "--values"}).errors, hints);

    const tests::ToolRun doctor = run({"doctor"});
    EXPECT_EQ(doctor.exitCode, 1);
    EXPECT_THAT(doctor.output,
                AllOf(HasSubstr("R2020b, 7 settings, 2 errors; see vxsettings check " + personal),
                      HasSubstr("see vxsettings migrate "), HasSubstr("no release, 2 settings, 2 locks")));
    writeFile(personal, "{\"settings\": {}}");
    EXPECT_EQ(run({"doctor"}).exitCode, 0) << "a locked setting is no error";
    EXPECT_THAT(tests::runOnSample({"doctor"}, {"XDG_CONFIG_HOME=/dev/full"}).output,
                HasSubstr("cannot be created: cannot write in /dev/full: Not a directory\n"));
    writeFile(second, "{\"locked\": 1}");
    EXPECT_THAT(run({"doctor"}).output, HasSubstr(second + ":1:12: expected an array of paths"));
    EXPECT_THAT(run({"get", "class.int32"}),
                tests::FailsInOneLine(1, HasSubstr("expected an array of paths")));
    EXPECT_EQ(::chmod(personal.c_str(), 0622), 0);
    EXPECT_THAT(run({"doctor"}).output,
                HasSubstr("can be written by others; fix with: chmod go-w " + personal));
}

}  // namespace
