// The commands that work on settings files, as users run them.

#include <boost/algorithm/string/replace.hpp>
#include <boost/json/parse.hpp>
#include <boost/json/serialize.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <string>
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

struct SettingsFilesTest : testing::Test
{
    [[nodiscard]] ToolRun run(const std::vector<std::string>& arguments) const
    {
        return tests::runOnSample(
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
    EXPECT_EQ(run({"set", "UserPath", "--json-value", R"("a\nb")"}).exitCode, 0);
    EXPECT_EQ(run({"get", "UserPath"}).output, "a\nb\n");
    EXPECT_EQ(run({"get", "UserPath", "commandwindow.WindowSize"}).output, "a\\nb\n[180 45]\n");
    const std::string path(100, 'x');
    EXPECT_THAT(run({"set", "UserPath", path}).output, HasSubstr(path));
    EXPECT_THAT(run({"list", "--modified"}).output, HasSubstr('"' + path + "\"  personal\n"));
    EXPECT_EQ(run({"undo"}).exitCode, 0);
    const std::string modified = run({"list", "--modified"}).output;
    EXPECT_THAT(modified, testing::ContainsRegex("verdix.UserPath +\"a.nb\" +personal\n"));
    EXPECT_EQ(std::ranges::count(modified, '\n'), 2);
}

TEST_F(SettingsFilesTest, NumbersThatAreNotFiniteSurvive)
{
    const std::pair<const char*, std::string> cases[] = {
        {"class.double", "-Inf"}, {"class.matrix", "[NaN Inf 1; -Inf 2 3]"}, {"class.none", "[NaN Inf]"}};
    for (const auto& [path, value] : cases) {
        EXPECT_EQ(run({"set", path, "--", value}).errors, "");
        EXPECT_EQ(run({"get", path}).output, value + '\n');
        const auto document = boost::json::parse(run({"get", path, "--json"}).output);
        EXPECT_EQ(run({"set", path, "--json-value", serialize(document.at("value"))}).errors, "");
        EXPECT_EQ(run({"get", path}).output, value + '\n');
    }
}

TEST_F(SettingsFilesTest, RefusalsAndDamageEndInOneLine)
{
    EXPECT_THAT(run({"reset", "--all"}).output, testing::StartsWith("0 settings reset in "));
    EXPECT_EQ(run({"reset"}).exitCode, 2);
    EXPECT_FALSE(fs::exists(personal));

    const std::string damaged = "{\"settings\": {\n  \"verdix.commandwindow.WrapLines\": tru }}";
    writeFile(personal, damaged);
    EXPECT_THAT(run({"set", "commandwindow.WrapLines", "true"}),
                FailsInOneLine(1, HasSubstr("settings.json:2:37: expected a value")));
    EXPECT_EQ(readFile(personal), damaged);
}

TEST_F(SettingsFilesTest, RejectedValuesAreExplainedOnce)
{
    const std::string lines = "commandwindow.NumberOfLinesInScrollBuffer";
    const std::string colour = "a colour: red, green and blue, each a whole number from 0 to 255";
    const std::vector<std::string> cases[] = {
        {"commandwindow.NumericFormat", "lnog",
         R"("lnog" is not allowed; did you mean "long"? Allowed: short, long, longG, hex, bank)"},
        {"rule.words", "xx",
         R"("xx" is not allowed: must be a string, of at most 5 characters, one of: short, long)"},
        {"rule.list", R"({"a","BB"})", R"("BB" is not allowed; did you mean "b"? Allowed: a, b)"},
        {"rule.colour", "rde",
         R"("rde" is not allowed; did you mean "red"? Allowed: a colour: red, green and blue, each a number )"
         "from 0 to 1, or one of: red"},
        {"rule.colour", "teal",
         R"("teal" is not allowed: must be a colour: red, green and blue, each a number from 0 to 1, or one of: )"
         "red; red is '[1 0 0]' or '#ff0000'"},
        {"colors.KeywordColor", "red",
         "red is not allowed: must be " + colour + "; red is '[255 0 0]' or '#ff0000'"},
        {"colors.KeywordColor", "#ff00",
         "#ff00 is not allowed: must be " + colour + "; red is '[255 0 0]' or '#ff0000'"},
        {"colors.KeywordColor", "1 2 3",
         "1 2 3 is not allowed: must be " + colour + "; write it as a list: '[1 2 3]'"},
        {"colors.KeywordColor", "[1 2",
         "[1 2: column 5: expected whitespace, \",\", \";\" or \"]\" after an element; must be " + colour},
        {"connector.InterfacesBlocklist", "bold",
         "bold is not allowed: must be a cell of strings; write it as a list: '{\"bold\"}'"},
        {"connector.InterfacesBlocklist", "{ a, b c }",
         "{ a, b c } is not allowed: must be a cell of strings; write it as a list: '{\"a\",\"b\",\"c\"}'"},
        {"UserPath", R"("en"-US)",
         R"("en"-US is not allowed: must be a string; write it in quotes: '"""en""-US"')"},
        {"UserPath", R"( "en" "US")",
         R"( "en" "US": column 7: expected nothing after the value; must be a string)"},
        {"UserPath", R"("open)", R"("open is not allowed: must be a string; write it in quotes: '"open"')"},
        {"class.int8", "300", "300 is not allowed: must be a whole number from -128 to 127"},
        {"commandwindow.WrapLines", "", "an empty value is not allowed: must be true or false"},
        {lines, "12.5", "12.5 is not allowed: must be a whole number from 1000 to 25000"},
        {lines, "-5", "-5 is not allowed: must be a whole number from 1000 to 25000"},
        {lines, "10,000",
         "10,000 is not allowed: must be a whole number from 1000 to 25000; write it without commas: 10000"},
        {lines, "100,00",
         "100,00: column 4: expected nothing after the value; must be a whole number from 1000 to 25000"},
        {lines, "100,000",
         "100,000: column 4: expected nothing after the value; must be a whole number from 1000 to 25000"},
        {"rule.called", "2", "called"},
        {"commandwindow.WrapLines", R"("on")",
         R"("on" is not allowed: must be true or false; write it without quotes: true)", "--json-value"},
    };
    for (const auto& rejected : cases) {
        std::vector<std::string> arguments{"set", rejected[0], rejected[1]};
        arguments.insert(arguments.end(), rejected.begin() + 3, rejected.end());
        EXPECT_EQ(run(arguments).errors, "vxsettings: verdix." + rejected[0] + ": " + rejected[2] + "\n");
    }
    EXPECT_THAT(run({"set", "colors.KeywordColor", "#f80"}).output, HasSubstr(" -> [255 136 0] "));
    EXPECT_THAT(run({"set", "rule.colour", "#ff0033"}).output, HasSubstr("[1 0 0.2] "));
    EXPECT_THAT(run({"set", "commandwindow.WrapLines", "ON"}).output, HasSubstr(" -> true "));
}

TEST_F(SettingsFilesTest, FaultsOfFilesAreNamed)
{
    const std::pair<const char*, const char*> cases[] = {
        {"{\n // mine\n}", ":2:2: JSON has no comments: remove it"},
        {"{\"settings\": {},\n}", ":1:16: remove the comma before }"},
        {R"({"locked": [ "a" , ]})", ":1:18: remove the comma before ]"},
        {R"({"commandwindow.WrapLines": true})",
         ":1:2: commandwindow.WrapLines: has no effect here: write it inside \"settings\": { ... }, as "
         "verdix.commandwindow.WrapLines"},
        {R"({"settings": {"": 1}})", ":1:15: \"\" is not a setting; list all paths"}};
    const std::string file = folder / "bad.json";
    for (const auto& [content, message] : cases) {
        writeFile(file, content);
        EXPECT_THAT(run({"check", file}).output, testing::StartsWith(file + message));
        EXPECT_EQ(run({"import", file}).exitCode, 1) << content;
    }

    for (const char* content : {"", "\n"}) {  // as if there was no file
        writeFile(personal, content);
        EXPECT_THAT(run({"check"}).output, HasSubstr("the file is empty, so nothing is set: write { "));
        EXPECT_EQ(run({"get", "commandwindow.WrapLines"}).errors, "");
        EXPECT_EQ(run({"reset", "--all"}).exitCode, 0);
        EXPECT_EQ(readFile(personal), content);
        EXPECT_EQ(run({"set", "commandwindow.WrapLines", "true"}).errors, "");
        EXPECT_THAT(readFile(personal), HasSubstr("\"release\": \"R2026a\""));
    }
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
    EXPECT_THAT(shown.output,
                HasSubstr("\"yes\" is not allowed: must be true or false; write it without quotes: true"));
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
    EXPECT_EQ(run({"undo", "2", "--personal", file}).exitCode, 0);
    EXPECT_EQ(readFile(file), before);
}

TEST_F(SettingsFilesTest, ResetLeavesWhatIsNotOfTheTree)
{
    writeFile(personal, R"({"settings": {"verdix.colors.CommentColor": [1, 2, 3], "verdix.colors.Own": 1,
"other.X": 2, "other.X": 3}, "note": 4})");
    const std::pair<std::vector<std::string>, const char*> resets[] = {
        {{"colors"},
         "verdix.colors.CommentColor: [1 2 3] (personal) -> [0 128 19] (factory)\n"
         "1 setting reset in PERSONAL; 1 unknown setting left, see vxsettings reset --unknown\n"},
        {{"--all"},
         "0 settings reset in PERSONAL; 2 unknown settings left, see vxsettings reset --unknown\n"},
        {{"--unknown", "colors"}, "verdix.colors.Own: removed, in PERSONAL\n"},
        {{"other.X"}, "other.X: removed, in PERSONAL\n"},
    };
    for (const auto& [arguments, expected] : resets) {
        std::vector<std::string> command{"reset"};
        command.insert(command.end(), arguments.begin(), arguments.end());
        EXPECT_EQ(run(command).output,
                  boost::algorithm::replace_all_copy(std::string(expected), "PERSONAL", personal.string()));
    }
    EXPECT_EQ(readFile(personal), R"({"settings": {}, "note": 4})");
}

