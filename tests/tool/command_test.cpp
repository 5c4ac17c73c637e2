// The command as people and scripts meet it: a process with arguments, two outputs and an exit code.

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <string>
#include <tests/support/files.hpp>
#include <tests/tool/sample_run.hpp>
#include <vector>

namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::Each;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;
using tests::runOnSample;

std::string outputOf(const std::vector<std::string>& arguments,
                     const std::vector<std::string>& environment = {})
{
    const auto run = runOnSample(arguments, environment);
    EXPECT_EQ(run.exitCode, 0) << run.errors;
    return run.output;
}

TEST(Command, SaysInOneLineWhatIsWrong)
{
    const struct
    {
        std::vector<std::string> arguments;
        int exitCode;
        std::string message;
    } cases[] = {
        {{"tre", "--format", "json"}, 2, "no such command: tre; did you mean tree?"},
        {{"unset", "a"}, 2, "no such command: unset; did you mean reset?"},
        {{"get", "a", "--persnal=x"}, 2, "no such option: --persnal; did you mean --personal?"},
        {{"get", "a", "--show-orgin"}, 2, "did you mean --show-origin?"},
        {{"get"}, 2, "PATH is required; see vxsettings get --help"},
        {{"describe", "a", "b"}, 2, "not expected: b"},
        {{"--color", "sometimes"}, 2, "--color: sometimes"},
        {{"list", "-values"}, 2, "no such option: -values; did you mean --values?"},
        {{"get", "-o"}, 2, "no such option: -o"},
        {{"export", "--format", "HTML"}, 2, "; did you mean html?\n"},
        {{"export", "page"}, 2, "argument not expected: page; choose a format by --format json|"},
        {{"set", "a", "=", "1"}, 2, "argument not expected: 1; leave out the ="},
        {{"set", "a=1"}, 2, "write a space in place of the = in a=1"},
        {{"--log-level", "all"}, 2, "not in {fatal,error,warning,information,debug,trace}"},
        {{"list", "--format", "json"}, 2, "--format: not an option here; use --json"},
        {{"export", "--json", "--format", "csv"}, 2, "--json and --format csv exclude each other"},
        {{"diff", "a", "b", "--changed-settings", "c"}, 2, "--changed-settings is for --format markdown"},
        {{"check", ""}, 2, "FILE: needs a value that is not empty"},
        {{"search", ""}, 2, "WORDS: needs a value"},
        {{"export", "--format", "csv", "-o", ""}, 2, "--output: needs a value"},
        {{"--feature", "webui"}, 2, "needs NAME=VALUE"},
        {{"--feature", "webui=maybe"}, 2, "on, off or a whole number"},
        {{"get", "comandwindow.wraplines"}, 1, "did you mean verdix.commandwindow.WrapLines?"},
        {{"tree", "zzzzzzzzzz"}, 1, "list all paths with: vxsettings list"},
        {{"get", "editor.suggestions.ShowTips"}, 1, "it was moved to verdix.suggestions.ShowTips in R2025b"},
        {{"get", "qorv"}, 1, "alias of qorv, which is not in this tree: unresolved"},
        {{"get", "commandwindow"},
         1,
         "is a group, not a setting; show its settings with: vxsettings tree verdix.commandwindow"},
        {{"list", "--validator", "mustBe"}, 1, "available: allowedValues, callable, colour"},
        {{"list", "class*", "nothing*"}, 1, "no path matches nothing*"},
        {{"export", "--format", "json", "-o", "/no/such/folder/x"},
         1,
         "cannot write in /no/such/folder: No such file"},
        {{"export", "--format", "json", "-o", "/dev/full"}, 1, "cannot write /dev/full: No space left"},
    };
    for (const auto& bad : cases) {
        EXPECT_THAT(runOnSample(bad.arguments), tests::FailsInOneLine(bad.exitCode, HasSubstr(bad.message)));
    }
}

TEST(Command, HelpIsACommandToo)
{
    EXPECT_EQ(outputOf({"--help"}), tests::runTool({"help"}).output);
    EXPECT_EQ(tests::runTool({"help", "get"}).output, outputOf({"get", "--help"}));
    EXPECT_THAT(tests::runTool({"help", "tre"}), tests::FailsInOneLine(2, HasSubstr("did you mean tree?")));

    std::vector<std::string> complete;
    for (const unsigned width : {100U, 80U, 40U}) {
        std::istringstream help(outputOf({"help", "--all"}, {"COLUMNS=" + std::to_string(width)}));
        std::string all;
        for (std::string line; std::getline(help, line); all += line + "\n") {
            const bool isOneWord = line.find(' ', line.find_first_not_of(' ')) == std::string::npos;
            EXPECT_TRUE(line.size() <= width || isOneWord) << line;
        }
        std::erase_if(all, [](char c) { return c == ' ' || c == '\n'; });
        complete.push_back(all);
    }
    EXPECT_THAT(complete, Each(AllOf(complete.front(), HasSubstr("Usage:vxsettingscompletion"))));
}

