// Editing a settings file in a text editor: the editors here are shell commands that get the file as $1.

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
using testing::AllOf;
using testing::HasSubstr;
using tests::FailsInOneLine;
using tests::readFile;
using tests::ToolRun;
using tests::writeFile;

struct EditTest : testing::Test
{
    /// Edits with this script as the editor. If there are lines to type, on a terminal.
    [[nodiscard]] ToolRun edit(const std::string& script, const std::string& typed = "",
                               std::vector<std::string> arguments = {"edit"}) const
    {
        const std::vector<std::string> environment{"XDG_CONFIG_HOME=" + (folder / "home").string(),
                                                   "XDG_STATE_HOME=" + (folder / "state").string(),
                                                   "XDG_CONFIG_DIRS=" + (folder / "site").string(),
                                                   "VISUAL=", "EDITOR=sh " + folder.with("editor", script)};
        arguments.insert(arguments.begin(), {"--bundle", VX_SAMPLE_BUNDLE});
        return typed.empty() ? tests::runTool(arguments, environment)
                             : tests::runToolOnTerminal(arguments, environment, typed);
    }

    /// Returns a script that writes the settings file with these settings.
    static std::string write(const std::string& settings)
    {
        return "cat > \"$1\" <<'END'\n{\"settings\": {" + settings + "}}\nEND\n";
    }

    [[nodiscard]] bool isKept() const
    {
        return std::ranges::any_of(fs::recursive_directory_iterator(folder / "state/verdix/edit"),
                                   [](const auto& entry) { return entry.is_regular_file(); });
    }

    tests::TestFolder folder;
    fs::path personal = folder / "home/verdix/settings.json";
};

TEST_F(EditTest, TheFileIsReplacedOnceTheEditorIsDone)
{
    const std::string script = "stat -c %a \"$1\" \"$(dirname \"$1\")\"; cat \"$1\"; touch \"$1~\"\n";
    EXPECT_THAT(edit(script).output,
                AllOf(testing::ContainsRegex("^600\n700\n(.*\n)*  \"release\": \"R20.*\n"),
                      HasSubstr("settings.json: nothing changed\n")));
    EXPECT_FALSE(fs::exists(personal));
    const std::string settings = R"("verdix.commandwindow.WrapLines": false)";
    EXPECT_EQ(
        edit("kill -INT $PPID; kill -QUIT $PPID\ntest ! -e " + personal.string() + " &&" + write(settings))
            .errors,
        "");
    EXPECT_EQ(readFile(personal), "{\"settings\": {" + settings + "}}\n");
    EXPECT_FALSE(isKept());
    EXPECT_EQ(edit("", "", {"undo"}).exitCode, 0);
    EXPECT_FALSE(fs::exists(personal));
}

TEST_F(EditTest, WhatIsNotSavedIsKept)
{
    const std::string kept = "kept in " + (folder / "state/verdix/edit").string() + personal.string() + "/";
    const std::string valid = write(R"("verdix.commandwindow.WrapLines": true)");
    const std::string before = R"({"settings": {"other.X": 1, "other.X": 2}})";
    const std::pair<std::string, std::string> failures[] = {
        {valid + "exit 3", "failed with exit code 3"},
        {valid + "kill -KILL $$", "signal: Killed"},
        {valid + "kill -TERM $PPID; sleep 9", "signal: Terminated"},
        {valid + "echo ' ' >> " + personal.string(), "something else changed it"},
        {valid + "touch state/verdix/undo", "cannot be recorded for undo"},
        {"echo x >> \"$1\"", "settings.json:1:43: "},
        {write(R"("other.X": 1, "verdix.commandwindow.WrapLines": 3)"),
         "1:63: verdix.commandwindow.WrapLines: 3 is not allowed"},
    };
    for (const auto& [script, message] : failures) {
        writeFile(personal, before);
        const ToolRun run = edit("cd " + (folder / "").string() + "\n" + script);
        EXPECT_EQ(run.exitCode, 1);
        EXPECT_THAT(run.errors, AllOf(HasSubstr(message), HasSubstr(kept))) << script;
        EXPECT_THAT(edit("exit 9"), FailsInOneLine(1, HasSubstr("holds the text of an earlier edit")));
        fs::remove_all(folder / "state");
    }
    writeFile(personal, before);
    EXPECT_THAT(edit("exit 3"), FailsInOneLine(1, testing::EndsWith("exit code 3\n")));
    EXPECT_FALSE(isKept());
    EXPECT_EQ(edit(write("\n\"other.X\": 1, \"other.X\": 2, \"verdix.class.int32\": 5")).errors, "")
        << "no new error";
    EXPECT_THAT(edit("EDITOR=true " VX_TOOL_FILE " --bundle " VX_SAMPLE_BUNDLE " edit").errors,
                HasSubstr("locked by"));

    for (const std::string& done : {std::string(), valid + "cp \"$1\" " + personal.string() + "\n"}) {
        EXPECT_EQ(edit(done + "kill -KILL $PPID").exitCode, -9);
        EXPECT_THAT(edit("").output, HasSubstr("nothing changed"))
            << "the killed one left nothing to continue";
    }
}

TEST_F(EditTest, LocksOfLowerFilesAreReported)
{
    const std::string script = write(R"("verdix.commandwindow.WrapLines": false)");
    const fs::path site = folder / "site/verdix/settings.json";
    writeFile(site, R"({"locked": ["verdix.commandwindow"]})");
    EXPECT_THAT(edit(script).errors,
                HasSubstr("WrapLines: has no effect: verdix.commandwindow is locked by " + site.string()));
    writeFile(site, "damaged");
    EXPECT_EQ(edit(script, "", {"edit", "--scope", "installation"}).errors, "");
    EXPECT_THAT(readFile(site), HasSubstr("WrapLines"));
}

TEST_F(EditTest, OnATerminalTheUserDecides)
{
    const std::string invalid = write(R"("verdix.commandwindow.WrapLines": 3)");
    const std::string valid = write(R"("verdix.commandwindow.WrapLines": true)");
    writeFile(personal, "{}");
    EXPECT_EQ(edit("echo x > \"$1\"", "s\nk\n").exitCode, 1) << "what is no JSON cannot be saved";
    EXPECT_EQ(readFile(personal), "{}");
    EXPECT_EQ(edit("grep x \"$1\" && " + invalid, "\ns\n").exitCode, 0);
    EXPECT_THAT(readFile(personal), HasSubstr("3"));
    EXPECT_EQ(edit("echo x >> \"$1\"", "d\n").exitCode, 0);
    EXPECT_FALSE(isKept());
    EXPECT_EQ(edit("grep -q tru \"$1\" && " + valid + "grep -q true \"$1\" || echo '{tru' > \"$1\"", "e\n")
                  .exitCode,
              0);
    EXPECT_EQ(edit("echo y > " + personal.string() + "\n" + invalid, "s\nk\n").exitCode, 1);
    EXPECT_EQ(readFile(personal), "y\n");
    EXPECT_EQ(edit("", "e\ns\nk\n").exitCode, 1) << "the change since the first of the edits counts";
    EXPECT_EQ(edit("", "e\ns\no\n").exitCode, 0);
    EXPECT_THAT(readFile(personal), HasSubstr("3"));
}

}  // namespace
