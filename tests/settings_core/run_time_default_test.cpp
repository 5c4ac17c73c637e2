#include <settings_core/native_library.hpp>
#include <settings_core/run_time_default.hpp>

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
    tests::Properties properties = tests::noProperties();
    properties.runTimeDefault = std::move(runTimeDefault);
    properties.factoryValue = std::move(factoryValue);
    return vx::core::defaultValue(*tests::NewSetting(properties));
}

std::string failureOf(RunTimeDefault runTimeDefault)
{
    try {
        static_cast<void>(defaultOf(std::move(runTimeDefault)));
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "computed";
}

TEST(RunTimeDefault, IsComputedWhereThereIsNoFactoryValue)
{
    for (const char* function : {"getDefaultFigureTypeForSetting", "getDefaultSyncModeForSetting"}) {
        const auto computed = defaultOf(CRunTimeDefault("libvxgraphics_state", function));
        EXPECT_EQ(computed.value.getType(), ArrayType::LOGICAL);
        EXPECT_EQ(computed.value.getNumberOfElements(), 1U);
        EXPECT_EQ(computed.source, std::string(function) + " of libvxgraphics_state");
    }
    EXPECT_EQ(defaultOf(CRunTimeDefault("libabsent", "f"), tests::scalar(1.0)).source, "factory value");
    EXPECT_FALSE(defaultOf({}).value.isAssigned());
}

TEST(RunTimeDefault, SaysWhatIsMissingAndWhere)
{
    using testing::HasSubstr;
    EXPECT_THAT(failureOf(CRunTimeDefault("libabsent", "f")),
                testing::AllOf(HasSubstr("libabsent.so: not found in /"), HasSubstr("install it")));
    EXPECT_THAT(failureOf(CRunTimeDefault("libvxsavevars", "absent")),
                HasSubstr("libvxsavevars.so has no function absent"));
    EXPECT_THAT(failureOf(CRunTimeDefault("../lib/libvxsavevars", "f")),
                HasSubstr("does not name a native library"));
    EXPECT_THAT(failureOf(MRunTimeDefault("a.b", "f")),
                HasSubstr("a.b.f computes the value in the scripting language"));
    EXPECT_THAT(failureOf(JRunTimeDefault("a.B", "f")),
                HasSubstr("a.B.f computes the value in the managed runtime"));
}

}  // namespace
