#include <tool/tree_lint.hpp>

#include <verdix/settings/internal/values.hpp>

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace {

using settings::core::MValidator;
using settings::core::SettingValueValidator;
using Properties = settings::core::detail::FactorySettingProperties;
using verdix::settings::internal::charvec;

Properties textSetting(const char* text, SettingValueValidator::ConfigData record = {})
{
    return {false, false, charvec(std::string(text)), MValidator("verdix.settings", "mustBeStringScalar"), {},
            false, false, {std::move(record)}};
}

const Properties groupProperties{false, false, {}, {}, {}, false, false, {}};

TEST(TreeLint, NamesEachMistakeAndTheFileToEdit)
{
    const vx::core::SettingsTree tree("verdix");
    const auto web = tree.root()->createFactorySetting("web", false, groupProperties);
    web->createFactorySetting("Good", true, textSetting("a", {{.allowedValues = {u"a"}}}));
    web->createFactorySetting("Outside", true, textSetting("b", {{.allowedValues = {u"a"}}}));
    web->createFactorySetting("Impossible", true,
                              {false, false, {}, {}, {}, false, false, {{{.range = {{2, 1}}}}}});
    web->createFactorySetting("Only", true,
                              {false, false, {}, {}, {}, false, false, {{{.range = {{1, 1}}}}}});
    web->createFactorySetting("Twice", true, textSetting(""));
    web->createFactorySetting("twice", true, textSetting(""));
    web->createFactorySetting("empty", false, groupProperties);
    tree.root()->createFactorySetting("project", false, groupProperties);
    tree.root()->createFactorySetting("Project", true, textSetting(""));

    settings::core::ReleaseChangeTable releases;
    releases[0].release = "R2030a";
    releases[0].changes.emplace_back("remove", std::vector<std::string>{"verdix.web.Good"},
                                     std::vector<std::string>());
    releases[0].changes.emplace_back("move", std::vector<std::string>{"verdix.web.Old"},
                                     std::vector<std::string>{"verdix.web.Nowhere"});
    releases[0].changes.emplace_back("move", std::vector<std::string>{"verdix.web.Nowhere"},
                                     std::vector<std::string>{"verdix.web.Outside"});

    std::vector<std::string> found;
    for (const auto& [file, path, message] : vx::tool::lintTree(tree, releases)) {
        found.push_back(file + " " + path);
        EXPECT_FALSE(message.empty());
    }
    EXPECT_THAT(found, testing::UnorderedElementsAre(
                           "tree/web.cpp verdix.web.Outside", "tree/web.cpp verdix.web.Impossible",
                           "tree/web.cpp verdix.web.twice", "tree/Project.cpp verdix.Project",
                           "tree/web.cpp verdix.web.empty", "migration/release_changes.cpp verdix.web.Good",
                           "migration/release_changes.cpp verdix.web.Old"));
}

}  // namespace
