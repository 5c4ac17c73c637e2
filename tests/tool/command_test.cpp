// The command as people and scripts meet it: a process with arguments, two outputs and an exit code.

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <tests/support/files.hpp>
#include <tests/tool/process.hpp>
#include <vector>

namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;
using tests::OutputTo;
using tests::runTool;

std::string outputOf(const std::vector<std::string>& arguments,
                     const std::vector<std::string>& environment = {})
{
    const auto run = runTool(arguments, environment);
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
        {{"tre"}, 2, "no such command: tre; did you mean tree?"},
        {{"describe", "a", "b"}, 2, "not expected: b"},
        {{"--nosuch"}, 2, "not expected: --nosuch"},
        {{"--feature", "webui"}, 2, "needs NAME=VALUE"},
        {{"--feature", "webui=maybe"}, 2, "on, off or a whole number"},
        {{"get", "comandwindow.wraplines"}, 1, "did you mean verdix.commandwindow.WrapLines?"},
        {{"tree", "zzzzzzzzzz"}, 1, "list all paths with: vxsettings list"},
        {{"get", "editor.suggestions.ShowTips"}, 1, "it was moved to verdix.suggestions.ShowTips in R2025b"},
        {{"get", "desktop.help.SingleSource"}, 1, "it was removed in R2026a"},
        {{"get", "qorv"}, 1, "alias of qorv, which is not in this tree: unresolved"},
        {{"get", "commandwindow"},
         1,
         "is a group, not a setting; show its settings with: vxsettings tree verdix.commandwindow"},
        {{"get", "dump"}, 1, "verdix.dump has no factory value, and no file sets it"},
        {{"list", "--validator", "mustBe"}, 1, "available: allowedValues, callable, colour"},
        {{"list", "class*", "nothing*"}, 1, "no path matches nothing*"},
        {{"export", "--format", "json", "-o", "/no/such/folder/x"},
         1,
         "cannot write /no/such/folder/x: No such file"},
        {{"export", "--format", "json", "-o", "/dev/full"}, 1, "cannot write /dev/full: No space left"},
    };
    for (const auto& bad : cases) {
        EXPECT_THAT(runTool(bad.arguments), tests::FailsInOneLine(bad.exitCode, HasSubstr(bad.message)));
    }
}

TEST(Command, ReportsOutputThatCannotBeWritten)
{
    const std::pair<OutputTo, const char*> cases[] = {{OutputTo::fullDevice, "No space left on device"},
                                                      {OutputTo::closedPipe, "Broken pipe"},
                                                      {OutputTo::nowhere, "Bad file descriptor"}};
    for (const auto& [outputTo, reason] : cases) {
        for (const char* verb : {"summary", "tree", "--help"}) {
            const auto run = runTool({verb}, {}, outputTo);
            EXPECT_EQ(run.exitCode, 1) << reason;
            EXPECT_THAT(run.errors,
                        StartsWith(std::string("vxsettings: cannot write standard output: ") + reason));
        }
    }
    // A descriptor that is in use is not given to a file that is opened.
    for (const char* descriptor : {"0", "1", "2"}) {
        const std::string command = VX_TOOL_FILE " export --format csv -o /proc/self/fd/";
        EXPECT_EQ(std::system((command + descriptor + " <&- >&- 2>&-").c_str()), 0) << descriptor;
    }
}

TEST(Command, PrintsValuesInTheScriptingLanguagesForm)
{
    EXPECT_EQ(outputOf({"get", "verdix.UserPath"}), "$documents\\VERDIX\n");
    const std::string path = "ui.internal.figuretype.webfigures";
    const std::string remark = "computed by getDefaultFigureTypeForSetting of libvxgraphics_state\n";
    const auto computed = runTool({"get", path});
    EXPECT_EQ(computed.output, "true\n");
    EXPECT_EQ(computed.errors, "vxsettings: " + remark);
    const auto several = runTool({"get", "commandwindow.WindowSize", path, "commandwindow.WindowSize"});
    EXPECT_EQ(several.output, "[180 45]\ntrue\n[180 45]\n");
    EXPECT_EQ(several.errors, "vxsettings: verdix." + path + ": " + remark);
}