TEST_F(SettingsFilesTest, UndoBringsBackTheContentBeforeEachChange)
{
    const auto content = [this] { return fs::exists(personal) ? readFile(personal) : "none"; };
    const auto expectUndo = [&](std::vector<std::string> arguments, const std::string& expected) {
        arguments.insert(arguments.begin(), "undo");
        EXPECT_EQ(run(arguments).exitCode, 0);
        EXPECT_EQ(content(), expected);
    };
    EXPECT_THAT(run({"undo"}), FailsInOneLine(1, HasSubstr("nothing to undo")));
    std::vector<std::string> contents{"none"};
    for (const std::vector<std::string>& change :
         std::vector<std::vector<std::string>>{{"set", "commandwindow.WrapLines", "true"},
                                               {"set", "commandwindow.NumericFormat", "hex"},
                                               {"reset", "commandwindow.WrapLines"}})
    {
        EXPECT_EQ(run(change).exitCode, 0);
        contents.push_back(content());
    }
    expectUndo({}, contents[2]);
    EXPECT_THAT(run({"undo"}).output, HasSubstr("removes  verdix.commandwindow.WrapLines  true\n"));
    expectUndo({"4"}, contents[1]);
    expectUndo({"6"}, "none");
    expectUndo({}, contents[1]);

    writeFile(personal, "by something else");
    EXPECT_THAT(run({"undo"}), FailsInOneLine(1, HasSubstr("changed by something else since \"undo\" of 2")));
    expectUndo({"--force"}, "none");
    expectUndo({}, "by something else");
    writeFile(personal, "{}");
    for (int count = 0; count < 25; ++count) {
        EXPECT_EQ(run({"set", "class.int32", std::to_string(count)}).exitCode, 0);
    }
    const std::string list = run({"undo", "--list"}).output;
    EXPECT_EQ(std::ranges::count(list, '\n'), 20) << list;
    EXPECT_THAT(list, testing::ContainsRegex("^ 1  2[-0-9T:]+Z  set class.int32\n"));
    EXPECT_THAT(run({"undo", "--personal", folder / "other.json"}), FailsInOneLine(1, HasSubstr("nothing")));
}

