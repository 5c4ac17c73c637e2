// A settings file that was damaged: each verb says where, or reads what another reader of JSON reads, and
// none changes a file that it does not understand.

#include <component/factory_settings_verdix.hpp>
#include <settings_core/file_check.hpp>
#include <settings_core/layers.hpp>
#include <settings_core/settings_editor.hpp>
#include <settings_core/value_parsing.hpp>

#include <boost/json.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fuzz/fuzzing.hpp>
#include <iostream>
#include <optional>
#include <string>
#include <tests/damage/damage.hpp>
#include <tests/support/files.hpp>
#include <tests/support/running_framework.hpp>

namespace {

namespace json = boost::json;
using vx::core::SettingsFile;

constexpr const char* changed = "verdix.commandwindow.WrapLines";

struct DamagedSettingsTest : testing::Test
{
    /// Some settings of each area, and some that moved or went since.
    [[nodiscard]] std::string manySettings() const
    {
        std::string settings;
        std::size_t index = 0;
        for (const vx::core::Node* node : tree.nodes()) {
            const auto& value = node->properties().factoryValue;
            if (value.isAssigned() && ++index % 12 == 0) {
                settings += "    \"" + node->getFullName() + "\": " + vx::core::valueToJson(value) + ",\n";
            }
        }
        return "{\n  \"release\": \"R2020a\",\n  \"settings\": {\n" + settings +
               "    \"verdix.commandwindow.EightyColumns\": true,\n"
               "    \"verdix.keyboard.suggestions.ShowAutomatically\": false\n  }\n}\n";
    }

    /// Its settings as another reader sees them; nothing when it is not a settings file.
    static std::optional<json::object> settingsIn(const std::string& image)
    {
        json::error_code error;
        const json::value root = json::parse(image, error);
        if (error || !root.is_object()) {
            return std::nullopt;
        }
        const json::value* settings = root.get_object().if_contains("settings");
        if (settings == nullptr) {
            return json::object();
        }
        return settings->is_object() ? std::optional(settings->get_object()) : std::nullopt;
    }

    static void expectSame(const SettingsFile& file, const json::object& settings)
    {
        for (const vx::core::JsonMember& setting : file.settings()) {
            const json::value* other = settings.if_contains(setting.name);
            ASSERT_NE(other, nullptr) << setting.name;
            EXPECT_EQ(json::parse(file.find(setting.name)->value.text), *other) << setting.name;
        }
        EXPECT_LE(settings.size(), file.settings().size());
    }

    /// What the file says, which has to be what the other reader says; whether it was read.
    bool read(const std::string& image) const
    {
        const auto settings = settingsIn(image);
        try {
            const auto file = vx::core::loadSettingsFile(copy);
            EXPECT_TRUE(settings && file);
            expectSame(file.value(), settings.value());
            return true;
        } catch (const std::runtime_error& error) {
            EXPECT_FALSE(settings) << error.what();
            EXPECT_THAT(error.what(), testing::HasSubstr(".json:"));
            return false;
        }
    }

    /// Whether a setting could be set: in a file that is read, with the other settings as they were.
    void set(const std::string& image, bool isRead) const
    {
        try {
            vx::core::SettingsEditor(tree, releases, copy).set(changed, "true", vx::core::Notation::script);
            EXPECT_TRUE(isRead);
            auto expected = settingsIn(image).value();
            expected[changed] = true;
            EXPECT_EQ(settingsIn(tests::readFile(copy)), expected);
        } catch (const std::runtime_error& error) {
            EXPECT_FALSE(isRead) << error.what();
            EXPECT_EQ(tests::readFile(copy), image);
        }
    }

    tests::RunningFramework framework;
    settings::verdix::FactorySettingsVerdix component;
    vx::core::SettingsTree tree = vx::core::loadTree(component);
    settings::core::ReleaseChangeTable releases = vx::core::loadReleaseChanges(component);
    tests::TestFolder folder;
    std::filesystem::path copy = folder / "copy.json";
    std::string text = manySettings();
};

TEST_F(DamagedSettingsTest, IsReadRightOrRefused)
{
    tests::writeFile(copy, text);
    ASSERT_TRUE(read(text));
    tests::Damage damage;
    std::size_t readImages = 0;
    const std::size_t images = tests::damagedImages();
    for (std::size_t index = 0; index < images; ++index) {
        const std::string image = damage.of(text);
        tests::writeFile(copy, image);
        SCOPED_TRACE("image " + std::to_string(index));
        const bool isRead = read(image);
        readImages += isRead ? 1 : 0;
        EXPECT_TRUE(isRead || vx::core::checkSettingsFile(image, tree, releases).size() == 1);
        // The laws of checking, migrating and rewriting end the process where they do not hold.
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(image.data()), image.size());
        set(image, isRead);
        ASSERT_FALSE(HasFailure()) << image;
    }
    std::cout << images << " damaged settings files of " << text.size() << " bytes: " << readImages
              << " read as another reader reads them, " << images - readImages << " refused\n";
}

}  // namespace
