// Walks the tree as it is built, instead of repeating what it holds.

#include <component/factory_settings_verdix.hpp>
#include <settings_core/settings_tree.hpp>
#include <settings_core/validation.hpp>
#include <tool/source_file.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <tests/support/running_framework.hpp>
#include <tests/support/values.hpp>
#include <variant>
#include <vector>

namespace {

using foundation::verdixdata::Array;
using vx::core::Node;

struct LiveTreeTest : testing::Test
{
    [[nodiscard]] std::vector<const Node*> checkedSettings() const
    {
        std::vector<const Node*> settings;
        std::ranges::copy_if(tree.nodes(), std::back_inserter(settings), [](const Node* node) {
            const auto& properties = node->properties();
            return !std::holds_alternative<std::monostate>(properties.validator) ||
                   !properties.valueValidators.empty();
        });
        return settings;
    }

    tests::RunningFramework framework;
    settings::verdix::FactorySettingsVerdix component;
    vx::core::SettingsTree tree = vx::core::loadTree(component);
};

/// One value of each class that the tree knows, none of them one that a setting could mean.
std::vector<Array> strangeValues()
{
    using namespace tests;
    return {row<bool>({true, false}), text("no such word \x01"), row<double>({-0.5, 1e300}),
            row<int>({-7, 7, 7, 7, 7}), texts({"no", "such", "words", "no", "such"})};
}

TEST_F(LiveTreeTest, SettingsAcceptTheirOwnValueAndRefuseOthers)
{
    const auto settings = checkedSettings();
    ASSERT_GT(settings.size(), 900U);
    const auto strange = strangeValues();
    for (const Node* setting : settings) {
        const auto own = vx::core::checkDefaultValue(*setting);
        // Nobody has chosen a platform when the tree is built, and there is no word for that.
        const bool exception = setting->fullName() == "verdix.keyboard.shortcuts.ActivePlatform";
        EXPECT_EQ(own.accepted(), !exception) << setting->fullName() << ": " << own.message;
        const auto refused = std::ranges::count_if(
            strange, [&](const Array& value) { return !vx::core::checkValue(*setting, value).accepted(); });
        EXPECT_GE(refused, 4) << setting->fullName() << " accepts values of several classes";
    }
}

TEST_F(LiveTreeTest, RowsOfAFixedLengthTakeNoTextOfThatLength)
{
    std::size_t rows = 0;
    for (const Node* setting : checkedSettings()) {
        for (const auto& rule : setting->properties().valueValidators) {
            if (rule.size) {
                ++rows;
                EXPECT_FALSE(vx::core::checkValue(*setting, tests::text(std::string(rule.size->columns, 'x')))
                                 .accepted())
                    << setting->fullName();
            }
        }
    }
    EXPECT_GT(rows, 0U);
}

TEST_F(LiveTreeTest, PathsAndFilesThatOthersRelyOnExist)
{
    std::vector<std::string> paths;
    component.getSettingPathList(paths);
    for (const auto& path : paths) {
        EXPECT_NE(tree.find(path), nullptr)
            << path << " is gone, but component/factory_settings_verdix.cpp lists it: take it out there";
    }
    for (const Node* node : tree.nodes()) {
        const std::string file = vx::tool::sourceFileOf(node->fullName());
        EXPECT_TRUE(std::filesystem::exists(VX_SOURCE_DIR "/" + file))
            << node->fullName() << " is not described in " << file << ": say where in tool/source_file.cpp";
    }
}

}  // namespace