TEST(Command, FitsTheTerminalAndUsesThePagerOnlyThere)
{
    const tests::TestFolder folder;
    const std::string file = folder.with("personal.json", R"({ "settings": {
  "verdix.UserPath": "設定ファイルの場所です", "verdix.commandwindow.NumericFormat": "long", "verdix.gone": 1 } })");
    const std::string fitted = "verdix.commandwindow.NumericFormat\n"
                               "                 \"long\"         personal\n"
                               "verdix.UserPath  \"設定ファイ…   personal\n";
    const std::string hint = "vxsettings: 1 setting in " + file;
    const std::string numberLines = "PAGER=sed =";
    const struct
    {
        std::vector<std::string> arguments;
        std::vector<std::string> environment;
        int exitCode;
        std::string shown;
    } cases[] = {
        {{"list", "--modified"}, {"PAGER="}, 0, fitted + hint},
        {{"list", "--modified", "--no-pager"}, {numberLines}, 0, fitted + hint},
        {{"list", "--modified"}, {"PAGER=nosuch 2>/dev/null"}, 0, fitted + hint},
        {{"search", "userpath"}, {"PAGER= "}, 0, "verdix.UserPath  \"設定ファイルの…  personal\n"},
        {{"get", "class.int8"}, {numberLines}, 0, "1\n1\n" + hint},
        {{"get", "class.int8"}, {numberLines, "VXSETTINGS_PAGER=cat"}, 0, "1\n" + hint},
        {{"check", file}, {"PAGER=cat >/dev/null"}, 1, ""},
        {{"doctor"}, {"PAGER=cat >/dev/null"}, 1, ""},
        {{"export", "--format", "html"}, {"PAGER=true"}, 0, ""},  // ends before it has read all
        {{"reset", "gone"}, {numberLines}, 0, "verdix.gone: removed, in "},
    };
    EXPECT_EQ(outputOf({"list", "--modified", "--personal", file}, {"COLUMNS=40", numberLines}),
              "verdix.commandwindow.NumericFormat  \"long\"                    personal\n"
              "verdix.UserPath                     \"設定ファイルの場所です\"  personal\n");
    EXPECT_EQ(std::ranges::count(outputOf({"search", "userpath"}, {"COLUMNS=40"}), '\n'), 2);
    for (const auto& [arguments, environment, exitCode, shown] : cases) {
        auto sample = arguments;
        sample.insert(sample.end(), {"--bundle", VX_SAMPLE_BUNDLE, "--personal", file});
        auto variables = environment;
        variables.insert(variables.end(), {"COLUMNS=40", "NO_COLOR=1"});
        auto run = tests::runToolOnTerminal(sample, variables, "");
        std::erase(run.output, '\r');
        EXPECT_EQ(run.exitCode, exitCode) << environment.front();
        EXPECT_THAT(run.output, StartsWith(shown)) << environment.front();
        EXPECT_EQ(run.output.empty(), shown.empty()) << run.output;
    }
}

TEST(Command, ReportsOutputThatCannotBeWritten)
{
    // Descriptor 3 is a pipe whose reader has closed it.
    const std::string shell = "bash -c 'exec 3> >(:); wait $!; said=$(" VX_TOOL_FILE " ";
    const std::string cannot = "vxsettings: cannot write standard output: ";
    const std::string full = cannot + "No space left on device; the output is incomplete";
    const std::pair<std::string, std::string> cases[] = {
        {"summary 2>&1 >/dev/full", full},
        {"lint --bundle " VX_SAMPLE_BUNDLE " 2>&1 >/dev/full", full},
        {"--help 2>&1 >&-", cannot + "Bad file descriptor; the output is incomplete"},
        {"tree 2>&1 >&3", ""},  // as by head, which has read enough
        {"doctor 2>&1 >&3", ""}};
    for (const auto& [command, message] : cases) {
        const std::string expected = "); [[ $? == 1 && $said == \"" + message + "\" ]]'";
        EXPECT_EQ(std::system((shell + command + expected).c_str()), 0) << command;
    }
    // A descriptor that is in use is not given to a file that is opened.
    for (const char* descriptor : {"0", "1", "2"}) {
        const std::string command = VX_TOOL_FILE " export --format csv -o /proc/self/fd/";
        EXPECT_EQ(std::system((command + descriptor + " <&- >&- 2>&-").c_str()), 0) << descriptor;
    }
}

