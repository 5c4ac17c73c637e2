// Layers, changing and checking over the tree that the real bundle builds.

#include <data/views.hpp>
#include <settings_core/atomic_file.hpp>
#include <settings_core/changing.hpp>
#include <settings_core/file_check.hpp>
#include <settings_core/layers.hpp>
#include <settings_core/validation.hpp>
#include <settings_core/value_text.hpp>

#include <foundation/verdixdata/array_factory.hpp>
#include <settings/core/factory_settings_loader.hpp>
#include <verdix/settings/internal/values.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <tests/support/running_framework.hpp>
#include <vector>

namespace {

namespace fs = std::filesystem;
using namespace foundation::verdixdata;
using verdix::settings::internal::cellstr;
using verdix::settings::internal::charvec;
using vx::core::Node;
using vx::core::NodeKind;

struct LiveLayersTest : testing::Test
{
    LiveLayersTest()
    {
        framework.start(VX_BUNDLE_FILE);
        const auto context = framework.context();
        const auto reference = context.GetServiceReference<settings::core::FactorySettingsLoader>();
        loader = context.GetService(reference);
        tree = std::make_unique<vx::core::SettingsTree>(vx::core::loadTree(*loader));
        releases = vx::core::loadReleaseChanges(*loader);
        std::string pattern = (fs::temp_directory_path() / "layers_XXXXXX").string();
        folder = ::mkdtemp(pattern.data());
        files = {folder / "installation.json", folder / "personal" / "settings.json"};
    }
    ~LiveLayersTest() override { fs::remove_all(folder); }

    void write(const fs::path& file, const std::string& text) const
    {
        vx::core::LockedFile(file).replace(text);
    }

    [[nodiscard]] vx::core::SettingsChanger changer() const { return {*tree, releases, files.personal}; }

