#include <settings_core/files/file_check.hpp>
#include <settings_core/files/ignored_settings.hpp>
#include <settings_core/files/layers.hpp>
#include <settings_core/tree/path_lookup.hpp>
#include <settings_core/values/value_format.hpp>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <tests/support/files.hpp>
#include <tests/support/sample_settings.hpp>
#include <vector>

namespace {

using testing::HasSubstr;
using vx::core::Node;

struct LayersTest : testing::Test
{
    tests::SampleSettings sample;
    vx::core::SettingsTree tree = vx::core::loadTree(sample);
    settings::core::ReleaseChangeTable releases = vx::core::loadReleaseChanges(sample);
    tests::TestFolder folder;
    vx::core::LayerFiles files{{folder / "installation.json"}, folder / "personal/settings.json"};
};

TEST_F(LayersTest, TheLastLayerWithAFittingValueHolds)
{
    const Node& wrap = nodeAt(tree, releases, "verdix.commandwindow.WrapLines");
    tests::writeFile(files.installation.front(),
                     "{\"settings\": {\"verdix.commandwindow.WrapLines\": true}}");
    tests::writeFile(files.personal, "{\"settings\": {\n\"verdix.commandwindow.WrapLines\": 3}}");
    vx::core::Layers layers(tree, files);
    const auto held = layers.effective(wrap);
    EXPECT_EQ(held.origin, vx::core::Origin::installation);
    ASSERT_EQ(held.diagnostics.size(), 1U);
    EXPECT_THAT(
        formatDiagnostic(held.diagnostics.front()),
        HasSubstr(
            "settings.json:2:35: verdix.commandwindow.WrapLines: 3 is not allowed: must be true or false"));

    tests::writeFile(files.personal, "{\"settings\": [");
    EXPECT_THROW(static_cast<void>(vx::core::Layers(tree, files).effective(wrap)), std::runtime_error);
}

TEST_F(LayersTest, ALockExcludesTheLayersAboveIt)
{
    files.installation = {folder / "first.json", folder / "second.json"};
    const auto write = [](const std::string& file, const std::string& locked, const char* value) {
        const std::string format = R"({"locked": [)" + locked + R"(], "settings": {)";
        tests::writeFile(file,
                         format + R"("verdix.class.int32": )" + value + R"(, "verdix.class.char": "own"}})");
    };
    const auto effective = [&](const char* path) {
        const auto value = vx::core::Layers(tree, files).effective(nodeAt(tree, releases, path));
        return vx::core::formatValue(value.value) + " " + std::string(originName(value.origin)) +
               std::to_string(value.diagnostics.size());
    };
    write(files.personal, R"("verdix")", "3");
    write(files.installation.front(), "", "1");
    write(files.installation.back(), "", "2");
    EXPECT_EQ(effective("class.int32"), "3 personal0");
    write(files.installation.front(), R"("verdix.class")", "1");
    EXPECT_EQ(effective("class.int32"), "1 installation1");
    EXPECT_EQ(effective("class.int64"), "1 factory0");
    write(files.installation.back(), R"("verdix.class.int32")", "2");
    EXPECT_EQ(effective("class.int32"), "2 installation2") << "the lock of the lowest layer applies";
    EXPECT_EQ(effective("class.char"), "own installation1");

    vx::core::Layers layers(tree, files);
    const Node& setting = nodeAt(tree, releases, "class.int32");
    EXPECT_EQ(layers.lockOf(setting)->file, files.installation.back());
    EXPECT_EQ(layers.lockAgainst(files.installation.front(), setting)->path, "verdix.class.int32");
    EXPECT_FALSE(layers.lockAgainst(files.installation.back(), setting));
    EXPECT_FALSE(layers.lockOf(nodeAt(tree, releases, "commandwindow.WrapLines")));
    const auto ignored = vx::core::ignoredSettings(layers, tree);
    ASSERT_EQ(ignored.size(), 3U);
    EXPECT_EQ(ignored.back().locked, 2U);
    EXPECT_EQ(ignored[1].locked, 1U);

    tests::writeFile(files.installation.back(), R"({"locked": "verdix.class"})");
    EXPECT_THROW(static_cast<void>(effective("class.int32")), std::runtime_error)
        << "a lock must not get lost";
}

TEST_F(LayersTest, CheckReportsEveryFaultAtOnceWithItsPlace)
{
    // A ^ stands in front of each fault, the words behind the line are what is said of it.
    struct
    {
        std::string line;
        std::vector<const char*> faults = {};
    } const lines[] = {
        {R"({ "release": ^"2026a",)", {"is not a release"}},
        {R"(  ^"comment": "mine",)", {"is an unknown member"}},
        {R"(  "locked": ["verdix.web", ^"verdix.webb", ^"verdix.alias.Second"],)",
         {"did you mean verdix.web?", "is an alias"}},
        {R"(  "settings": {)"},
        {R"(    "verdix.commandwindow.WrapLines": true,)"},
        {R"(    ^"verdix.commandwindow.WrapLines": false,)", {"duplicate of the one in line 5"}},
        {R"(    ^"verdix.commandwindow.WrapLinez": true,)", {"did you mean verdix.commandwindow.WrapLines"}},
        {R"(    ^"verdix.commandwindow.EightyColumns": true,)", {"UseEightyColumnDisplayWidth in R2021a"}},
        {R"(    ^"verdix.editor.suggestions.Forgotten": true,)", {"removed in R2026a"}},
        {R"(    ^"verdix.commandwindow": {},)", {"is a group"}},
        {R"(    ^"ä": 1, "verdix.commandwindow.NumericFormat": ^12,)", {"is not a setting", "a string"}},
        {R"(    "verdix.commandwindow.UseEightyColumnDisplayWidth": ^"yes",)", {"true or false"}},
        {R"(    "verdix.commandwindow.NumberOfLinesInScrollBuffer": ^1.5,)", {"a whole number"}},
        {R"(    "verdix.commandwindow.DisplayLineSpacing": ^"wide",)", {"loose"}},
        {R"(    "verdix.colors.KeywordColor": ^[1, 2],)", {"0 to 255"}},
        {R"(    "verdix.colors.CommentColor": [[1, 2], ^[3]],)", {"a list of 2"}},
        {R"(    "verdix.connector.InterfacesBlocklist": ^"a",)", {"as a list: [\"a\"]"}},
        {R"(    ^"verdix.alias.Second": 1,)", {"is an alias: write verdix.rule.words"}},
        {R"(    ^"verdix.commandwindow.fixed": 1)", {"is read-only"}},
        {R"(} })"},
    };
    std::vector<std::pair<vx::core::Position, const char*>> expected;
    std::string content;
    for (std::size_t number = 1; auto [line, words] : lines) {
        for (const char* fault : words) {
            const std::size_t mark = line.find('^');
            line.erase(mark, 1);
            expected.push_back({{"", number, vx::core::characterCount(line.substr(0, mark)) + 1}, fault});
        }
        content.append(line).append("\n");
        ++number;
    }
    ASSERT_EQ(expected.size(), 19U);
    const auto faults = vx::core::checkSettingsFile(files.personal, content, tree, releases);
    ASSERT_EQ(faults.size(), expected.size());
    for (std::size_t index = 0; index < faults.size(); ++index) {
        EXPECT_EQ(faults[index].position.line, expected[index].first.line) << faults[index].message;
        EXPECT_EQ(faults[index].position.column, expected[index].first.column) << faults[index].message;
        EXPECT_THAT(faults[index].message, HasSubstr(expected[index].second));
    }

    const std::pair<const char*, const char*> others[] = {
        {R"({"$schema": "settings.json", "release": 2026, "settings": {}})", "is not a release"},
        {R"({"release": "R2099b"})", "is newer than the newest known release, R20"},
        {R"({"settings": {}, "settings": {"no.such.path": 1}})", "duplicate"},
        {R"({"settings": 1})", "expected an object"},
    };
    for (const auto& [file, words] : others) {
        const auto found = vx::core::checkSettingsFile(files.personal, file, tree, releases);
        ASSERT_FALSE(found.empty()) << file;
        EXPECT_NE(found.front().message.find(words), std::string::npos) << found.front().message;
    }
    const auto twice = vx::core::checkSettingsFile(
        files.personal, R"({"settings": {"verdix.commandwindow.WrapLines": 1}, "settings": {}})", tree,
        releases);
    EXPECT_EQ(twice.size(), 1U) << "the first of them is reported as a duplicate, but does not apply";
}

}  // namespace
