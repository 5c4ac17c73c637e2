// Settings files over aliases of aliases, settings without a factory value, and a table without releases.

#include <settings_core/constraints/validation.hpp>
#include <settings_core/files/base_folders.hpp>
#include <settings_core/files/layers.hpp>
#include <settings_core/files/settings_editor.hpp>
#include <settings_core/releases/migration.hpp>
#include <settings_core/releases/release_name.hpp>
#include <settings_core/tree/path_lookup.hpp>
#include <settings_core/values/value_format.hpp>
#include <settings_core/values/value_parsing.hpp>

#include <gmock/gmock.h>

#include <cstdlib>
#include <pwd.h>
#include <tests/support/files.hpp>
#include <tests/support/sample_settings.hpp>
#include <tests/support/values.hpp>
#include <unistd.h>

namespace {

using namespace vx::core;
using testing::HasSubstr;
using testing::ThrowsMessage;
using tests::matrix;
using tests::text;

struct OddTreeTest : testing::Test
{
    tests::TestFolder folder;
    SettingsTree tree = tests::sampleTree();
    const settings::core::ReleaseChangeTable releases{};
    const std::string file = folder / "settings.json";
    SettingsEditor changer{tree, releases, file};
};

TEST_F(OddTreeTest, ChangesWhatCanBeChanged)
{
    EXPECT_TRUE(changer.reset("rule.words").settings.empty()) << "there is no file";
    const auto expectRefusal = [&](const char* path, const char* value, const char* words) {
        EXPECT_THAT(
            [&] {
                changer.apply({{path, ValueText{value}}});
            },
            ThrowsMessage<InvalidChanges>(HasSubstr(words)));
    };
    expectRefusal("commandwindow.fixed", "2", "read-only");
    expectRefusal("alias.Round", "a", "leads back");
    expectRefusal("rule.words", "c", "short, long");
    EXPECT_TRUE(changer.apply({{"rule.words", {}}}).settings.empty()) << "nothing to remove";
    EXPECT_FALSE(std::filesystem::exists(file));

    changer.apply({{"alias.First", text("long")}, {"rule.size", ValueText{"[1 2; 3 4]"}}});
    EXPECT_EQ(tests::readFile(file), "{\n  \"settings\": {\n    \"verdix.rule.words\": \"long\",\n"
                                     "    \"verdix.rule.size\": [[1, 2], [3, 4]]\n  }\n}\n");
    Layers layers(tree, {{folder / "none"}, file});
    EXPECT_EQ(formatValue(layers.effective(nodeAt(tree, releases, "alias.Second")).value), "long");
    EXPECT_TRUE(changer.reset("colors").settings.empty());
    const auto reset = changer.reset("alias.Second").settings;
    ASSERT_EQ(reset.size(), 1U) << "what it stands for";
    EXPECT_EQ(formatValue(reset.front().after.value), "short");
    EXPECT_FALSE(changer.apply({{"rule.size", {}}}).settings.front().after.value.isAssigned());
}

TEST_F(OddTreeTest, RefusesWhatNoReleaseOrSettingCanTell)
{
    EXPECT_THAT([&] { static_cast<void>(migrateSettings(parseSettingsFile("{}", file), tree, releases)); },
                testing::Throws<std::runtime_error>());
    EXPECT_THAT([&] { static_cast<void>(checkValue(nodeAt(tree, releases, "alias.First"), text("a"))); },
                ThrowsMessage<std::invalid_argument>(HasSubstr("an alias of, verdix.alias.Second")));
}

TEST_F(OddTreeTest, FindsFilesByUsableFoldersOnly)
{
    const auto filesWith = [](const char* home, const char* own, const char* shared) {
        ::setenv("HOME", home, 1);
        ::setenv("XDG_CONFIG_HOME", own, 1);
        ::setenv("XDG_CONFIG_DIRS", shared, 1);
        std::string files = defaultPersonalFile();
        for (const auto& found : defaultInstallationFiles()) {
            files += " " + found.string();
        }
        return files;
    };
    EXPECT_EQ(filesWith("/me", "", ""), "/me/.config/verdix/settings.json /etc/xdg/verdix/settings.json");
    EXPECT_EQ(filesWith("/me", "not/absolute", "also:not"),
              "/me/.config/verdix/settings.json /etc/xdg/verdix/settings.json");
    EXPECT_EQ(filesWith("/me", "/own", "/none:/more"),
              "/own/verdix/settings.json /none/verdix/settings.json /more/verdix/settings.json");
    EXPECT_EQ(filesWith("/me", "/own", "no:/none:/none"),
              "/own/verdix/settings.json /none/verdix/settings.json");
    EXPECT_THAT(filesWith("", "", ""), testing::StartsWith(::getpwuid(::geteuid())->pw_dir));
    EXPECT_THAT([&] { filesWith("me", "not/absolute", ""); },
                ThrowsMessage<std::runtime_error>(HasSubstr("HOME is not an absolute path: me")));
}

TEST(ReleaseName, IsAYearAndAHalf)
{
    for (const char* wrong :
         {"", "R202a", "r2022b", "R2022c", "R2022A", "R20/2a", "R20:2a", "R-022a", "R2022ab"}) {
        EXPECT_EQ(parseReleaseName(wrong), std::nullopt) << wrong;
    }
    for (const char* name : {"R2022a", "R2022b", "R0000a", "R0099b", "R9999b"}) {
        EXPECT_EQ(formatReleaseName(parseReleaseName(name).value()), name);
    }
    const settings::core::ReleaseChangeTable table{{0, {"soon", false, {}}}};
    EXPECT_THAT([&] { static_cast<void>(newestRelease(table)); },
                ThrowsMessage<std::runtime_error>(HasSubstr("\"soon\"")));
}

TEST(OddValues, AreToldAndNotStored)
{
    using foundation::verdixdata::Array;
    const Array solid = foundation::verdixdata::ArrayFactory().createArray<double>({1, 2, 3});
    const auto nested =
        foundation::verdixdata::ArrayFactory().createArray<foundation::verdixdata::Array>({1, 1});
    const Array values[] = {
        solid, nested, matrix<double>(0, 3, {}), matrix<char16_t>(2, 1, {u'a', u'b'}), {}};
    for (const Array& value : values) {
        EXPECT_THAT([&] { static_cast<void>(valueToJson(value)); },
                    ThrowsMessage<std::invalid_argument>(HasSubstr("cannot hold")));
    }
    EXPECT_EQ(formatValue(matrix<double>(0, 3, {})), "[]");
}

}  // namespace
