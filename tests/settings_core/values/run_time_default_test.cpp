#include <settings_core/values/native_library.hpp>
#include <settings_core/values/run_time_default.hpp>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <tests/settings_core/new_setting.hpp>

namespace {

using namespace settings::core;
using foundation::verdixdata::ArrayType;

vx::core::DefaultValue defaultOf(RunTimeDefault runTimeDefault,
                                 foundation::verdixdata::Array factoryValue = {})
{
    tests::Properties properties = tests::propertiesOf(std::move(factoryValue));
    properties.runTimeDefault = std::move(runTimeDefault);
    return vx::core::defaultValue(*tests::NewSetting(properties));
}

TEST(RunTimeDefault, IsComputedWhereThereIsNoFactoryValue)
{
    for (const char* function : {"getDefaultFigureTypeForSetting", "getDefaultSyncModeForSetting"}) {
        const auto computed = defaultOf(CRunTimeDefault("libvxgraphics_state", function));
        EXPECT_EQ(computed.value.getType(), ArrayType::LOGICAL);
        EXPECT_EQ(computed.value.getNumberOfElements(), 1U);
        EXPECT_EQ(computed.computedBy, std::string(function) + " of libvxgraphics_state");
    }
    EXPECT_EQ(defaultOf(CRunTimeDefault("libabsent", "f"), tests::scalar(1.0)).computedBy, "");
}

TEST(RunTimeDefault, SaysWhatIsMissingAndWhere)
{
    const std::pair<RunTimeDefault, const char*> cases[] = {
        {CRunTimeDefault("libabsent", "f"), "libabsent.so: not found in /.*install it"},
        {CRunTimeDefault("libvxsavevars", "absent"), "libvxsavevars.so has no function absent"},
        {CRunTimeDefault("../lib/libvxsavevars", "f"), "is not the name of a native library"},
        {MRunTimeDefault("a.b", "f"), "a.b.f computes the value in the scripting language"},
        {JRunTimeDefault("a.B", "f"), "a.B.f computes the value in the managed runtime"},
    };
    for (const auto& [missing, text] : cases) {
        EXPECT_THAT([&missing = missing] { return defaultOf(missing); },
                    testing::ThrowsMessage<std::runtime_error>(testing::ContainsRegex(text)));
    }
}

}  // namespace
