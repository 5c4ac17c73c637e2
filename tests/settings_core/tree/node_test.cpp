#include <settings_core/tree/path_lookup.hpp>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <tests/settings_core/new_setting.hpp>
#include <tests/support/allocations.hpp>

namespace {

using tests::noProperties;
using vx::core::NodeKind;
using vx::core::SettingsTree;

std::vector<std::string> pathsOf(const SettingsTree& tree)
{
    std::vector<std::string> paths;
    for (const vx::core::Node* node : tree.nodes()) {
        paths.push_back(node->getFullName());
    }
    return paths;
}

TEST(Node, IsFoundByItsPathAndStandsInCreationOrder)
{
    SettingsTree tree("root");
    const auto b = tree.root()->createFactorySetting("b", false, noProperties());
    b->createFactorySetting("Two", true, noProperties());
    const auto a = tree.root()->createFactorySetting("a", false, noProperties());
    a->createFactorySetting("Two", true, noProperties());
    b->createFactorySetting("One", true, noProperties());

    EXPECT_THAT(pathsOf(tree),
                testing::ElementsAre("root.b", "root.b.Two", "root.a", "root.a.Two", "root.b.One"));
    const vx::core::Node* node = tree.find("root.b.One");
    ASSERT_NE(node, nullptr);
    EXPECT_EQ(node->name(), "One");
    EXPECT_EQ(node->kind(), NodeKind::setting);
    EXPECT_EQ(node->parent(), tree.find("root.b"));
    EXPECT_EQ(&node->parent()->children().back(), node);
    EXPECT_EQ(tree.find("root"), tree.root().get());
    EXPECT_EQ(tree.root()->name(), "root");
    EXPECT_EQ(tree.find("root.b.one"), nullptr);
}

TEST(Node, RefusesNamesThatCannotBe)
{
    SettingsTree tree("root");
    const auto group = tree.root()->createFactorySetting("g", false, noProperties());
    const auto setting = group->createFactorySetting("Twice", true, noProperties());
    const auto expectRefusal = [](settings::core::MSettings& parent, const char* name,
                                  const std::string& text) {
        EXPECT_THAT([&] { return parent.createFactorySetting(name, true, noProperties()); },
                    testing::ThrowsMessage<std::invalid_argument>(text));
    };
    expectRefusal(*group, "Twice",
                  "root.g.Twice exists already: names are unique within a group, so rename this node "
                  "or remove the other.");
    const std::string advice =
        "is not the name of a node: give one component of a path, not empty and without dots.";
    expectRefusal(*group, "a.b", "\"a.b\" under root.g " + advice);
    expectRefusal(*group, "", "\"\" under root.g " + advice);
    expectRefusal(*setting, "Child",
                  "root.g.Twice is a setting and cannot have the child \"Child\": create it under a group.");
    EXPECT_THROW(SettingsTree("a.b"), std::invalid_argument);
    EXPECT_THAT(pathsOf(tree), testing::ElementsAre("root.g", "root.g.Twice"));
}

TEST(Node, FailedAllocationsLeaveTheTreeAsItWas)
{
    SettingsTree tree("root");
    std::size_t failures = 0;
    for (std::size_t i = 0; i < 2000; ++i) {  // so many that the tree's memory, order and index all grow
        const std::string name = "name" + std::to_string(i);
        const std::string path = "root." + name;
        failures +=
            tests::failEveryAllocation([&] { tree.root()->createFactorySetting(name, true, noProperties()); },
                                       [&] {
                                           EXPECT_EQ(tree.nodes().size(), i);
                                           EXPECT_EQ(tree.root()->children().size(), i);
                                           EXPECT_EQ(tree.find(path), nullptr);
                                       });
        EXPECT_NE(tree.find(path), nullptr);
    }
    EXPECT_GT(failures, 3U);
}

TEST(Node, IsItselfAmongSoManyThatHashesOfPathsMeet)
{
    constexpr int count = 250'000;  // some seven pairs of equal hashes of 32 bits
    SettingsTree tree("root");
    const auto root = tree.root();
    for (int i = 0; i < count; ++i) {
        root->createFactorySetting(std::to_string(i), true, noProperties());
    }
    for (int i = 0; i < count; ++i) {
        const std::string name = std::to_string(i);
        const vx::core::Node* node = tree.find("root." + name);
        ASSERT_TRUE(node != nullptr && node->name() == name) << name;
    }
}

TEST(Node, AHandleKeepsWhatTheTreeLeaves)
{
    SettingsTree tree("root");
    const auto group = tree.root()->createFactorySetting("g", false, noProperties());
    tree = SettingsTree("other");
    EXPECT_EQ(group->createFactorySetting("Late", true, noProperties())->getFullName(), "root.g.Late");
}

TEST(Node, AnAliasLeadsToItsTargetOrNowhere)
{
    SettingsTree tree("root");
    tree.root()->createFactorySetting("Target", true, noProperties());
    const auto alias = [&tree](const std::string& name, std::string target) {
        auto properties = noProperties();
        properties.setAliasName(std::move(target));
        tree.root()->createFactorySetting(name, true, properties);
        return resolveSetting(tree, *tree.find("root." + name)).fullName();
    };
    EXPECT_EQ(alias("Direct", "root.Target"), "root.Target");
    EXPECT_EQ(alias("Further", "root.Direct"), "root.Target");
    const auto throws = [](const char* message) {
        return testing::ThrowsMessage<std::exception>(testing::HasSubstr(message));
    };
    EXPECT_THAT([&] { alias("Outside", "elsewhere.Target"); }, throws("which is not in this tree"));
    EXPECT_THAT([&] { alias("Itself", "root.Itself"); }, throws("which leads back to it"));
    EXPECT_THAT([&] { alias("Empty", ""); }, throws("root.Empty is an alias with an empty target: give the "
                                                    "full path of the setting that it stands for."));
    EXPECT_EQ(tree.find("root.Empty"), nullptr);
}

}  // namespace
