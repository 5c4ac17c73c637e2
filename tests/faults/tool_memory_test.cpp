// The command when memory runs out: one line on standard error, exit code 1, files as before or as after.

#include <gtest/gtest.h>

#include <filesystem>
#include <iostream>
#include <string>
#include <tests/support/files.hpp>
#include <tests/support/soak.hpp>
#include <tests/tool/process.hpp>
#include <vector>

namespace {

namespace fs = std::filesystem;

TEST(ToolMemory, EndsWithOneLineAndWholeFiles)
{
    const tests::TestFolder folder;
    const fs::path file = folder / "settings.json";
    const std::string before =
        "{\"release\": \"R2020a\", \"settings\": {\"verdix.commandwindow.EightyColumns\": true}}\n";
    const std::vector<std::string> verbs[] = {
        {"check", file},
        {"migrate", file, "--write"},
    };
    const std::size_t stride = tests::runsInFull() ? 37 : 997;
    for (const auto& verb : verbs) {
        tests::writeFile(file, before);
        const auto good = tests::runTool(verb);
        const std::string after = tests::readFile(file);
        for (const std::string mode : {"once", "on"}) {
            std::size_t points = 0;
            for (;; ++points) {
                for (const auto& entry : fs::directory_iterator(file.parent_path())) {
                    fs::remove(entry);
                }
                tests::writeFile(file, before);
                const auto run =
                    tests::runTool(verb, {"LD_PRELOAD=" VX_PRELOADED_FAILURE, "VX_FAILING=" + mode,
                                          "VX_FAILING_ALLOCATION=" + std::to_string(points * stride)});
                if (run.exitCode == good.exitCode && run.output == good.output) {
                    break;
                }
                ASSERT_EQ(run.exitCode, 1)
                    << verb.front() << ' ' << mode << ' ' << points * stride << ": " << run.errors;
                ASSERT_EQ(run.errors,
                          "vxsettings: out of memory: close other programs, or raise the memory limit\n");
                const std::string found = tests::readFile(file);
                ASSERT_TRUE(found == before || found == after) << found;
                ASSERT_FALSE(fs::exists(folder / ".settings.json.new"));
            }
            EXPECT_GT(points, 0U);
            std::cout << verb.front() << ", " << mode << ": points tried: " << points << '\n';
        }
    }
}

}  // namespace