#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)  // which take more than the limit
TEST(Command, ReportsThatMemoryRanOut)
{
    const char* const command = "yes | head -c 60000000 | (ulimit -v 80000; " VX_TOOL_FILE " diff - x; "
                                "echo $?) 2>&1 | tr '\n' ' ' | "
                                "grep -qx 'vxsettings: out of memory: .* 1 '";
    EXPECT_EQ(std::system(command), 0);
}
#endif

TEST(Command, EscapesWhatFilesAndArgumentsSay)
{
    const std::string raw = "\x1b[2J\x7f\xc2\x9b\xe2\x80\xae\xff\nforged: \a";
    const tests::TestFolder folder;
    const std::string file = folder.with(raw, R"({ "settings": { "verdix.x\u001b\n\u009b\u202e": 1,
  "verdix.UserPath": "\u001b[2J\u007f\u009b\u202e\nforged: ", "verdix.\u001b": "\u001b\u009b" } })");
    const std::vector<std::string> cases[] = {
        {raw},
        {"get", raw},
        {"list", raw},
        {"doctor"},
        {"tree", "--color", raw},
        {"summary", "--feature", raw + "=on"},
        {"check", file},
        {"check", file, "--json"},
        {"check", file + "none"},
        {"migrate", file},
        {"migrate", file, "--json"},
        {"diff", file, file},
        {"list", "--modified", "--personal", file},
        {"describe", "UserPath", "--personal", file},
        {"get", "UserPath", "--personal", file, "--json"},
        {"set", "class.int8", raw, "--personal", file},
        {"set", "class.int8", "1", "--personal", folder.with(raw + "2", "{}")},
        {"export", "--format", "json", "-o", folder / "none" / raw}};
    for (const std::vector<std::string>& arguments : cases) {
        const auto run = runOnSample(arguments, {"VX_WEBWINDOW_LOGS_SPEC=" + raw});
        const std::string shown = run.output + run.errors;
        for (const char* unprintable : {"\x1b", "\a", "\x7f", "\xc2\x9b", "\xe2\x80\xae", "\xff", "\nforged"})
        {
            EXPECT_THAT(shown, Not(HasSubstr(unprintable))) << arguments.front();
        }
    }
    EXPECT_THAT(
        runOnSample(cases[1]),
        tests::FailsInOneLine(1, HasSubstr(R"(no such path: \x1b[2J\x7f\u009b\u202e\xff\nforged: \x07; )")));
    EXPECT_EQ(outputOf({"get", "UserPath", "--personal", file}),
              "\x1b[2J\x7f\xc2\x9b\xe2\x80\xae\nforged: \n");
}

TEST(Command, PrintsValuesInTheScriptingLanguagesForm)
{
    EXPECT_EQ(outputOf({"get", "verdix.UserPath"}), "$documents\\VERDIX\n");
    const std::string path = "ui.webfigures";
    const std::string remark = "computed by getDefaultFigureTypeForSetting of libvxgraphics_state\n";
    const auto computed = runOnSample({"get", path});
    EXPECT_EQ(computed.output, "true\n");
    EXPECT_EQ(computed.errors, "vxsettings: " + remark);
}

