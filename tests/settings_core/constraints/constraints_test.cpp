#include <settings_core/constraints/kinds.hpp>
#include <settings_core/constraints/validation.hpp>

#include <gmock/gmock.h>

#include <limits>
#include <set>
#include <tests/settings_core/new_setting.hpp>

namespace {

using foundation::verdixdata::Array;
using foundation::verdixdata::ArrayType;
using tests::row;
using tests::scalar;
using tests::string;
using tests::text;
using tests::texts;
using vx::core::ValueValidator;
using Colour = settings::core::SettingValueValidator::Colour;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

constexpr settings::core::SettingValueValidator::Range anyNumber;

struct Case
{
    ValueValidator rules;
    std::string words;
    std::vector<Array> kept;
    std::vector<Array> broken;
};

TEST(ValueValidator, HoldUpToTheirBounds)
{
    constexpr auto largest = std::numeric_limits<std::int64_t>::max();
    const Case cases[] = {
        {{{.range = {{0, 3}}}},
         "from 0 to 3",
         {scalar(0.0), scalar(3.0), row<std::int32_t>({0, 3}), row<double>({})},
         {scalar(-0.001), row<std::int32_t>({0, 4}), scalar(notANumber), text("1"), Array()}},
        {{{.range = {{.upper = 0x1p62}}}},
         "at most 4611686018427387904",
         {scalar(-infinity), scalar(largest / 2 + 1)},
         {scalar(largest / 2 + 2), scalar(infinity), scalar(notANumber)}},
        {{{.range = anyNumber}}, "numeric", {scalar(notANumber), scalar(-infinity)}, {scalar(true), Array()}},
        {{{.allowedValues = {u"loose", u"compact"}}},
         "one of: loose, compact",
         {text("loose"), string("compact"), texts({"loose", "loose"}), texts({})},
         {text("Loose"), texts({"loose", "tight"}), row<foundation::verdixdata::String>({{}})}},
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
         {tests::matrix<double>(2, 3, {1, 2, 3, 4, 5, 6}), text("abc")},
         {tests::matrix<double>(3, 2, {1, 2, 3, 4, 5, 6}), Array()}},
        {{{.allowedValues = {u"a", u""}, .maximumLength = 0, .size = {{1, 0}}}},
         "of at most 0 elements or characters, 1-by-0, one of: a, \"\"",
         {text(""), tests::matrix<char16_t>(0, 0, {})},
         {}},
        {{{.elementClass = ArrayType::CELL}}, "a cell", {texts({})}, {text("a"), Array()}},
        {{{.elementClass = ArrayType::INT32}}, "of class int32", {scalar(1)}, {scalar(1.0)}},
        {{{.colour = Colour::wholeNumbers}},
         "a colour: red, green and blue, each a whole number from 0 to 255",
         {row<std::int32_t>({0, 255, 7}), row<double>({0, 255, 7})},
         {row<double>({0, 0.5, 1}), row<std::int32_t>({0, 256, 7}), row<std::int32_t>({0, 1})}},
        {{{.allowedValues = {u"auto", u"none"}, .colour = Colour::normalised}},
         "a colour: red, green and blue, each a number from 0 to 1, or one of: auto, none",
         {row<double>({0, 0.5, 1}), text("auto")},
         {row<double>({0, notANumber, 1}), text("red")}},
        {{}, "", {text("anything"), Array()}, {}},
    };
    std::set<std::string_view> untested;
    for (const vx::core::ConstraintKind& kind : vx::core::constraintKinds()) {
        untested.insert(kind.name);
    }
    for (const Case& each : cases) {
        EXPECT_EQ(vx::core::describeValueValidator(each.rules), each.words);
        const tests::NewSetting setting(tests::propertiesOf({}, {}, {each.rules}));
        tests::expectVerdicts(each.words, setting, {each.kept, each.broken});
        for (const auto& constraint : vx::core::exportedConstraints(each.rules)) {
            untested.erase(each.broken.empty() ? "" : constraint.kind);
        }
    }
    EXPECT_THAT(untested, testing::IsEmpty()) << "each kind needs values that satisfy and violate it";
}

TEST(ValueValidator, AreDescribedTogetherWithValidatorAndFactoryValue)
{
    using namespace settings::core;
    const auto described = [](Array factoryValue, Validator validator, std::vector<ValueValidator> records) {
        return vx::core::describeConstraint(
            tests::propertiesOf(std::move(factoryValue), std::move(validator), std::move(records)));
    };
    EXPECT_EQ(described(text("loose"), {}, {{{.allowedValues = {u"loose"}, .maximumLength = 9}}}),
              "a string, of at most 9 characters, one of: loose");
    EXPECT_EQ(described(scalar(1.0), CValidator("liblimits", "check"), {{{.range = {{.lower = 1}}}}}),
              "a number accepted by check of liblimits, at least 1");
    EXPECT_EQ(described(row<double>({0, 0, 1}), {}, {{{.range = {{0, 1}}, .size = {{.columns = 3}}}}}),
              "numbers from 0 to 1, in 3 columns");
    EXPECT_EQ(described(row<bool>({true, false}), {}, {}), "2 logical values");
    EXPECT_EQ(described({}, MValidator("elsewhere", "mustFit"), {}),
              "a value accepted by the script function elsewhere.mustFit");
}

}  // namespace
