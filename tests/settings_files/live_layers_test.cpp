// Layers, changing and checking over the tree that the real bundle builds.

#include <settings_core/atomic_file.hpp>
#include <settings_core/file_check.hpp>
#include <settings_core/layers.hpp>
#include <settings_core/path_lookup.hpp>
#include <settings_core/settings_editor.hpp>
#include <settings_core/validation.hpp>
#include <settings_core/value_format.hpp>

#include <foundation/verdixdata/text.hpp>
#include <settings/core/factory_settings_loader.hpp>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <tests/support/factory_bundle.hpp>
#include <tests/support/files.hpp>
#include <tests/support/running_framework.hpp>
#include <tests/support/values.hpp>
#include <tuple>
#include <vector>

namespace {

namespace fs = std::filesystem;
using namespace foundation::verdixdata;
using testing::ContainsRegex;
using testing::HasSubstr;
using tests::row;
using tests::scalar;
using tests::text;
using tests::texts;
using vx::core::Node;
using vx::core::NodeKind;

struct LiveLayersTest : testing::Test
{
    LiveLayersTest()
    {
        framework.start(VX_BUNDLE_FILE);
        loader = tests::factoryLoader(framework.context());
        tree = std::make_unique<vx::core::SettingsTree>(vx::core::loadTree(*loader));
        releases = vx::core::loadReleaseChanges(*loader);
    }

    [[nodiscard]] std::string newestRelease() const { return releases.rbegin()->second.release; }
    [[nodiscard]] vx::core::SettingsEditor changer() const { return {*tree, releases, files.personal}; }

