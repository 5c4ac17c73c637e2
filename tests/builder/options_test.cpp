#include <builder/factory_tree.hpp>
#include <builder/validators.hpp>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <string>
#include <tests/support/outside_core.hpp>

namespace {

using namespace verdix::settings;
using foundation::verdixdata::Array;
using foundation::verdixdata::ArrayType;
using foundation::verdixdata::TypedArray;
using internal::SettingValueValidator;
using settings::core::CPPValidator;
using settings::core::CRunTimeDefault;
using settings::core::CValidator;
using settings::core::JRunTimeDefault;
using settings::core::JValidator;
using settings::core::MRunTimeDefault;
using settings::core::MValidator;
using testing::ElementsAre;
using tests::OutsideCore;

struct OptionTest : testing::Test
{
    OutsideCore core{"verdix"};
    FactoryGroup group = addGroup(core.root, "area");

    template <class... Pairs>
    const settings::core::detail::FactorySettingProperties& add(Pairs... pairs)
    {
        addSetting(group, "Setting", std::move(pairs)...);
        return core.nodes.back().properties;
    }
};

SettingValueValidator record(double upper)
{
    return {.range = {{.upper = upper}}};
}

TEST_F(OptionTest, SaysWhatIsWrongLetterByLetter)
{
    const FunctionDescriptor lower{"f", "c", "lib"};
    const FunctionDescriptor java{"f", "JAVA", "Class"};
    const std::string functionTypes =
        " Must be a string for a VERDIX function or a FunctionDescriptor for a C "
        "function.";
    const struct
    {
        std::function<void()> call;
        std::string text;
    } cases[] = {
        {[&] { add("factoryvalue", true); },
         "verdix.area.Setting: factoryvalue is not a valid input argument."},
        {[&] { add("", 1); }, "verdix.area.Setting:  is not a valid input argument."},
        {[&] { add("Hidden", 1); }, "verdix.area.Setting: Hidden flag must be true or false."},
        {[&] { add("Hidden", "true"); }, "verdix.area.Setting: Hidden flag must be true or false."},
        {[&] { add("Hidden", lower); }, "verdix.area.Setting: Hidden flag must be true or false."},
        {[&] { add("ReadOnly", std::vector{record(1)}); },
         "verdix.area.Setting: ReadOnly flag must be true or false."},
        {[&] { add("ValidationFcn", internal::charvec("f")); },
         "verdix.area.Setting: Invalid type for ValidationFcn." + functionTypes},
        {[&] { add("ReadOnly", 0); }, "verdix.area.Setting: ReadOnly flag must be true or false."},
        {[&] { add("AdditionalFile", 1.0); },
         "verdix.area.Setting: AdditionalFile flag must be true or false."},
        {[&] { add("ValidationFcn", true); },
         "verdix.area.Setting: Invalid type for ValidationFcn." + functionTypes},
        {[&] { add("ValidationFcn", record(1)); },
         "verdix.area.Setting: Invalid type for ValidationFcn." + functionTypes},
        {[&] { add("FactoryValueFcn", 3); },
         "verdix.area.Setting: Invalid type for FactoryValueFcn." + functionTypes},
        {[&] { add("FactoryValueFcn", makeCppValidator(nullptr)); },
         "verdix.area.Setting: Invalid type for FactoryValueFcn." + functionTypes},
        {[&] { add("ValueValidator", "words"); },
         "verdix.area.Setting: Invalid type for ValueValidator. Must be "
         "verdix::settings::internal::SettingValueValidator."},
        {[&] { add("ErrorHandler", true); }, "verdix.area.Setting: Error Handler must be function"},
        {[&] { add("FactoryValue", record(1)); }, "Value is invalid."},
        {[&] { add("FactoryValue", 1.5); }, "Value is invalid."},
        {[&] { add("FactoryValue", [](const std::string&, const Array&) {}); }, "Value is invalid."},
        {[&] { add("ValidationFcn", lower); }, "verdix.area.Setting: c is not a valid language for a "
                                               "FunctionDescriptor. It must be 'C' or 'Java'."},
        {[&] { add("FactoryValueFcn", java); }, "verdix.area.Setting: JAVA is not a valid language for a "
                                                "FunctionDescriptor. It must be 'C' or 'Java'."},
    };
    for (const auto& [call, text] : cases) {
        try {
            call();
            ADD_FAILURE() << "accepted where it should say: " << text;
        } catch (const std::logic_error& error) {
            EXPECT_EQ(error.what(), text);
        }
    }
    EXPECT_EQ(core.nodes.size(), 1U) << "a refused setting reached the settings core";
    EXPECT_TRUE(group.settings.empty());
}

TEST_F(OptionTest, FlagsAreUnwrittenUntilGiven)
{
    const auto& plain = add("FactoryValue", true);
    EXPECT_FALSE(plain.visible.value());
    EXPECT_FALSE(plain.visible.isWritten());
    EXPECT_FALSE(plain.readOnly.isWritten());
    EXPECT_FALSE(plain.additionalFile);
    EXPECT_EQ(plain.additionalFileContext, nullptr);

    const auto& written = add("Hidden", true, "Hidden", false, "ReadOnly", false, "AdditionalFile", true);
    EXPECT_TRUE(written.visible.value());
    EXPECT_FALSE(written.readOnly.value());
    EXPECT_TRUE(written.readOnly.isWritten());
    EXPECT_TRUE(written.additionalFile);
    EXPECT_EQ(written.additionalFileContext, group.treeContext);
    EXPECT_FALSE(written.factoryValue.isAssigned());

    const auto& hidden = add("Hidden", true);
    EXPECT_FALSE(hidden.visible.value());
    EXPECT_TRUE(hidden.visible.isWritten());
}

TEST_F(OptionTest, FactoryValuesTakeTheClassOfTheirLiteral)
{
    EXPECT_EQ(TypedArray<bool>(add("FactoryValue", true).factoryValue)[0], true);
    EXPECT_EQ(TypedArray<double>(add("FactoryValue", 3).factoryValue)[0], 3.0);

    const TypedArray<foundation::verdixdata::String> text(add("FactoryValue", "grün").factoryValue);
    EXPECT_THAT(text.getDimensions(), ElementsAre(1U, 1U));
    EXPECT_EQ(text[0], u"gr\u00fcn");

    EXPECT_EQ(add("FactoryValue", internal::charvec(std::string("x"))).factoryValue.getType(),
              ArrayType::CHAR);
    EXPECT_EQ(add("FactoryValue", 1, "FactoryValue", true).factoryValue.getType(), ArrayType::LOGICAL);
}

TEST_F(OptionTest, ValidatorsFollowTheWayTheyAreNamed)
{
    const FunctionDescriptor native{"getDefaultFigureTypeForSetting", "C", "libvxgraphics_state"};
    const FunctionDescriptor managed{"check", "Java", "com.tarnwick.Checks"};

    const auto expectNames = [](const auto& named, const char* scope, const char* function) {
        EXPECT_EQ(named.scope(), scope);
        EXPECT_EQ(named.function(), function);
    };
    expectNames(std::get<MValidator>(add("ValidationFcn", "verdix.settings.mustBeLogicalScalar").validator),
                "verdix.settings", "mustBeLogicalScalar");
    expectNames(std::get<MValidator>(add("ValidationFcn", "abc").validator), "abc", "abc");
    expectNames(std::get<MValidator>(add("ValidationFcn", "a.b.").validator), "a.b", "");
    expectNames(std::get<CValidator>(add("ValidationFcn", native).validator), "libvxgraphics_state",
                "getDefaultFigureTypeForSetting");
    expectNames(std::get<JValidator>(add("ValidationFcn", native, "ValidationFcn", managed).validator),
                "com.tarnwick.Checks", "check");

    const auto& computed = add("FactoryValueFcn", native);
    expectNames(std::get<CRunTimeDefault>(computed.runTimeDefault), "libvxgraphics_state",
                "getDefaultFigureTypeForSetting");
    EXPECT_EQ(computed.validator.index(), 0U);
    expectNames(std::get<MRunTimeDefault>(add("FactoryValueFcn", "p.f").runTimeDefault), "p", "f");
    expectNames(std::get<JRunTimeDefault>(add("FactoryValueFcn", managed).runTimeDefault),
                "com.tarnwick.Checks", "check");
}

TEST_F(OptionTest, CallablesArriveUnchanged)
{
    int calls = 0;
    const auto validator = makeCppValidator([&](const auto&, const std::string& name, const Array&) {
        ++calls;
        EXPECT_EQ(name, "S");
    });
    const auto& properties = add("ValidationFcn", validator, "ErrorHandler",
                                 [&](const std::string&, const Array&) { calls += 10; });

    const auto& stored = std::get<CPPValidator>(properties.validator);
    EXPECT_EQ(stored.scope(), "verdix");
    EXPECT_EQ(stored.function(), "function");
    stored.callable()(nullptr, "S", Array());
    properties.errorHandler("S", Array());
    EXPECT_EQ(calls, 11);
}

TEST_F(OptionTest, SingleRecordsAppendAndListsReplace)
{
    const std::vector<SettingValueValidator> list = {record(7), record(8), record(9)};
    const auto uppers = [](const auto& records) {
        std::vector<double> result;
        for (const auto& entry : records) {
            result.push_back(entry.range->upper);
        }
        return result;
    };
    const SettingValueValidator first = record(1);
    EXPECT_THAT(uppers(add("ValueValidator", first, "ValueValidator", record(2)).valueValidators),
                ElementsAre(1.0, 2.0));
    EXPECT_THAT(uppers(add("ValueValidator", first, "ValueValidator", list).valueValidators),
                ElementsAre(7.0, 8.0, 9.0));
    EXPECT_THAT(uppers(add("ValueValidator", list, "ValueValidator", first).valueValidators),
                ElementsAre(7.0, 8.0, 9.0, 1.0));
}

}  // namespace
