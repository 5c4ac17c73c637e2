#include <settings_core/constraints/kinds.hpp>
#include <settings_core/constraints/validation.hpp>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <stdexcept>
#include <tests/settings_core/new_setting.hpp>

namespace {

using namespace settings::core;
using foundation::verdixdata::Array;
using foundation::verdixdata::ArrayType;
using foundation::verdixdata::String;
using testing::HasSubstr;
using tests::matrix;
using tests::messageOf;
using tests::NewSetting;
using tests::noProperties;
using tests::Properties;
using tests::propertiesOf;
using tests::row;
using tests::scalar;
using tests::string;
using tests::text;
using tests::texts;
using namespace vx::core;
using Colour = SettingValueValidator::Colour;

constexpr SettingValueValidator::Range anyNumber;

Array characters(std::size_t rows, std::size_t columns)
{
    return matrix<char16_t>(rows, columns, {});
}

NewSetting checkedBy(Validator validator)
{
    return NewSetting(propertiesOf({}, std::move(validator)));
}

NewSetting withFactoryValue(Array value, std::vector<ValueValidator> records = {})
{
    return NewSetting(propertiesOf(std::move(value), {}, std::move(records)));
}

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

struct Verdicts
{
    std::vector<Array> accepted;
    std::vector<Array> refused;
};

std::string rejection(const NewSetting& setting, const Array& value)
{
    return messageOf(checkValue(*setting, value));
}

void expectVerdicts(const std::string& what, const NewSetting& setting, const Verdicts& expected)
{
    for (std::size_t i = 0; i < expected.accepted.size(); ++i) {
        EXPECT_EQ(rejection(setting, expected.accepted[i]), "") << what << ", accepted " << i;
    }
    for (std::size_t i = 0; i < expected.refused.size(); ++i) {
        EXPECT_TRUE(checkValue(*setting, expected.refused[i])) << what << ", refused " << i;
    }
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
          {scalar(2.5), scalar(infinity), scalar(notANumber), scalar(true), row<double>({1, 2}), text("1")}}},
        {"mustBeNumericScalar", {{scalar(2.5), scalar(notANumber)}, {scalar(true), row<double>({1, 2})}}},
    };
    for (const auto& [function, verdicts] : cases) {
        expectVerdicts(function, checkedBy(MValidator("verdix.settings", function)), verdicts);
    }
    const NewSetting unknown = checkedBy(MValidator("other", "mustBeLogicalScalar"));
    EXPECT_THAT(rejection(unknown, scalar(true)),
                HasSubstr("names the script function other.mustBeLogicalScalar"));
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
         {{row<std::int32_t>({33, 0, 255}), row<double>({1, 2, 3})},
          {row<double>({1, 2, 3.5}), row<std::int32_t>({1, 2}), text("abc")}}},
        {CValidator("libvxservices", "validateFontStyle"),
         {{texts({"plain"}), texts({"bold"}), texts({"italic", "bold"})},
          {texts({}), texts({"plain", "bold"}), texts({"bold", "bold"}), texts({"Bold"}), text("bold"),
           Array()}}},
    };
    for (const auto& [validator, verdicts] : cases) {
        expectVerdicts(validator.function(), checkedBy(validator), verdicts);
    }
    EXPECT_EQ(rejection(checkedBy(CValidator("libvxsavevars", "validateMaximumNestingLevel")), text("2")),
              "The nesting level must be a whole number from 1 to 200.");
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
              "\"xx\" is not allowed: must be a value accepted by its provider's validator");
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
        {withFactoryValue(matrix<double>(2, 1, {1, 2}), {{{.size = {{.columns = 1}}}}}),
         {{scalar(3.0), matrix<double>(3, 1, {1, 2, 3})}, {row<double>({1, 2}), scalar<std::int32_t>(1)}}},
        {withFactoryValue(text("auto"), {{{.allowedValues = {u"auto"}, .colour = Colour::normalised}}}),
         {{text("auto"), row<double>({0, 0.5, 1})}, {text("red"), row<double>({0, 0.5, 2})}}},
        {withFactoryValue(row<double>({0, 0, 0}),
                          {{{.allowedValues = {u"auto"}, .colour = Colour::normalised}}}),
         {{text("auto"), row<double>({0, 0.5, 1})}, {row<std::int32_t>({0, 0, 1})}}},
    };
    for (std::size_t i = 0; i < std::size(cases); ++i) {
        expectVerdicts(std::to_string(i), cases[i].setting, cases[i].verdicts);
    }
}

