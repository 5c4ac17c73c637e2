#include <builder/values.hpp>
#include <review/tree_lint.hpp>

#include <verdix/settings/internal/values.hpp>

#include <gmock/gmock.h>

#include <csignal>
#include <map>
#include <stdexcept>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

using settings::core::MValidator;
using settings::core::SettingValueValidator;
using Properties = settings::core::detail::FactorySettingProperties;
using ConfigData = SettingValueValidator::ConfigData;
using verdix::settings::internal::charvec;
using verdix::settings::internal::makeScalar;

Properties textSetting(const char* text)
{
    return {false,
            false,
            charvec(std::string(text)),
            MValidator("verdix.settings", "mustBeStringScalar"),
            {},
            false,
            false,
            {}};
}

Properties textSetting(const char* text, ConfigData record)
{
    Properties properties = textSetting(text);
    properties.valueValidators = {std::move(record)};
    return properties;
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
    web->createFactorySetting("Unset", true, {false, false, {}, {}, {}, false, false, {}});
    web->createFactorySetting("Unlimited", true, textSetting("", ConfigData()));
    web->createFactorySetting("NoLength", true, textSetting("", {{.maximumLength = 0}}));
    web->createFactorySetting("Repeated", true, textSetting("a", {{.allowedValues = {u"a", u"a"}}}));
    web->createFactorySetting("Padded", true, textSetting("a", {{.allowedValues = {u"a", u"b\t"}}}));
    Properties number{false, false, makeScalar<int>(1), {}, {}, false, false, {{{.maximumLength = 1}}}};
    web->createFactorySetting("Number", true, number);
    number.valueValidators.clear();
    number.errorHandler = [](const std::string&, const auto&) {};
    web->createFactorySetting("Handled", true, number);
    number.valueValidators = {{{.range = {{0, 2}}}}};
    web->createFactorySetting("Silent", true, number);
    number.errorHandler = [](const std::string& name, const auto&) { throw std::runtime_error(name); };
    web->createFactorySetting("Explained", true, number);
    number.valueValidators = {{{.range = {{0.5, 2}}}}};
    web->createFactorySetting("Fraction", true, number);
    number.valueValidators = {{{.range = {{0, 0x80000000U}}}}};
    web->createFactorySetting("Large", true, number);
    web->createFactorySetting("Latin1", true, textSetting("Gr\xf6\xdf"));
    Properties control{false, false, verdix::settings::internal::cellstr({"a\n"}), {}, {}, false, false, {}};
    web->createFactorySetting("Control", true, control);
    web->createFactorySetting(
        "ReadOnly", true,
        {false, true, {}, MValidator("verdix.settings", "mustBeStringScalar"), {}, false, false, {}});
    const auto addChecked = [&web](const char* name, settings::core::Validator validator) {
        Properties checked = textSetting("14px");
        checked.validator = std::move(validator);
        web->createFactorySetting(name, true, checked);
    };
    addChecked("NoFunction", settings::core::CPPValidator({}, "", ""));
    addChecked("Crashes", settings::core::CPPValidator([](const auto&...) { std::raise(SIGKILL); }, "", ""));
    addChecked("Hangs", settings::core::CPPValidator([](const auto&...) { ::pause(); }, "", ""));
    addChecked("Native", settings::core::CValidator("libvxservices", "validateFontSize"));
    addChecked("Misspelt", settings::core::CValidator("libvxservices", "validateFontsize"));
    addChecked("AcceptsAll",
               settings::core::CValidator("libvxgraphics_state", "getDefaultFigureTypeForSetting"));
    for (const char* name : {"Good_1", "1st", "Sp ace", "Hy-phen", "\u00dcber", "_Line"}) {
        web->createFactorySetting(name, true, textSetting(""));
    }
    for (const auto& [name, target] : std::map<std::string, std::string>{{"Missing", "verdix.web.Nothing"},
                                                                         {"OfGroup", "verdix.web"},
                                                                         {"Itself", "verdix.web.Itself"},
                                                                         {"There", "verdix.web.Here"},
                                                                         {"Here", "verdix.web.There"},
                                                                         {"ToLoop", "verdix.web.There"},
                                                                         {"Relative", "web.Good"},
                                                                         {"OtherRoot", "Verdix.web.Good"},
                                                                         {"Elsewhere", "web.Nothing"}})
    {
        Properties alias = groupProperties;
        alias.setAliasName(std::string(target));
        web->createFactorySetting(name, true, alias);
    }
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
    std::vector<std::string> expected{"tree/Project.cpp verdix.Project",
                                      "platform/settings_core/tree/secret_settings.hpp "
                                      "verdix.desktop.login.SessionId",
                                      "migration/release_changes.cpp verdix.web.Good",
                                      "migration/release_changes.cpp verdix.web.Old"};
    for (const char* name :
         {"Outside",  "Impossible", "Unset",    "Unlimited", "NoLength", "Repeated",  "Padded",
          "Number",   "Handled",    "1st",      "Sp ace",    "Hy-phen",  "\u00dcber", "_Line",
          "Silent",   "Fraction",   "Large",    "Latin1",    "Control",  "ReadOnly",  "NoFunction",
          "Misspelt", "AcceptsAll", "Relative", "OtherRoot", "Missing",  "OfGroup",   "Itself",
          "There",    "Here",       "twice",    "empty",     "Crashes",  "Hangs"})
    {
        expected.push_back("tree/web.cpp verdix.web." + std::string(name));
    }
    EXPECT_THAT(found, testing::UnorderedElementsAreArray(expected));
}

}  // namespace