TEST_F(SettingsFilesTest, UndoPassesOverAChangeThatWasNotCarriedOut)
{
    EXPECT_EQ(run({"set", "commandwindow.WrapLines", "true"}).exitCode, 0);
    const std::string first = readFile(personal);
    EXPECT_EQ(run({"set", "commandwindow.WrapLines", "false"}).exitCode, 0);
    writeFile(personal, first);  // as if killed before the file was replaced
    EXPECT_EQ(std::ranges::count(run({"undo", "--list"}).output, '\n'), 1);
    EXPECT_EQ(run({"set", "colors.KeywordColor", "[1 2 3]"}).exitCode, 0);
    EXPECT_EQ(std::ranges::count(run({"undo", "--list"}).output, '\n'), 2);
    EXPECT_EQ(run({"undo"}).exitCode, 0);
    EXPECT_EQ(readFile(personal), first);

    const std::string blocked = folder.with("blocked", "");
    for (const std::vector<std::string>& change :
         {std::vector<std::string>{"set", "commandwindow.WrapLines", "false"}, {"reset", "--all"}, {"undo"}})
    {
        EXPECT_THAT(tests::runOnSample(change, {"XDG_CONFIG_HOME=" + (folder / "home").string(),
                                                "XDG_STATE_HOME=" + blocked}),
                    FailsInOneLine(1, HasSubstr(blocked)));
        EXPECT_EQ(readFile(personal), first);
    }
}

