// Walks the tree as it is built, instead of repeating what it holds.

#include <component/factory_settings_verdix.hpp>
#include <review/source_file.hpp>
#include <settings_core/files/input_file.hpp>
#include <settings_core/tree/settings_tree.hpp>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <stdexcept>
#include <string>
#include <tests/support/running_framework.hpp>
#include <vector>

namespace {

TEST(LiveTree, HasThePathsAndFilesThatOthersRelyOn)
{
    tests::RunningFramework framework;
    settings::verdix::FactorySettingsVerdix component;
    const auto tree = vx::core::loadTree(component);
    std::vector<std::string> paths;
    component.getSettingPathList(paths);
    for (const auto& path : paths) {
        EXPECT_NE(tree.find(path), nullptr)
            << path << " is missing, but component/factory_settings_verdix.cpp lists it: remove it there";
    }
    for (const vx::core::Node* node : tree.nodes()) {
        if (node->kind() == vx::core::NodeKind::group) {
            const std::string file = vx::review::sourceFileOf(node->fullName());
            const auto text = vx::core::readFile(std::filesystem::path(VX_SOURCE_DIR) / file);
            EXPECT_THAT(text.value_or(""), testing::HasSubstr('"' + std::string(node->name()) + '"'))
                << node->fullName() << " is not defined in " << file
                << ": cmake/WriteSourceLocations.cmake does not find the call that adds it";
        }
    }
}

}  // namespace
