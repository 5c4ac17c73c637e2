#include <review/tree_lint.hpp>

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
    const auto change = [&releases](std::uint64_t index, std::string from, std::vector<std::string> to = {}) {
        releases[index].release = index == 0 ? "R2020a" : "R2020b";
        releases[index].changes.emplace_back(to.empty() ? "remove" : "move", std::vector{std::move(from)},
                                             std::move(to));
    };
    change(0, "verdix.web.Older", {"verdix.web.Good"});
    change(0, "verdix.web.Good");
    change(0, "verdix.web.Nowhere");
    change(0, "verdix.web.Old", {"verdix.web.Nowhere"});
    change(0, "verdix.web.Twice");
    change(1, "verdix.web.Back", {"verdix.web.Twice"});

    std::vector<std::string> found;
    for (const auto& [path, message, position] : vx::review::lintTree(tree, releases)) {
        found.push_back(position.file + " " + path);
        EXPECT_FALSE(message.empty());
    }
    EXPECT_THAT(found, testing::UnorderedElementsAre(
                           "tree/web.cpp verdix.web.Outside", "tree/web.cpp verdix.web.Impossible",
                           "tree/web.cpp verdix.web.twice", "tree/Project.cpp verdix.Project",
                           "tree/web.cpp verdix.web.empty", "migration/release_changes.cpp verdix.web.Good",
                           "migration/release_changes.cpp verdix.web.Old"));
}

}  // namespace