TEST(Command, PrintsNoValueUnlessEachPathHasOne)
{
    for (const char* form : {"text", "json"}) {
        const auto run = runTool(
            {"get", "class", "commandwindow.WrapLines", "comandwindow.wraplines", "dump", "--format", form});
        EXPECT_EQ(run.exitCode, 1);
        EXPECT_EQ(run.output, "");
        EXPECT_EQ(std::ranges::count(run.errors, '\n'), 3);
    }
}

TEST(Command, DrawsTheTree)
{
    EXPECT_EQ(outputOf({"tree", "string"}), "verdix.string\n└── DefaultTextType = \"char\"\n");

    const std::string top = outputOf({"tree", "--depth", "1"});
    EXPECT_THAT(
        top, HasSubstr("├── dump (no factory value)\n├── workingfolder …\n├── qorv -> qorv (unresolved)\n"));
    EXPECT_THAT(outputOf({"tree", "--hidden", "--depth", "1"}), HasSubstr("├── diagnostics (hidden) …\n"));
    EXPECT_THAT(outputOf({"tree", "--hidden"}), HasSubstr("│   └── ShowStackDecoration = true (hidden)\n"));
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
    EXPECT_EQ(outputOf({"list", "class*"}), "verdix.class\nverdix.class.UseFullNameInDisplayHeader\n");
    EXPECT_EQ(outputOf({"list", "verdix.unittest.Use[SP]*"}),
              "verdix.unittest.UseStrict\nverdix.unittest.UseParallel\n");
    EXPECT_EQ(outputOf({"list", "--kind", "alias"}), "verdix.qorv\nverdix.desktop.DisplayScaleFactor\n");
    EXPECT_EQ(outputOf({"list", "--read-only", "--kind", "setting"}),
              "verdix.ui.internal.figuretype.webfigures\n");
    EXPECT_EQ(outputOf({"list", "unittest*", "--validator", "range"}),
              "verdix.unittest.OutputDetail\nverdix.unittest.LoggingLevel\n");
    EXPECT_THAT(outputOf({"list", "--hidden"}), Not(HasSubstr("verdix.commandwindow.WrapLines\n")));
}

TEST(Command, DescribesNodesInWords)
{
    const std::string setting = outputOf({"describe", "commandwindow.UseEightyColumnDisplayWidth"});
    EXPECT_THAT(setting, HasSubstr("class       logical, 1-by-1\n"));
    EXPECT_THAT(setting, HasSubstr("moved from  verdix.commandwindow.EightyColumns in R2021a\n"));

    const std::string twiceMoved = outputOf({"describe", "suggestions.editor.ShowAutomatically"});
    EXPECT_THAT(twiceMoved, HasSubstr("verdix.editor.suggestions.ShowAutomatically in R2025b\n  moved from"));
    EXPECT_THAT(twiceMoved, HasSubstr("verdix.keyboard.suggestions.ShowAutomatically in R2022b\n"));

    EXPECT_THAT(outputOf({"describe", "desktop.workspace"}),
                HasSubstr("hidden: its group verdix.desktop is hidden\n"));
}

TEST(Command, CountsAndDiagnoses)
{
    const std::string summary = outputOf({});
    EXPECT_EQ(summary, outputOf({"summary"}));
    std::string all = "\nall";
    for (const char* kind : {"group", "setting", "alias"}) {
        all += " +" + std::to_string(std::ranges::count(outputOf({"list", "--kind", kind}), '\n'));
    }
    EXPECT_THAT(summary, testing::ContainsRegex(all + " "));

    EXPECT_EQ(outputOf({"get", "ui.internal.dialog.FileDialogs", "--feature", "webui=on"}), "true\n");
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
    const auto broken =
        runTool({"doctor", "--format", "json"}, {"LD_LIBRARY_PATH=" + (platform / "").string()});
    EXPECT_EQ(broken.exitCode, 1);
    EXPECT_THAT(
        broken.output,
        AllOf(HasSubstr("{\n  \"isWell\": false,"), HasSubstr("\"isGood\": false }"),
              HasSubstr("\"what\": \"libvxservices\", \"text\": \"validateFontSize\", \"isGood\": true")));
}

TEST(Command, KeepsLogRecordsOffTheOutput)
{
    const auto run = runTool({"get", "online.cdAnywhereDisabled", "--log-level", "debug"},
                             {"VX_CD_ANYWHERE_DISABLED=TRUE"});
    EXPECT_EQ(run.output, "true\n");
    EXPECT_THAT(run.errors, HasSubstr("set to true, based on value of VX_CD_ANYWHERE_DISABLED."));
}

}  // namespace