    tests::RunningFramework framework;
    std::shared_ptr<settings::core::FactorySettingsLoader> loader;
    std::unique_ptr<vx::core::SettingsTree> tree;
    settings::core::ReleaseChangeTable releases;
    fs::path folder;
    vx::core::LayerFiles files;
};

template <class T>
Array changedNumbers(const Array& value, double change)
{
    TypedArray<T> numbers(value);
    for (T& number : numbers) {
        number = static_cast<T>(static_cast<double>(number) + change);
    }
    return numbers;
}

/// Values that a setting with this one may take as well, the likeliest first.
std::vector<Array> variations(const Array& value)
{
    switch (value.getType()) {
    case ArrayType::LOGICAL: {
        TypedArray<bool> flags(value);
        for (bool& flag : flags) {
            flag = !flag;
        }
        return {flags};
    }
    case ArrayType::CHAR:
        return {charvec("x"), charvec("12px"), charvec("")};
    case ArrayType::STRING:
        return {ArrayFactory().createScalarInternal("x \"y\"")};
    case ArrayType::CELL:
        return {cellstr({"x", "ü"}), cellstr({"italic"}), cellstr({})};
    case ArrayType::UNKNOWN:
        return {};
    default:
        return vx::data::visitElementType(
            value.getType(), [&]<class T>(std::type_identity<T>) -> std::vector<Array> {
                if constexpr (vx::data::Number<T>) {
                    return {changedNumbers<T>(value, 1), changedNumbers<T>(value, -1),
                            changedNumbers<T>(value, .25), changedNumbers<T>(value, -.25)};
                } else {
                    return {};
                }
            });
    }
}

/// What its rules name, then what is close to its own value, then one value of each common class.
std::vector<Array> candidates(const Node& setting, const Array& own)
{
    std::vector<Array> values;
    for (const auto& record : setting.properties().valueValidators) {
        for (std::u16string word : record.allowedValues) {
            const std::vector<std::string> only{toUtf8(word)};
            values.push_back(charvec(std::move(word)));
            values.push_back(cellstr(std::vector(only)));
        }
    }
    for (Array& value : variations(own)) {
        values.push_back(std::move(value));
    }
    const auto numbers = [](std::vector<double> elements) {
        auto row = ArrayFactory().createArray<double>({1, elements.size()});
        std::copy(elements.begin(), elements.end(), row.begin());
        return Array(row);
    };
    auto swapped = ArrayFactory().createArray<bool>({1, 1});
    values.insert(values.end(), {swapped, numbers({1}), numbers({2, 1}), numbers({0, .5, 1}),
                                 numbers({1, 2, 3, 4}), charvec("x"), cellstr({"x"})});
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
    write(files.personal, before);
    std::size_t settings = 0;
    for (const Node* node : tree->nodes()) {
        if (node->kind() != NodeKind::setting || node->properties().readOnly.value()) {
            continue;
        }
        const Array value = anotherValidValue(*node);
        ASSERT_TRUE(value.isAssigned()) << node->fullName() << " has no other value than its own";
        changer().set(node->fullName(), value);
        const auto held = vx::core::Layers(*tree, files).effective(*node);
        ASSERT_TRUE(held.value == value) << node->fullName() << " is " << vx::core::valueText(held.value);
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
    write(files.installation, "{\"settings\": {\"verdix.commandwindow.WrapLines\": true}}");
    write(files.personal, "{\"settings\": {\n\"verdix.commandwindow.WrapLines\": 3}}");
    vx::core::Layers layers(*tree, files);
    const auto held = layers.effective(wrap);
    EXPECT_EQ(held.layer, vx::core::Layer::installation);
    ASSERT_EQ(held.faults.size(), 1U);
    EXPECT_NE(held.faults.front().find(
                  "settings.json:2:36: verdix.commandwindow.WrapLines: expected true or false, not 3"),
              std::string::npos)
        << held.faults.front();
    const auto all = layers.valuesOf(wrap);
    ASSERT_EQ(all.size(), 3U);
    EXPECT_EQ(all[0].source, "factory value");
    EXPECT_FALSE(all[2].counts());

    write(files.personal, "{\"settings\": [");
    EXPECT_THROW(static_cast<void>(vx::core::Layers(*tree, files).effective(wrap)), std::runtime_error);
}

TEST_F(LiveLayersTest, RefusalsSayWhyAndChangeNothing)
{
    using vx::core::Notation;
    struct
    {
        const char* path;
        const char* value;
        std::vector<const char*> words;
    } const cases[] = {
        {"commandwindow.WrapLinez",
         "true",
         {"no such path", "did you mean", "verdix.commandwindow.WrapLines"}},
        {"commandwindow.EightyColumns",
         "true",
         {"moved to verdix.commandwindow.UseEightyColumnDisplayWidth in R2021a"}},
        {"commandwindow", "true", {"is a group"}},
        {"commandwindow.WrapLines",
         "maybe",
         {"verdix.commandwindow.WrapLines", "maybe", "column 1", "true or false"}},
        {"commandwindow.NumberOfLinesInScrollBuffer", "999", {"999", "from 1000 to 25000"}},
        {"commandwindow.DisplayLineSpacing", "wide", {"wide", "loose", "compact"}},
    };
    for (const auto& test : cases) {
        try {
            changer().set(test.path, test.value, Notation::script);
            ADD_FAILURE() << test.path << " was set";
        } catch (const std::runtime_error& error) {
            for (const char* word : test.words) {
                EXPECT_NE(std::string(error.what()).find(word), std::string::npos)
                    << word << " in " << error.what();
            }
        }
    }
    EXPECT_FALSE(fs::exists(files.personal));
    EXPECT_EQ(changer().reset("commandwindow"), 0U);
    EXPECT_THROW(changer().reset("commandwindow.WrapLinez"), vx::core::UnknownPath);
    changer().set("commandwindow.WrapLines", "true", Notation::json);
    changer().set("commandwindow.NumericFormat", "short", Notation::script);
    EXPECT_EQ(changer().reset("commandwindow"), 2U);
    EXPECT_EQ(vx::core::readFile(files.personal), "{\n  \"release\": \"R2026a\",\n  \"settings\": {}\n}\n");
}

TEST_F(LiveLayersTest, CheckReportsEveryFaultAtOnceWithItsPlace)
{
    struct
    {
        const char* line;
        std::size_t column;  // 0: no fault
        const char* words;
    } const lines[] = {
        {"{ \"release\": \"2026a\",", 14, "is no release"},
        {"  \"comment\": \"mine\",", 3, "means nothing here"},
        {"  \"settings\": {", 0, ""},
        {"    \"verdix.commandwindow.WrapLines\": true,", 0, ""},
        {"    \"verdix.commandwindow.WrapLines\": false,", 5, "second time, first in line 4"},
        {"    \"verdix.commandwindow.WrapLinez\": true,", 5, "did you mean verdix.commandwindow.WrapLines"},
        {"    \"verdix.nothing.like.it.AtAllAnywhere\": 1,", 5, "is no setting"},
        {"    \"verdix.commandwindow.EightyColumns\": true,", 5, "UseEightyColumnDisplayWidth in R2021a"},
        {"    \"verdix.findfiles.GoToFileEnabled\": true,", 5, "removed in R2021a"},
        {"    \"verdix.editor.suggestions.Forgotten\": true,", 5, "removed in R2026a"},
        {"    \"verdix.commandwindow\": {},", 5, "is a group"},
        {"    \"ä\": 1,  \"verdix.commandwindow.NumericFormat\": 12,", 5, "is no setting"},
        {"    \"verdix.commandwindow.UseEightyColumnDisplayWidth\": \"yes\",", 59, "true or false"},
        {"    \"verdix.commandwindow.NumberOfLinesInScrollBuffer\": 1.5,", 59, "a whole number"},
        {"    \"verdix.commandwindow.SuppressCellBraces\": null,", 50, "true or false"},
        {"    \"verdix.commandwindow.DisplayLineSpacing\": \"wide\",", 50, "loose"},
        {"    \"verdix.colors.KeywordColor\": [1, 2],", 34, "1-by-3"},
        {"    \"verdix.colors.CommentColor\": [1, 2, 256],", 34, "255"},
        {"    \"verdix.colors.StringColor\": [[1, 2], [3]],", 44, "a list of 2"},
        {"    \"verdix.connector.InterfacesBlocklist\": \"a\",", 45, "a list of texts"},
        {"    \"verdix.confirmationdialogs\": true", 5, "is a group"},
        {"} }", 0, ""},
    };
    std::string text;
    std::size_t expected = 1;  // the second one of the line with two
    for (const auto& line : lines) {
        text.append(line.line).append("\n");
        expected += line.column == 0 ? 0 : 1;
    }
    ASSERT_EQ(expected, 20U);
    const auto faults = vx::core::checkSettingsFile(text, *tree, releases);
    EXPECT_EQ(faults.size(), expected);
    for (std::size_t index = 0; index < std::size(lines); ++index) {
        if (lines[index].column == 0) {
            continue;
        }
        const auto found = std::find_if(faults.begin(), faults.end(), [&](const vx::core::FileFault& fault) {
            return fault.position.line == index + 1 && fault.position.column == lines[index].column &&
                   fault.message.find(lines[index].words) != std::string::npos;
        });
        EXPECT_NE(found, faults.end()) << lines[index].line;
    }
    for (const auto& fault : faults) {
        RecordProperty("fault" + std::to_string(fault.position.line), fault.message);
    }
}

}  // namespace
