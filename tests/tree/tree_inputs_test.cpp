// What the process around the tree may change in it, and that it changes nothing else.

#include <component/environment.hpp>
#include <settings_core/values/value_format.hpp>
#include <tree/areas.hpp>

#include <foundation/host.hpp>
#include <foundation/log/diagnostic_logger.hpp>

#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <tests/faults/services.hpp>
#include <tests/support/outside_core.hpp>
#include <tests/support/running_framework.hpp>
#include <tuple>
#include <utility>

namespace {

using tests::CodeAnalyzerSettingsInterface;
using tests::DateTimeSettingsInterface;
using tests::OutsideCore;

using Values = std::map<std::string, std::string>;

const std::string connector = "VX_CD_ANYWHERE_DISABLED";
const std::string shell = "VX_UI_INTERNAL_FIGURE_USEAPPSHELL";
const std::string logs = "VX_WEBWINDOW_LOGS_SPEC";

Values buildValues()
{
    OutsideCore core("verdix");
    verdix::settings::tree::buildRootTree(core.root);
    Values values;
    for (const auto& node : core.nodes) {
        values[node.path] = vx::core::formatClassAndSize(node.properties.factoryValue) + ": " +
                            vx::core::formatValue(node.properties.factoryValue);
    }
    return values;
}

/// The settings whose value differs, with the new value.
Values difference(const Values& before, const Values& after)
{
    EXPECT_EQ(before.size(), after.size());
    Values changed;
    for (const auto& [path, value] : after) {
        if (before.at(path) != value) {
            changed[path] = value;
        }
    }
    return changed;
}

/// The settings that an environment variable changes, each of which its meaning names; with no value it is
/// unset.
Values changedBy(const std::string& variable, const char* value, const Values& plain)
{
    if (value != nullptr) {
        setenv(variable.c_str(), value, 1);
    }
    Values changed = difference(plain, buildValues());
    unsetenv(variable.c_str());
    for (const auto& [name, meaning] : settings::verdix::environmentInputs) {
        for (const auto& [path, changedValue] : changed) {
            EXPECT_TRUE(name != variable || std::string(meaning).find(path + ' ') != std::string::npos)
                << "the meaning of " << name << " does not name " << path;
        }
    }
    return changed;
}

/// Runs the check of a setting and says what the service was asked.
std::string check(const OutsideCore& core, const std::string& name)
{
    const auto& node = core.at("verdix.datetime." + name);
    const auto& validator = std::get<settings::core::CPPValidator>(node.properties.validator);
    try {
        validator.callable()(nullptr, name, node.properties.factoryValue);
        return "accepted";
    } catch (const std::runtime_error& error) {
        return error.what();
    }
}

// The code analyzer's service is looked up once per process, so this test owns the first tree that is built.
TEST(TreeInputs, Services)
{
    tests::RunningFramework framework;
    auto dateTime = std::make_shared<tests::DateTimeService>();
    const auto codeAnalyzer = std::make_shared<tests::CodeAnalyzerService>();
    auto dateTimeRegistration = framework.context().RegisterService<DateTimeSettingsInterface>(dateTime);
    auto codeAnalyzerRegistration =
        framework.context().RegisterService<CodeAnalyzerSettingsInterface>(codeAnalyzer);

    const Values withServices = buildValues();
    EXPECT_EQ(withServices.at("verdix.codeanalyzer.ActiveConfigurationFile"), "char, 1-by-9: team.json");
    auto served = std::make_unique<OutsideCore>("verdix");
    verdix::settings::tree::buildRootTree(served->root);

    dateTimeRegistration.Unregister();
    codeAnalyzerRegistration.Unregister();
    const Values changed = difference(buildValues(), withServices);
    EXPECT_EQ(changed, (Values{{"verdix.datetime.DefaultDateFormat", "char, 1-by-10: dd.MM.uuuu"},
                               {"verdix.datetime.DefaultFormat", "char, 1-by-16: dd.MM.uuuu HH:mm"},
                               {"verdix.datetime.DisplayLocale", "char, 1-by-5: de_CH"}}));
    EXPECT_EQ(codeAnalyzer->queries, 3) << "the service itself is kept and asked for every tree";

    dateTime->before = [](const std::string& query) { throw std::runtime_error(query); };
    EXPECT_EQ(check(*served, "DefaultDateFormat"), "checkFormat");
    EXPECT_EQ(check(*served, "DefaultFormat"), "checkFormat");
    EXPECT_EQ(check(*served, "DisplayLocale"), "checkLocale");
    EXPECT_EQ(check(*served, "ValidationWarning"), "checkValidationWarning");
    OutsideCore unserved("verdix");
    verdix::settings::tree::buildRootTree(unserved.root);
    EXPECT_EQ(check(unserved, "DefaultFormat"), "accepted");

    const std::weak_ptr<tests::DateTimeService> watched = dateTime;
    dateTime.reset();
    EXPECT_FALSE(watched.expired()) << "the settings hold the service that checks them";
    served.reset();
    EXPECT_TRUE(watched.expired());
}

TEST(TreeInputs, ConnectorVariable)
{
    for (const auto& [name, meaning] : settings::verdix::environmentInputs) {
        EXPECT_TRUE(name == connector || name == shell || name == logs) << "test what " << name << " changes";
    }
    tests::RunningFramework framework;
    const std::string unset = "false, because env var VX_CD_ANYWHERE_DISABLED was unset.";
    const std::string odd = "false, because VX_CD_ANYWHERE_DISABLED wasn't true/false. It was: ";
    const std::string isTrue = "true, based on value of VX_CD_ANYWHERE_DISABLED.";
    const std::string isFalse = "false, based on value of VX_CD_ANYWHERE_DISABLED.";
    // A record is written in one line.
    const std::pair<const char*, std::string> cases[] = {
        {nullptr, unset},           {"", unset},      {"true", isTrue},
        {"TRUE", isTrue},           {"tRuE", isTrue}, {"FALSE", isFalse},
        {" true", odd + " true"},   {"1", odd + "1"}, {"truee", odd + "truee"},
        {"yes\n%s", odd + "yes %s"}};

    testing::internal::CaptureStderr();
    const Values plain = buildValues();
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "") << "a decision is no warning";
    foundation::host::setLogThreshold(foundation::log::debug);
    for (const auto& [text, decision] : cases) {
        testing::internal::CaptureStderr();
        const Values changed = changedBy(connector, text, plain);
        EXPECT_EQ(testing::internal::GetCapturedStderr(),
                  "connector::desktop::userDir: debug: s.verdix.online.cdAnywhereDisabled set to " +
                      decision + "\n");
        EXPECT_EQ(changed, decision == isTrue
                               ? Values({{"verdix.online.cdAnywhereDisabled", "logical, 1-by-1: true"}})
                               : Values())
            << decision;
    }
    foundation::host::setLogThreshold(foundation::log::warning);
}