TEST(Validation, TheConstraintIsDescribedUnlessTheErrorHandlerHasTheWord)
{
    Properties properties =
        propertiesOf(scalar<std::int32_t>(1), MValidator("verdix.settings", "mustBeIntegerScalar"),
                     {{{.range = {{0, 3}}}}, {{.maximumLength = 1}}});
    EXPECT_EQ(rejection(NewSetting(properties), row<double>({7.5, 8})),
              "[7.5 8] (double, 1-by-2) is not allowed: must be a whole number from 0 to 3, of at most 1 "
              "element");

    properties.errorHandler = [](const std::string& name, const Array& value) {
        throw std::runtime_error(name + " refuses " + std::to_string(value.getNumberOfElements()));
    };
    EXPECT_EQ(rejection(NewSetting(properties), row<double>({7.5, 8})), "Setting refuses 2");
    EXPECT_EQ(rejection(NewSetting(properties), scalar<std::int32_t>(2)), "");
    properties.errorHandler = [](const std::string&, const Array&) {};
    EXPECT_THAT(rejection(NewSetting(properties), scalar<std::int32_t>(9)), HasSubstr("from 0 to 3"));
    properties.errorHandler = [](const std::string&, const Array&) { throw std::runtime_error(""); };
    EXPECT_THAT(rejection(NewSetting(properties), scalar<std::int32_t>(9)), HasSubstr("from 0 to 3"));
}

