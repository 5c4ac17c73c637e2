#include <settings_core/files/settings_file.hpp>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace {

using vx::core::SettingsFile;
using vx::core::SettingsFileEdit;

std::string withSetting(const std::string& text, const std::string& path, const std::string& json)
{
    const SettingsFile file(text);
    SettingsFileEdit edit(file);
    edit.set(path, json);
    return edit.text();
}

std::string withoutSetting(const std::string& text, const std::string& path)
{
    const SettingsFile file(text);
    SettingsFileEdit edit(file);
    EXPECT_TRUE(edit.remove(path)) << text;
    return edit.text();
}

// How people and programs write files, and what becomes of them when a setting is added.
struct
{
    std::string before;
    std::string after;
} const formats[] = {
    {"{\n  \"release\": \"R2026a\",\n  \"settings\": {}\n}\n",
     "{\n  \"release\": \"R2026a\",\n  \"settings\": {\n    \"v.N\": 1\n  }\n}\n"},
    {"{\"settings\":{}}", "{\"settings\":{\"v.N\":1}}"},
    {"{\n\t\"settings\" : {\n\t}\n}", "{\n\t\"settings\" : {\n\t\"v.N\" : 1\n\t}\n}"},
    {"{\"settings\":{\"a\":[1,\n2]}}", "{\"settings\":{\"a\":[1,\n2],\"v.N\":1}}"},
    {"\xEF\xBB\xBF{\r\n\t\"settings\": {\r\n\t\t\"a\": {},\r\n\t\t\"b\": \"}\"\r\n\t}\r\n}",
     "\xEF\xBB\xBF{\r\n\t\"settings\": {\r\n\t\t\"a\": {},\r\n\t\t\"b\": \"}\",\r\n\t\t\"v.N\": "
     "1\r\n\t}\r\n}"},
    {"{ \"settings\":\n  { \"a\": 1\n  , \"b\":\n      2\n  }, \"other\": [ ] }\n\n",
     "{ \"settings\":\n  { \"a\": 1\n  , \"b\":\n      2\n  , \"v.N\": 1\n  }, \"other\": [ ] }\n\n"},
    {"{\n\"settings\": {}\n}", "{\n\"settings\": {\"v.N\": 1}\n}"},
};

TEST(SettingsFileTest, AddsInTheFilesOwnStyleAndTakesAwayWhatItAdded)
{
    for (const auto& [before, after] : formats) {
        EXPECT_EQ(withSetting(before, "v.N", "1"), after);
        EXPECT_EQ(withoutSetting(after, "v.N"), before);
        const std::string two = withSetting(after, "v.M", "[2]");
        EXPECT_EQ(withoutSetting(withoutSetting(two, "v.N"), "v.M"), before);
        EXPECT_EQ(withoutSetting(withoutSetting(two, "v.M"), "v.N"), before);
        EXPECT_EQ(withSetting(withSetting(after, "v.N", "{}"), "v.N", "1"), after);
    }
    EXPECT_EQ(withSetting("{}", "v.N", "1"), "{\n  \"settings\": {\"v.N\": 1}\n}");
}

TEST(SettingsFileTest, ChangesLeaveOtherBytesAlone)
{
    const SettingsFile file(
        "{\"settings\": {\"a\": 1.50, \"b\" :2 , \"a\": 3,\n \"c\": 4}, \"release\": \"R2020a\" }");
    EXPECT_EQ(file.find("a")->value.text, "3");
    SettingsFileEdit edit(file);
    edit.rename("b", "v.\"B\"");
    edit.setRelease("R2026a");
    EXPECT_TRUE(edit.remove("a"));
    EXPECT_FALSE(edit.remove("a"));
    EXPECT_EQ(edit.text(), "{\"settings\": {\"v.\\\"B\\\"\" :2 , \"c\": 4}, \"release\": \"R2026a\" }");
}

TEST(SettingsFileTest, SaysWhereAFileIsDamaged)
{
    struct
    {
        std::string text;
        std::size_t line, column;
    } const cases[] = {
        {"{\n  \"settings\": {\n    \"ä\": 1,,\n", 3, 12},
        {"\xEF\xBB\xBF{\"settings\": 1}", 1, 14},
        {"[]", 1, 1},
        {"{\n\"" + std::string(500, 'x') + "ä\": \"" + std::string(500, 'y') + "\",,", 2, 1009},
        {"{\"a\": 1}\n{", 2, 1},
        {"{\"a\": \"x\xC3\"}", 1, 9},
        {"{\"a\": \"x", 1, 9},
        {"{\"a\": 01}", 1, 7},
    };
    for (const auto& [text, line, column] : cases) {
        const auto position = [&text = text](const vx::core::ParseError& error) {
            const auto at = vx::core::positionAt(text, error.offset());
            return std::pair(at.line, at.column);
        };
        EXPECT_THAT(
            [&text = text] { return SettingsFile(text); },
            testing::Throws<vx::core::ParseError>(testing::ResultOf(position, testing::Pair(line, column))))
            << text;
    }
}

}  // namespace
