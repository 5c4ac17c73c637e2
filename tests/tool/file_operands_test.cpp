// Files that are named on the command line: which are read and written, and that nothing is lost.

#include <gmock/gmock.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <tests/support/files.hpp>
#include <tests/tool/process.hpp>
#include <vector>

namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

struct FileOperands : testing::Test
{
    /// Runs the command in a shell, in the folder; $vx is vxsettings.
    [[nodiscard]] int shell(const std::string& command) const
    {
        const std::string start = "export XDG_CONFIG_HOME=$PWD/home XDG_CONFIG_DIRS=$PWD/none "
                                  "XDG_STATE_HOME=$PWD/state vx=" VX_TOOL_FILE "; ";
        return std::system(
            ("cd " + (folder / "").string() + " && " + start + "bash -c '" + command + "'").c_str());
    }

    tests::TestFolder folder;
};

TEST_F(FileOperands, AreRefusedByName)
{
    const std::string personal = folder / "home/verdix/settings.json";
    fs::create_directories(folder / "home/verdix");
    fs::create_symlink(personal, folder / "link");
    const auto refuses = [&](int exitCode, const std::string& message,
                             const std::vector<std::string>& arguments) {
        EXPECT_THAT(tests::runTool(arguments, {"XDG_CONFIG_HOME=" + (folder / "home").string()}),
                    tests::FailsInOneLine(exitCode, HasSubstr(message)));
    };
    const auto refusesOutput = [&](const std::string& name) {
        const std::string file = folder / name;
        refuses(2, file + ": it is the personal settings file", {"export", "--format", "csv", "-o", file});
    };
    refusesOutput("link");  // to a file that does not exist yet
    refusesOutput("home/../home/verdix/settings.json");
    tests::writeFile(personal, "{}");
    fs::create_hard_link(personal, folder / "same");
    refusesOutput("same");
    EXPECT_EQ(tests::readFile(personal), "{}");

    refuses(2, "can be read only once", {"diff", "-", "tree", "--changed-settings", "-"});
    refuses(2, "--write needs a file", {"migrate", "-", "--write"});
    refuses(2, "--personal: needs a file", {"get", "UserPath", "--personal", "-"});
    refuses(3, "is a device, not a library", {"summary", "--bundle", "/dev/zero"});
}

TEST_F(FileOperands, MayBeStandardInputAndOutput)
{
    const char* const commands[] = {
        "$vx export --format json -o - > tree.json && $vx diff - tree.json < tree.json",
        "$vx history --baseline tree.json --tree - < tree.json",
        "$vx export --format json -o /dev/stdout | cmp - tree.json",
        "echo first > log && $vx export --format csv -o /dev/stdout >> log && grep -qx first log",
        "printf \"hex\\r\\n\" | $vx set commandwindow.NumericFormat --stdin && [[ $($vx get "
        "commandwindow.NumericFormat) == hex "
        "]]",
        "echo {} | $vx check - | grep -q \"^standard input: no errors\"",
        R"((echo {; seq -f "\"x%g\": 1," 21; echo "\"y\": 1}") > many && $vx check many > some;
           test $(wc -l < some) = 21 && grep -q "^many: 2 more: is an unknown member; .*--all$" some)",
        R"(test $($vx check --all - < many | wc -l) = 22)",
        "seq -f \"x%g = 1\" 22 | $vx set --stdin |& grep -qx \"vxsettings: 2 more: no such path\"",
        "echo {} | $vx migrate - | grep -q \"^standard input: from before\"",
        // To a terminal, which is sent no control characters.
        "$vx set UserPath $(printf \"a\\\\033[2J\") > set.txt",
        "$vx get UserPath | grep -q \"^a.\\[2J\"",
        "script -qec \"$vx get UserPath\" /dev/null | grep -qF \"a\\\\x1b[2J\"",
    };
    for (const char* command : commands) {
        EXPECT_EQ(shell(command), 0) << command;
    }
}

TEST_F(FileOperands, KeepTheirContentWhenWritingFails)
{
    tests::writeFile(folder / "tree.json", "old");
    EXPECT_EQ(shell("ulimit -f 4; $vx export --format json -o tree.json 2>&1 | grep -q \"tree.json: File too "
                    "large\""),
              0);
    EXPECT_EQ(tests::readFile(folder / "tree.json"), "old");
    EXPECT_EQ(shell("[[ $(ls -A) == tree.json ]]"), 0) << "nothing stays beside it";
}

}  // namespace
