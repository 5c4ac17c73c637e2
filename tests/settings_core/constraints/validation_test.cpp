#include <settings_core/constraints/validation.hpp>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <stdexcept>
#include <tests/settings_core/new_setting.hpp>

namespace {

using namespace settings::core;
using foundation::verdixdata::Array;
using foundation::verdixdata::String;
using testing::HasSubstr;
using tests::expectVerdicts;
using tests::messagesOf;
using tests::NewSetting;
using tests::noProperties;
using tests::Properties;
using tests::row;
using tests::scalar;
using tests::string;
using tests::text;
using tests::texts;
using tests::Verdicts;
using vx::core::checkValue;
using Colour = SettingValueValidator::Colour;

Array characters(std::size_t rows, std::size_t columns)
{
    return tests::matrix<char16_t>(rows, columns, {});
}

NewSetting checkedBy(Validator validator)
{
    return NewSetting(tests::propertiesOf({}, std::move(validator)));
}

NewSetting withFactoryValue(Array value, std::vector<vx::core::ValueValidator> records = {})
{
    return NewSetting(tests::propertiesOf(std::move(value), {}, std::move(records)));
}

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

std::string rejection(const NewSetting& setting, const Array& value)
{
    return messagesOf(checkValue(*setting, value));
}

TEST(Validation, ScriptFunctions)
{
    const Array missing = scalar<String>(std::nullopt);
    const std::pair<const char*, Verdicts> cases[] = {
        {"mustBeLogicalScalar", {{scalar(true)}, {scalar(1.0), row<bool>({true, false})}}},
        {"mustBeStringScalar",
         {{text("a"), text(""), characters(0, 0), string("a")},
          {missing, texts({"a"}), scalar(1.0), characters(0, 3), characters(2, 0), Array()}}},
        {"mustBeIntegerScalar",
         {{scalar(2.0), scalar<std::int8_t>(-1), scalar<std::uint64_t>(1)},
          {scalar(2.5), scalar(notANumber), scalar(true), row<double>({1, 2})}}},
        {"mustBeNumericScalar", {{scalar(2.5), scalar(notANumber)}, {scalar(true), row<double>({1, 2})}}},
    };
    for (const auto& [function, verdicts] : cases) {
        expectVerdicts(function, checkedBy(MValidator("verdix.settings", function)), verdicts);
    }
    const NewSetting unknown = checkedBy(MValidator("other", "mustBeLogicalScalar"));
    EXPECT_THAT(rejection(unknown, scalar(true)),
                HasSubstr("names the script function other.mustBeLogicalScalar"));
    EXPECT_FALSE(vx::core::constraintOf((*unknown).properties()).isSatisfiable());
}

TEST(Validation, NativeFunctions)
{
    const std::pair<CValidator, Verdicts> cases[] = {
        {CValidator("libvxsavevars", "validateMaximumArraySizeValue"),
         {{scalar(1.0), scalar(1000.0), scalar(10000.0)}, {scalar(0.0), scalar(10001.0)}}},
        {CValidator("libvxsavevars", "validateMaximumNestingLevel"),
         {{scalar(20.0), scalar<std::int32_t>(1)}, {scalar(0.0), scalar(1.5), text("2")}}},
        {CValidator("libvxsavevars", "validateMaximumTextWidth"),
         {{scalar(76.0), scalar(32.0)}, {scalar(31.0), scalar(257.0), row<double>({76, 76})}}},
        {CValidator("libvxsavevars", "validateArrayDimensions"),
         {{row<double>({1, 2}), row<std::int32_t>({3, 1})},
          {row<double>({1, 1}), row<double>({0, 1}), row<double>({1, 2, 3}), text("ab"), Array()}}},
        {CValidator("libvxservices", "validateFontSize"),
         {{text("14px"), text("0.5px"), string("12.50px"), text("1000px")},
          {text("14"), text("px"), text("0.0px"), text("14.px"), text(".5px"), text("1.2.3px"), text("014px"),
           text("-1px"), text("14PX"), scalar(14.0)}}},
        {CValidator("libvxservices", "validateFontColor"),
         {{row<std::int32_t>({33, 0, 255})},
          {row<double>({1, 2, 3.5}), row<std::int32_t>({1, 2}), text("abc")}}},
        {CValidator("libvxservices", "validateFontStyle"),
         {{texts({"plain"}), texts({"bold"}), texts({"italic", "bold"})},
          {texts({}), texts({"plain", "bold"}), texts({"bold", "bold"}), texts({"Bold"}), text("bold")}}},
    };
    for (const auto& [validator, verdicts] : cases) {
        expectVerdicts(validator.function(), checkedBy(validator), verdicts);
    }
    EXPECT_THAT(rejection(checkedBy(CValidator("libvxsavevars", "absent")), scalar(1.0)),
                HasSubstr("cannot be checked: libvxsavevars.so has no function absent"));
}

TEST(Validation, CallablesOfThisProcess)
{
    std::string seen;
    const auto raise = [&seen](const std::string& what) {
        return checkedBy(CPPValidator(
            [&seen, what](const auto& node, const std::string& name, const Array&) {
                seen = node->getFullName() + " " + name;
                throw std::runtime_error(what);
            },
            "verdix", "function"));
    };
    EXPECT_EQ(rejection(raise("no such locale"), text("xx")), "no such locale");
    EXPECT_EQ(seen, "root.Setting Setting");
    EXPECT_EQ(rejection(raise(""), text("xx")),
              "must be accepted by its provider's validator; it is \"xx\" (char, 1-by-2)");
    const auto throwsNumber =
        checkedBy(CPPValidator([](const auto&, const auto&, const auto&) { throw 7; }, "", ""));
    EXPECT_NE(rejection(throwsNumber, text("xx")), "");
    EXPECT_EQ(rejection(checkedBy(CPPValidator(nullptr, "", "")), text("xx")), "");
    EXPECT_EQ(rejection(checkedBy(JValidator("a.B", "check")), text("xx")), "");
}

TEST(Validation, ClassAndSizeComeFromTheFactoryValue)
{
    const struct
    {
        NewSetting setting;
        Verdicts verdicts;
    } cases[] = {
        {withFactoryValue(scalar(1.0)), {{scalar(2.5)}, {scalar<std::int32_t>(1), row<double>({1, 2})}}},
        {withFactoryValue(text("")),
         {{text("any length"), characters(0, 0)}, {string("a"), scalar(1.0), texts({}), characters(2, 0)}}},
        {withFactoryValue(texts({})),
         {{texts({"a", "b"}), texts({}), row<Array>({characters(0, 0)})},
          {text("a"), row<Array>({scalar(1.0)})}}},
        {withFactoryValue(row<double>({1, 2})),
         {{row<double>({3, 4})}, {row<double>({1, 2, 3}), scalar(1.0)}}},
        {withFactoryValue(tests::matrix<double>(2, 1, {1, 2}), {{{.size = {{.columns = 1}}}}}),
         {{scalar(3.0), tests::matrix<double>(3, 1, {1, 2, 3})},
          {row<double>({1, 2}), scalar<std::int32_t>(1)}}},
        {withFactoryValue(text("auto"), {{{.allowedValues = {u"auto"}, .colour = Colour::normalised}}}),
         {{text("auto"), row<double>({0, 0.5, 1})}, {text("red"), row<double>({0, 0.5, 2})}}},
    };
    for (std::size_t i = 0; i < std::size(cases); ++i) {
        expectVerdicts(std::to_string(i), cases[i].setting, cases[i].verdicts);
    }
}

TEST(Validation, AllFailuresAreCollectedAndTheErrorHandlerHasTheWord)
{
    Properties properties =
        tests::propertiesOf(scalar<std::int32_t>(1), MValidator("verdix.settings", "mustBeIntegerScalar"),
                            {{{.range = {{0, 3}}}}, {{.maximumLength = 1}}});
    EXPECT_EQ(rejection(NewSetting(properties), row<double>({7.5, 8})),
              "must be int32, 1-by-1; it is [7.5 8] (double, 1-by-2)\n"
              "must be a whole number; it is [7.5 8] (double, 1-by-2)\n"
              "must be from 0 to 3; it is [7.5 8] (double, 1-by-2)\n"
              "must be of at most 1 element; it is [7.5 8] (double, 1-by-2)");

    properties.errorHandler = [](const std::string& name, const Array& value) {
        throw std::runtime_error(name + " refuses " + std::to_string(value.getNumberOfElements()));
    };
    EXPECT_EQ(rejection(NewSetting(properties), row<double>({7.5, 8})), "Setting refuses 2");
    EXPECT_EQ(rejection(NewSetting(properties), scalar<std::int32_t>(2)), "");
    properties.errorHandler = [](const std::string&, const Array&) {};
    EXPECT_THAT(rejection(NewSetting(properties), scalar<std::int32_t>(9)), HasSubstr("from 0 to 3"));
}

TEST(Validation, ASettingsOwnValue)
{
    EXPECT_TRUE(checkDefaultValue(*NewSetting(noProperties())).empty());
    EXPECT_EQ(messagesOf(checkDefaultValue(*withFactoryValue(text(""), {{{.allowedValues = {u"Windows"}}}}))),
              "must be one of: Windows; it is \"\" (char, 1-by-0)");

    Properties properties = tests::propertiesOf({}, MValidator("verdix.settings", "mustBeStringScalar"));
    properties.runTimeDefault = CRunTimeDefault("libvxgraphics_state", "getDefaultFigureTypeForSetting");
    EXPECT_THAT(messagesOf(checkDefaultValue(*NewSetting(properties))),
                HasSubstr("must be a string; it is true"));
    properties.runTimeDefault = CRunTimeDefault("libabsent", "f");
    EXPECT_THAT(messagesOf(checkDefaultValue(*NewSetting(properties))),
                HasSubstr("cannot be computed: libabsent.so"));

    const NewSetting setting{noProperties()};
    EXPECT_THROW(static_cast<void>(checkValue(*setting.tree.root(), scalar(1.0))), std::invalid_argument);
}

TEST(Validation, ValuesAreAdaptedWhereNothingIsLost)
{
    constexpr auto huge = std::numeric_limits<std::uint64_t>::max();
    struct
    {
        Array factoryValue, given, expected = given;
    } const cases[] = {
        {scalar<std::int32_t>(0), row<double>({1, -2}), row<std::int32_t>({1, -2})},
        {scalar<std::uint8_t>(0), scalar(255.0), scalar<std::uint8_t>(255)},
        {scalar<std::uint64_t>(0), scalar<std::int8_t>(7), scalar<std::uint64_t>(7)},
        {string(""), text("a"), string("a")},
        {text(""), string("a"), text("a")},
        {scalar<std::uint8_t>(0), scalar(256.0)},
        {scalar<std::int32_t>(0), scalar(1.5)},
        {scalar<std::int32_t>(0), scalar(notANumber)},
        {scalar<std::int64_t>(0), scalar(0x1p63)},
        {scalar(0.0), scalar(huge)},
        {scalar(true), scalar(1.0)},
        {scalar(0.0), Array()},
    };
    for (std::size_t i = 0; i < std::size(cases); ++i) {
        EXPECT_EQ(adaptValue(*withFactoryValue(cases[i].factoryValue), cases[i].given), cases[i].expected)
            << i;
    }
}

}  // namespace