TEST(Validation, ASettingsOwnValue)
{
    EXPECT_FALSE(checkDefaultValue(*NewSetting(noProperties())));
    EXPECT_EQ(messageOf(checkDefaultValue(*withFactoryValue(text(""), {{{.allowedValues = {u"Windows"}}}}))),
              "\"\" is not allowed: must be a string, one of: Windows");

    Properties properties = propertiesOf({}, MValidator("verdix.settings", "mustBeStringScalar"));
    properties.runTimeDefault = CRunTimeDefault("libvxgraphics_state", "getDefaultFigureTypeForSetting");
    EXPECT_THAT(messageOf(checkDefaultValue(*NewSetting(properties))),
                HasSubstr("true is not allowed: must be a string"));
    properties.runTimeDefault = CRunTimeDefault("libabsent", "f");
    EXPECT_THAT(messageOf(checkDefaultValue(*NewSetting(properties))),
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

TEST(ValueValidator, HoldUpToTheirBounds)
{
    constexpr auto largest = std::numeric_limits<std::int64_t>::max();
    const ValueValidator spacing{{.allowedValues = {u"loose", u"compact"}}};
    const struct
    {
        ValueValidator rules;
        std::string words;
        std::vector<Array> accepted, refused;
    } cases[] = {
        {{{.range = {{0, 3}}}},
         "from 0 to 3",
         {scalar(0.0), scalar(3.0), row<std::int32_t>({0, 3}), row<double>({})},
         {scalar(-0.001), scalar(3.001), row<std::int32_t>({0, 4}), scalar(notANumber), text("1"),
          scalar(true), text(""), Array()}},
        {{{.range = {{.lower = 1}}}},
         "at least 1",
         {scalar(1.0), scalar(infinity)},
         {scalar(0.5), scalar(-infinity), scalar(notANumber)}},
        {{{.range = {{.upper = 0x1p62}}}},
         "at most 4611686018427387904",
         {scalar(-infinity), scalar(largest / 2 + 1)},
         {scalar(largest / 2 + 2), scalar(infinity), scalar(notANumber)}},
        {{{.range = anyNumber}},
         "numeric",
         {scalar(notANumber), scalar(-infinity), row<std::int32_t>({1, 2})},
         {text("1"), scalar(true), Array()}},
        {spacing,
         "one of: loose, compact",
         {text("loose"), string("compact"), texts({"loose", "loose"}), texts({})},
         {text("Loose"), text(""), texts({"loose", "tight"}), scalar(1.0), row<String>({{}})}},
        {{{.maximumLength = 3}},
         "of at most 3 elements or characters",
         {text("abc"), string("abc"), texts({"abcd", "b", "c"}), text("")},
         {text("abcd"), string("abcd"), texts({"a", "b", "c", "d"})}},
        {{{.size = {{1, 2}}}},
         "1-by-2",
         {row<double>({1, 2}), text("ab")},
         {scalar(1.0), row<double>({1, 2, 3}), Array()}},
        {{{.size = {{.columns = 3}}}},
         "in 3 columns",
         {row<double>({1, 2, 3}), matrix<double>(2, 3, {1, 2, 3, 4, 5, 6}), text("abc")},
         {row<double>({1, 2}), matrix<double>(3, 2, {1, 2, 3, 4, 5, 6}), Array()}},
        {{{.size = {{.rows = 1}}}},
         "in 1 row",
         {scalar(1.0), texts({"a", "b"})},
         {matrix<int>(2, 1, {1, 2})}},
        {{{.allowedValues = {u"a", u""}, .maximumLength = 0, .size = {{1, 0}}}},
         "of at most 0 elements or characters, 1-by-0, one of: a, \"\"",
         {text(""), matrix<char16_t>(0, 0, {})},
         {}},
        {{{.elementClass = ArrayType::CELL}}, "a cell", {texts({})}, {text("a"), Array()}},
        {{{.elementClass = ArrayType::INT32}}, "of class int32", {scalar(1)}, {scalar(1.0)}},
        {{{.colour = Colour::wholeNumbers}},
         "a colour: red, green and blue, each a whole number from 0 to 255",
         {row<std::int32_t>({0, 255, 7}), row<double>({0, 255, 7})},
         {row<double>({0, 0.5, 1}), row<std::int32_t>({0, 256, 7}), row<std::int32_t>({0, -1, 7}),
          row<std::int32_t>({0, 1}), text("abc")}},
        {{{.allowedValues = {u"auto", u"none"}, .colour = Colour::normalised}},
         "a colour: red, green and blue, each a number from 0 to 1, or one of: auto, none",
         {row<double>({0, 0.5, 1}), text("auto"), string("none")},
         {row<double>({0, 0.5, 1.01}), row<double>({0, notANumber, 1}), text("red"), texts({"auto"})}},
        {{}, "", {text("anything"), Array()}, {}},
    };
    for (const auto& [rules, words, accepted, refused] : cases) {
        EXPECT_EQ(describeValueValidator(rules), words);
        expectVerdicts(words, withFactoryValue({}, {rules}), {accepted, refused});
    }
    for (const ConstraintKind& kind : constraintKinds()) {
        EXPECT_TRUE(std::ranges::any_of(cases,
                                        [&](const auto& each) {
                                            return kind.isSet(each.rules) && !each.accepted.empty() &&
                                                   !each.refused.empty();
                                        }))
            << "no case has values that satisfy and violate a constraint of kind " << kind.name;
    }
}

TEST(ValueValidator, AreDescribedTogetherWithValidatorAndFactoryValue)
{
    const auto described = [](Array factoryValue, Validator validator, std::vector<ValueValidator> records) {
        return describeConstraint(
            propertiesOf(std::move(factoryValue), std::move(validator), std::move(records)));
    };
    const MValidator integer("verdix.settings", "mustBeIntegerScalar");
    EXPECT_EQ(described(scalar(1.0), integer, {{{.range = {{0, 3}}}}}), "a whole number from 0 to 3");
    EXPECT_EQ(described(text("loose"), {}, {{{.allowedValues = {u"loose"}, .maximumLength = 9}}}),
              "a string, of at most 9 characters, one of: loose");
    EXPECT_EQ(described(texts({}), {}, {{{.allowedValues = {u"a", u"b"}}}}),
              "a cell of strings, each one of: a, b");
    EXPECT_EQ(described(scalar(1.0), CValidator("liblimits", "check"), {{{.range = {{.lower = 1}}}}}),
              "a number accepted by check of liblimits, at least 1");
    EXPECT_EQ(described(row<double>({0, 0, 1}), {}, {{{.range = {{0, 1}}, .size = {{.columns = 3}}}}}),
              "numbers from 0 to 1, in 3 columns");
    EXPECT_EQ(described(row<bool>({true, false}), {}, {}), "2 logical values");
    EXPECT_EQ(described({}, MValidator("elsewhere", "mustFit"), {}),
              "a value accepted by the script function elsewhere.mustFit");
}

TEST(ValueValidator, AreFoldedIntoOneConstraint)
{
    const auto folded = [](std::vector<ValueValidator> records, Validator validator = {}) {
        return constraintOf(propertiesOf({}, std::move(validator), std::move(records)));
    };
    const auto [lower, upper] = folded({{{.range = {{0, 9}}}}, {{.range = {{5, 20}}}}}).range;
    EXPECT_EQ(std::pair(lower, upper), std::pair(5.0, 9.0));
    const Properties twoLists =
        propertiesOf({}, {}, {{{.allowedValues = {u"a", u"b"}}}, {{.allowedValues = {u"b", u"c"}}}});
    EXPECT_THAT(*constraintOf(twoLists).allowedStrings, testing::ElementsAre(u"b"));
    const MValidator logical("verdix.settings", "mustBeLogicalScalar");
    const Constraint impossible[] = {folded({{{.range = {{notANumber, 1}}}}, {{.range = {{0, 1}}}}}),
                                     folded({{{.size = {{1, 2}}}}, {{.size = {{.columns = 3}}}}}),
                                     folded({{{.allowedValues = {u"a"}}}, {{.allowedValues = {u"b"}}}}),
                                     folded({{{.range = anyNumber, .elementClass = ArrayType::CELL}}}),
                                     folded({{{.range = anyNumber}}}, logical),
                                     folded({}, MValidator("elsewhere", "mustBeLogicalScalar"))};
    for (const Constraint& constraint : impossible) {
        EXPECT_FALSE(constraint.isSatisfiable()) << &constraint - impossible;
    }

    std::string kinds;
    for (const auto& constraint : exportedConstraints({{.range = anyNumber,
                                  .allowedValues = {u"a"},
                                  .maximumLength = 1,
                                  .size = {{}},
                                  .elementClass = ArrayType::CHAR}}))
    {
        kinds.append(constraint.kind).append(" ");
    }
    EXPECT_EQ(kinds, "size elementClass range allowedValues maximumLength ");
}

}  // namespace