TEST(TreeInputs, UserInterface)
{
    tests::RunningFramework framework;
    const std::string useAppShell = "verdix.ui.internal.figure.UseAppShell";
    const std::string lifecycleLogs = "verdix.ui.internal.figure.webwindow.LifecycleLogs";
    const std::string on = "logical, 1-by-1: true";
    const std::string off = "logical, 1-by-1: false";

    const Values plain = buildValues();
    EXPECT_EQ(plain.at(useAppShell), on);
    EXPECT_EQ(plain.at(lifecycleLogs), "char, 1-by-4: none");

    const std::tuple<std::string, const char*, Values> cases[] = {
        {shell, "", {{useAppShell, off}}},
        {shell, "0", {{useAppShell, off}}},
        {shell, "1", {}},
        {shell, "true", {{useAppShell, off}}},
        {logs, "", {{lifecycleLogs, "char, 1-by-0: "}}},
        {logs, "all:1", {{lifecycleLogs, "char, 1-by-5: all:1"}}},
    };
    for (const auto& [variable, value, changed] : cases) {
        EXPECT_EQ(changedBy(variable, value, plain), changed) << variable << "='" << value << '\'';
    }
}

TEST(TreeInputs, FeatureSwitchesChangeTheSettingsThatTheirMeaningNames)
{
    tests::RunningFramework framework;
    const Values plain = buildValues();
    for (const auto& [name, meaning] : settings::verdix::featureInputs) {
        foundation::host::setFeature(name, -1);  // on, like any value but 0
        const Values changed = difference(plain, buildValues());
        foundation::host::setFeature(name, 0);
        for (const auto& [path, value] : plain) {
            const bool isNamed = std::string(meaning).find(path + ' ') != std::string::npos;
            EXPECT_EQ(changed.contains(path), isNamed) << name << ": " << path;
        }
        EXPECT_FALSE(changed.empty()) << name;
    }
}

}  // namespace