TEST_F(SettingsFilesTest, SecretsAreNotShownWhileTheyAreTyped)
{
    const auto type = [&](const std::string& typed) {
        const std::string prompt = "verdix.web.AccessToken (not shown): ";
        const ToolRun shown = tests::runToolOnTerminal(
            {"set", "web.AccessToken", "--stdin", "--bundle", VX_SAMPLE_BUNDLE, "--personal", personal}, {},
            typed, prompt);
        EXPECT_THAT(shown.output, AllOf(testing::StartsWith(prompt), Not(HasSubstr("sesame"))));
        return shown.exitCode;
    };
    EXPECT_EQ(type("sesame\nrest"), 0);
    EXPECT_EQ(type("sesame 2\x03"), -SIGINT);
    EXPECT_EQ(type(""), 1);
    EXPECT_EQ(run({"get", "web.AccessToken", "--personal", personal}).output, "sesame\n");
}

TEST_F(SettingsFilesTest, SecretsAreOnlyShownByGet)
{
    writeFile(personal,
              R"({"settings": {"verdix.web.AccessToken": 7654321, "verdix.web.NeedsToken": 7654321}})");
    const std::vector<std::string> commands[] = {{"check"},
                                                 {"migrate", personal, "--from", "R2026a"},
                                                 {"describe", "web.AccessToken"},
                                                 {"set", "web.AccessToken", "--json-value", "7654321"},
                                                 {"set", "web.AccessToken", "sesame-7654321"},
                                                 {"list", "--modified"},
                                                 {"undo"},
                                                 {"undo"},
                                                 {"list", "--modified"},
                                                 {"describe", "web.AccessToken"},
                                                 {"search", "access"},
                                                 {"import", personal, "--dry-run"},
                                                 {"reset", "web.AccessToken", "--dry-run"},
                                                 {"export", "--modified"},
                                                 {"export", "--format", "html"},
                                                 {"summary"}};
    for (const auto& command : commands) {
        for (const char* format : {"--json", "--color=never"}) {
            std::vector<std::string> arguments{format, "--personal", personal};
            arguments.insert(arguments.end(), command.begin(), command.end());
            const ToolRun shown = run(arguments);
            EXPECT_EQ((shown.output + shown.errors).find("7654321"), std::string::npos) << command.front();
        }
    }
    EXPECT_EQ(run({"get", "web.AccessToken"}).output, "sesame-7654321\n");
}

}  // namespace