    tests::RunningFramework framework;
    std::shared_ptr<settings::core::FactorySettingsLoader> loader;
    std::unique_ptr<vx::core::SettingsTree> tree;
    settings::core::ReleaseChangeTable releases;
    tests::TestFolder folder;
    vx::core::LayerFiles files{folder / "installation.json", folder / "personal/settings.json"};
};

/// What its rules name, then values of each class and shape that settings have.
std::vector<Array> candidates(const Node& setting, const Array& own)
{
    std::vector<Array> values;
    for (const auto& record : setting.properties().valueValidators) {
        for (const std::u16string& word : record.allowedValues) {
            values.insert(values.end(), {text(toUtf8(word)), texts({toUtf8(word)})});
        }
        if (record.range) {
            values.insert(values.end(), {scalar(record.range->lower), scalar(record.range->upper)});
        }
    }
    const ArrayDimensions dims = own.isEmpty() ? ArrayDimensions{1, 1} : own.getDimensions();
    const std::size_t size = dims[0] * dims[1];
    for (const double number : {0., 1., 40.}) {
        values.push_back(tests::matrix<double>(dims[0], dims[1], std::vector(size, number)));
    }
    values.insert(values.end(),
                  {text("x \"y\""), text("12px"), text(""), texts({"x", "ü"}), texts({"italic"}), texts({}),
                   texts(std::vector<std::string>(size, "x")), row<bool>(std::vector(size, true)),
                   scalar(false), row<double>({2, 1}), row<double>({0, .5, 1}), row<double>({1, 2, 3, 4})});
    return values;
}

Array anotherValidValue(const Node& setting)
{
    const Array own = setting.properties().factoryValue;
    for (Array& candidate : candidates(setting, own)) {
        Array value = vx::core::adaptValue(setting, std::move(candidate));
        if (!(value == own) && vx::core::checkValue(setting, value).accepted()) {
            return value;
        }
    }
    return {};
}

TEST_F(LiveLayersTest, EverySettingIsSetReadBackAndResetToTheByte)
{
    const std::string before =
        "{ \"release\": \"R2026a\",\r\n\t\"settings\": {\r\n\t\t\"verdix.Own\" : 1.50\r\n\t} }";
    tests::writeFile(files.personal, before);
    std::size_t settings = 0;
    for (const Node* node : tree->nodes()) {
        if (node->kind() != NodeKind::setting || node->properties().readOnly.value()) {
            continue;
        }
        const Array value = anotherValidValue(*node);
        ASSERT_TRUE(value.isAssigned()) << node->fullName() << " has no other value than its own";
        changer().set(node->fullName(), value);
        const auto held = vx::core::Layers(*tree, files).effective(*node);
        ASSERT_TRUE(held.value == value) << node->fullName() << " is " << vx::core::formatValue(held.value);
        ASSERT_EQ(held.layer, vx::core::Layer::personal);
        ASSERT_EQ(changer().reset(node->fullName()), 1U);
        ASSERT_EQ(vx::core::readFile(files.personal), before) << node->fullName();
        ++settings;
    }
    EXPECT_GT(settings, 900U);
}

TEST_F(LiveLayersTest, TheLastLayerWithAFittingValueHolds)
{
    const Node& wrap = *tree->find("verdix.commandwindow.WrapLines");
    tests::writeFile(files.installation, "{\"settings\": {\"verdix.commandwindow.WrapLines\": true}}");
    tests::writeFile(files.personal, "{\"settings\": {\n\"verdix.commandwindow.WrapLines\": 3}}");
    vx::core::Layers layers(*tree, files);
    const auto held = layers.effective(wrap);
    EXPECT_EQ(held.layer, vx::core::Layer::installation);
    ASSERT_EQ(held.diagnostics.size(), 1U);
    EXPECT_THAT(
        held.diagnostics.front(),
        HasSubstr("settings.json:2:35: verdix.commandwindow.WrapLines: expected true or false, not 3"));
    const auto all = layers.valuesOf(wrap);
    ASSERT_EQ(all.size(), 3U);
    EXPECT_EQ(all[0].source, "factory value");
    EXPECT_FALSE(all[2].isValid());

    tests::writeFile(files.personal, "{\"settings\": [");
    EXPECT_THROW(static_cast<void>(vx::core::Layers(*tree, files).effective(wrap)), std::runtime_error);
}

TEST_F(LiveLayersTest, RefusalsSayWhyAndChangeNothing)
{
    using vx::core::Notation;
    const std::tuple<const char*, const char*, testing::Matcher<std::string>> cases[] = {
        {"commandwindow.WrapLinez", "true",
         ContainsRegex("no such path.*did you mean.*verdix.commandwindow.WrapLines")},
        {"commandwindow.EightyColumns", "true",
         HasSubstr("moved to verdix.commandwindow.UseEightyColumnDisplayWidth in R2021a")},
        {"commandwindow", "true", HasSubstr("is a group")},
        {"commandwindow.WrapLines", "maybe",
         testing::AllOf(HasSubstr("verdix.commandwindow.WrapLines"), HasSubstr("maybe"),
                        HasSubstr("column 1"), HasSubstr("true or false"))},
        {"commandwindow.NumberOfLinesInScrollBuffer", "999", ContainsRegex("999.*from 1000 to 25000")},
        {"commandwindow.DisplayLineSpacing", "wide", ContainsRegex("wide.*loose.*compact")},
    };
    for (const auto& [path, value, message] : cases) {
        EXPECT_THAT(([&, path = path, value = value] { changer().set(path, value, Notation::script); }),
                    testing::ThrowsMessage<std::runtime_error>(message));
    }
    EXPECT_FALSE(fs::exists(files.personal));
    EXPECT_EQ(changer().reset("commandwindow"), 0U);
    EXPECT_THROW(changer().reset("commandwindow.WrapLinez"), vx::core::UnknownPath);
    changer().set("commandwindow.WrapLines", "true", Notation::json);
    changer().set("commandwindow.NumericFormat", "short", Notation::script);
    EXPECT_EQ(changer().reset("commandwindow"), 2U);
    EXPECT_EQ(vx::core::readFile(files.personal),
              "{\n  \"release\": \"" + newestRelease() + "\",\n  \"settings\": {}\n}\n");
}

TEST_F(LiveLayersTest, CheckReportsEveryFaultAtOnceWithItsPlace)
{
    // A ^ stands in front of each fault, the words behind the line are what is said of it.
    struct
    {
        std::string line;
        std::vector<const char*> faults = {};
    } const lines[] = {
        {R"({ "release": ^"2026a",)", {"is not a release"}},
        {R"(  ^"comment": "mine",)", {"is an unknown member"}},
        {R"(  "settings": {)"},
        {R"(    "verdix.commandwindow.WrapLines": true,)"},
        {R"(    ^"verdix.commandwindow.WrapLines": false,)", {"duplicate of the one in line 4"}},
        {R"(    ^"verdix.commandwindow.WrapLinez": true,)", {"did you mean verdix.commandwindow.WrapLines"}},
        {R"(    ^"verdix.nothing.like.it.AtAllAnywhere": 1,)", {"is not a setting"}},
        {R"(    ^"verdix.commandwindow.EightyColumns": true,)", {"UseEightyColumnDisplayWidth in R2021a"}},
        {R"(    ^"verdix.findfiles.GoToFileEnabled": true,)", {"removed in R2021a"}},
        {R"(    ^"verdix.editor.suggestions.Forgotten": true,)", {"removed in R2026a"}},
        {R"(    ^"verdix.commandwindow": {},)", {"is a group"}},
        {R"(    ^"ä": 1, "verdix.commandwindow.NumericFormat": ^12,)", {"is not a setting", "a string"}},
        {R"(    "verdix.commandwindow.UseEightyColumnDisplayWidth": ^"yes",)", {"true or false"}},
        {R"(    "verdix.commandwindow.NumberOfLinesInScrollBuffer": ^1.5,)", {"a whole number"}},
        {R"(    "verdix.commandwindow.SuppressCellBraces": ^null,)", {"true or false"}},
        {R"(    "verdix.commandwindow.DisplayLineSpacing": ^"wide",)", {"loose"}},
        {R"(    "verdix.colors.KeywordColor": ^[1, 2],)", {"0 to 255"}},
        {R"(    "verdix.colors.CommentColor": ^[1, 2, 256],)", {"0 to 255"}},
        {R"(    "verdix.colors.StringColor": [[1, 2], ^[3]],)", {"a list of 2"}},
        {R"(    "verdix.connector.InterfacesBlocklist": ^"a",)", {"a list of strings"}},
        {R"(    ^"verdix.desktop.DisplayScaleFactor": 1)", {"is an alias"}},
        {R"(} })"},
    };
    std::vector<std::pair<vx::core::TextPosition, const char*>> expected;
    std::string content;
    for (std::size_t number = 1; auto [line, words] : lines) {
        for (const char* fault : words) {
            const std::size_t mark = line.find('^');
            line.erase(mark, 1);
            expected.push_back({{number, vx::core::characterCount(line.substr(0, mark)) + 1}, fault});
        }
        content.append(line).append("\n");
        ++number;
    }
    ASSERT_EQ(expected.size(), 20U);
    const auto faults = vx::core::checkSettingsFile(content, *tree, releases);
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
        const auto found = vx::core::checkSettingsFile(file, *tree, releases);
        ASSERT_FALSE(found.empty()) << file;
        EXPECT_NE(found.front().message.find(words), std::string::npos) << found.front().message;
    }
}

}  // namespace