TEST(Command, PrintsNoValueUnlessEachPathHasOne)
{
    const auto run =
        runOnSample({"get", "class", "commandwindow.WrapLines", "comandwindow.wraplines", "dump"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(std::ranges::count(run.errors, '\n'), 3);
    EXPECT_THAT(run.errors, HasSubstr("verdix.dump has no factory value, and no file sets it"));
}

TEST(Command, DrawsTheTree)
{
    EXPECT_EQ(outputOf({"tree", "connector"}), "verdix.connector\n└── InterfacesBlocklist = {}\n");

    const std::string top = outputOf({"tree", "--depth", "1"});
    EXPECT_THAT(top, HasSubstr("├── dump (no value)\n├── qorv -> qorv (unresolved)\n"
                               "├── alias …\n"));
    EXPECT_THAT(outputOf({"tree", "--hidden"}), HasSubstr("│   ├── SuppressCellBraces = false (hidden)\n"));
}

TEST(Command, NeverLeavesOutHiddenNodesSilently)
{
    const std::string hint = "vxsettings: 1 hidden node left out; add --hidden to show hidden ones too\n";
    const struct
    {
        std::vector<std::string> arguments;
        bool isShown;
        std::string errors;
    } cases[] = {
        {{"tree", "commandwindow"}, false, hint},
        {{"list", "commandw*"}, false, hint},
        {{"list", "commandw*", "commandwindow.SuppressCellBraces"}, true, ""},
        {{"search", "commandwindow"}, false, hint},
        {{"search", "commandwindow", "--quiet"}, false, ""},
        {{"search", "commandwindow", "--hidden"}, true, ""},
        {{"search", "s", "--only-hidden"}, true, ""},
        {{"search", "brace"}, true, "vxsettings: everything that matches is hidden\n"},
    };
    for (const auto& [arguments, isShown, errors] : cases) {
        const auto run = runOnSample(arguments);
        EXPECT_EQ(run.output.find("SuppressCellBraces") != std::string::npos, isShown) << arguments.back();
        EXPECT_EQ(run.errors, errors) << arguments.back();
    }
    EXPECT_THAT(outputOf({"tree", "desktop"}), HasSubstr("MaximumArraySize"));
}

TEST(Command, ColoursOnlyWhereAskedFor)
{
    const std::string escape = "\x1b[";
    EXPECT_THAT(outputOf({"tree", "class"}, {"TERM=xterm"}), Not(HasSubstr(escape)));
    EXPECT_THAT(outputOf({"--color", "always", "tree", "class"}, {"NO_COLOR=1"}), HasSubstr(escape));
    EXPECT_THAT(outputOf({"tree", "class", "--color", "never"}), Not(HasSubstr(escape)));
}

TEST(Command, ListsByPatternsAndFilters)
{
    EXPECT_EQ(outputOf({"list", "font*"}), "verdix.fonts\nverdix.fonts.heading\nverdix.fonts.heading.Name\n"
                                           "verdix.fonts.heading.Style\nverdix.fonts.heading.Size\n");
    EXPECT_EQ(outputOf({"list", "--kind", "alias", "co*", "q*"}),
              "verdix.commandwindow.alias\nverdix.qorv\n");
    EXPECT_EQ(outputOf({"list", "--read-only"}), "verdix.commandwindow.fixed\nverdix.ui.webfigures\n");
    EXPECT_EQ(outputOf({"list", "commandw*", "--validator", "range"}),
              "verdix.commandwindow.NumberOfLinesInScrollBuffer\nverdix.commandwindow.WindowSize\n");
    EXPECT_THAT(outputOf({"list", "--only-hidden"}), Not(HasSubstr("verdix.commandwindow.WrapLines\n")));
}

TEST(Command, DescribesNodesInWords)
{
    const std::string setting = outputOf({"describe", "commandwindow.UseEightyColumnDisplayWidth"});
    EXPECT_THAT(setting, HasSubstr("class       logical, 1-by-1\n"));
    EXPECT_THAT(setting, HasSubstr("moved from  verdix.commandwindow.EightyColumns in R2021a\n"));

    EXPECT_THAT(outputOf({"describe", "commandwindow.NumberOfLinesInScrollBuffer"}),
                AllOf(HasSubstr("constraint  from 1000 to 25000\n"),
                      HasSubstr("accepts     a whole number from 1000 to 25000\n")));
    EXPECT_THAT(outputOf({"describe", "desktop.workspace"}),
                HasSubstr("hidden: its group verdix.desktop is hidden\n"));
}

TEST(Command, CountsAndDiagnoses)
{
    const std::string summary = outputOf({});
    EXPECT_EQ(summary, outputOf({"summary"}));
    EXPECT_EQ(outputOf({"get", "ui.FileDialogs", "--feature", "webui=on"}), "true\n");
    const auto unread = tests::runOnSample({"get", "ui.FileDialogs", "--feature", "webiu=on"});
    EXPECT_EQ(unread.output, "false\n");
    EXPECT_EQ(unread.errors,
              "vxsettings: no Verdix setting depends on the feature switch \"webiu\"; known: webui\n");
    const std::string doctor = outputOf({"doctor", "--feature", "webui=on"}, {"VX_WEBWINDOW_LOGS_SPEC=a b"});
    EXPECT_THAT(doctor, HasSubstr("settings::core::FactorySettingsLoader"));
    EXPECT_THAT(doctor, HasSubstr("ok  libvxservices        validateFontSize\n"));
    EXPECT_THAT(doctor, HasSubstr("VX_WEBWINDOW_LOGS_SPEC             set to \"a b\"\n"));
    EXPECT_THAT(doctor, HasSubstr("feature webui                      on\n"));

    // A platform that lacks one of its native libraries, not the last.
    const tests::TestFolder platform;
    fs::create_directories(platform / "verdix/native");
    for (const char* file : {"libvxsettingscore.so.1", "verdix/native/libvxservices.so"}) {
        fs::create_symlink(fs::path(VX_PLAIN_LIBRARY).parent_path() / file, platform / file);
    }
    const auto broken = runOnSample({"doctor", "--json"}, {"LD_LIBRARY_PATH=" + (platform / "").string()});
    EXPECT_EQ(broken.exitCode, 1);
    EXPECT_THAT(
        broken.output,
        AllOf(HasSubstr("{\n  \"isWell\": false,"), HasSubstr("\"isGood\": false }"),
              HasSubstr("\"what\": \"libvxservices\", \"text\": \"validateFontSize\", \"isGood\": true")));
}

}  // namespace
