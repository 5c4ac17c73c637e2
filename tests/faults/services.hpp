#pragma once

#include <factory_settings_interface/code_analyzer_settings_interface.hpp>
#include <factory_settings_interface/date_time_settings_interface.hpp>

#include <atomic>
#include <functional>
#include <string>

namespace tests {

/// Called with the query's name before a service answers; what it raises, the query raises. Set it while
/// nobody asks.
using BeforeAnswer = std::function<void(const std::string& query)>;

struct DateTimeService final : factory_settings_interface::DateTimeSettingsInterface
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

    void ask(const std::string& query) const
    {
        if (before) {
            before(query);
        }
    }

    BeforeAnswer before;
};

struct CodeAnalyzerService final : factory_settings_interface::CodeAnalyzerSettingsInterface
{
    std::u16string getDefaultConfigurationFile() override
    {
        ++queries;
        if (before) {
            before("getDefaultConfigurationFile");
        }
        return u"team.json";
    }

    BeforeAnswer before;
    std::atomic<int> queries{0};
};

}  // namespace tests
