// The command that waits for changes, as users and scripts run it.

#include <csignal>
#include <tests/support/files.hpp>
#include <tests/tool/process.hpp>
#include <unistd.h>

namespace {

using testing::HasSubstr;
using tests::readLine;
using tests::writeFile;

TEST(Watch, PrintsChangesUntilASignalOrItsReaderEndsIt)
{
    const tests::TestFolder folder;
    const std::string personal = folder / "home/settings.json";
    const std::string site = folder / "site/settings.json";
    const auto start = [&](std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), {"--bundle", VX_SAMPLE_BUNDLE, "--personal", personal,
                                             "--installation", site, "watch"});
        const auto tool = tests::startTool(arguments);
        EXPECT_THAT(readLine(tool.errors), HasSubstr("watching 2 files"));
        return tool;
    };
    const auto unread = start({});
    ::close(unread.output);
    EXPECT_EQ(tests::endTool(unread, 0), 1);
    EXPECT_EQ(readLine(unread.errors), "");

    const auto text = start({});
    const auto json = start({"web", "web.AccessToken", "alias.First", "--json"});
    writeFile(personal, R"({"settings": {"verdix.rule.words": "long", "verdix.class.double": 2}})");
    EXPECT_EQ(readLine(text.output), "verdix.class.double: 1 -> 2 (personal)");
    EXPECT_EQ(readLine(text.output), R"(verdix.rule.words: "short" -> "long" (personal))");
    const std::string change = readLine(json.output);
    EXPECT_THAT(change, HasSubstr(R"({ "path": "verdix.rule.words", "before": { "class": "char", )"));
    EXPECT_THAT(change, HasSubstr(R"("origin": "personal", "file": ")" + personal + "\" }"));
    writeFile(personal, "{");
    EXPECT_THAT(readLine(text.errors), HasSubstr(personal + ":1:2: expected "));
    writeFile(site, R"({"settings": {"verdix.web.AccessToken": "secret"}})");
    EXPECT_EQ(readLine(text.output), R"(verdix.web.AccessToken: "" -> "********" (installation))");
    EXPECT_THAT(readLine(json.output), HasSubstr(R"("data": "********" }, "originBefore")"));
    writeFile(site, "{}");
    EXPECT_EQ(readLine(text.output), R"(verdix.web.AccessToken: "********" -> "" (factory))");
    EXPECT_THAT(readLine(json.output), HasSubstr(R"("file": null)"));
    EXPECT_EQ(tests::endTool(text, SIGINT), 0);
    EXPECT_EQ(tests::endTool(json, SIGTERM), 0);
    EXPECT_EQ(readLine(text.output) + readLine(json.output), "") << "a setting was printed twice";
}

}  // namespace
