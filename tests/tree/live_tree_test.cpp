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
    std::size_t checked = 0;
    std::size_t rows = 0;
    const auto strange = strangeValues();
    for (const Node* setting : tree.nodes()) {
        const auto& properties = setting->properties();
        if (std::holds_alternative<std::monostate>(properties.validator) &&
            properties.valueValidators.empty()) {
            continue;
        }
        ++checked;
        const auto own = vx::core::checkDefaultValue(*setting);
        // Nobody has chosen a platform when the tree is built, and there is no word for that.
        const bool exception = setting->fullName() == "verdix.keyboard.shortcuts.ActivePlatform";
        EXPECT_EQ(own.accepted(), !exception) << setting->fullName() << ": " << own.message;
        const auto accepts = [setting](const Array& value) {
            return vx::core::checkValue(*setting, value).accepted();
        };
        EXPECT_LE(std::ranges::count_if(strange, accepts), 1)
            << setting->fullName() << " accepts values of several classes";
        for (const auto& rule : properties.valueValidators) {
            if (rule.size) {
                ++rows;
                EXPECT_FALSE(accepts(tests::text(std::string(rule.size->columns.value_or(1), 'x'))))
                    << setting->fullName() << " takes a text for a row of that length";
            }
        }
    }
    EXPECT_GT(checked, 900U);
    EXPECT_GT(rows, 0U);
}

TEST_F(LiveTreeTest, PathsAndFilesThatOthersRelyOnExist)
{
    std::vector<std::string> paths;
    component.getSettingPathList(paths);
    for (const auto& path : paths) {
        EXPECT_NE(tree.find(path), nullptr)
            << path << " is missing, but component/factory_settings_verdix.cpp lists it: remove it there";
    }
    for (const Node* node : tree.nodes()) {
        const std::string file = vx::tool::sourceFileOf(node->fullName());
        EXPECT_TRUE(std::filesystem::exists(VX_SOURCE_DIR "/" + file))
            << node->fullName() << " is not defined in " << file << ": add its file to tool/source_file.cpp";
    }
}

}  // namespace
