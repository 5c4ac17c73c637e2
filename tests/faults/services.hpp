#pragma once

#include <factory_settings_interface/code_analyzer_settings_interface.hpp>
#include <factory_settings_interface/date_time_settings_interface.hpp>
#include <foundation/host.hpp>

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <memory>
#include <string>
#include <tests/support/running_framework.hpp>

namespace tests {

using factory_settings_interface::CodeAnalyzerSettingsInterface;
using factory_settings_interface::DateTimeSettingsInterface;

struct AskedService
{
    void ask(const std::string& query)
    {
        ++queries;
        if (before) {
            before(query);
        }
    }

    /// Called with the query's name before the service answers; what it raises, the query raises. Set it
    /// while nobody asks.
    std::function<void(const std::string& query)> before;
    std::atomic<int> queries{0};
};

struct DateTimeService final : DateTimeSettingsInterface, AskedService
{
    factory_settings_interface::DateTimeDefaults getDefaults() override
    {
        ask("getDefaults");
        return {u"de_CH", u"dd.MM.uuuu", u"dd.MM.uuuu HH:mm"};
    }
    void checkFormat(const Node&, const std::string&, const Array&) override { ask("checkFormat"); }
    void checkLocale(const Node&, const std::string&, const Array&) override { ask("checkLocale"); }
    void checkValidationWarning(const Node&, const std::string&, const Array&) override
    {
        ask("checkValidationWarning");
    }
};

struct CodeAnalyzerService final : CodeAnalyzerSettingsInterface, AskedService
{
    std::u16string getDefaultConfigurationFile() override
    {
        ask("getDefaultConfigurationFile");
        return u"team.json";
    }
};

/// A framework, and services to offer in it.
struct ServicesTest : testing::Test
{
    ~ServicesTest() override { foundation::host::setMessageHook(nullptr); }

    RunningFramework framework;
    cppmicroservices::BundleContext context = framework.context();
    std::shared_ptr<DateTimeService> dateTime = std::make_shared<DateTimeService>();
    std::shared_ptr<CodeAnalyzerService> codeAnalyzer = std::make_shared<CodeAnalyzerService>();
};

}  // namespace tests
