#include <settings_core/values/value_parsing.hpp>

#include <boost/json/parse.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>
#include <random>
#include <string>
#include <tests/support/values.hpp>
#include <vector>

namespace {

using namespace foundation::verdixdata;
using tests::matrix;
using tests::row;
using tests::scalar;
using tests::string;
using tests::text;
using tests::texts;
using verdix::settings::internal::charvec;
using vx::core::ParseTarget;

constexpr ParseTarget as(ArrayType type)
{
    return {.elementClass = type};
}

TEST(ValueParsingTest, ReadsWhatPeopleWrite)
{
    const ParseTarget any;
    const ParseTarget colour{.elementClass = ArrayType::DOUBLE, .acceptsColourNames = true};
    struct
    {
        std::string text;
        ParseTarget form;
        Array value;
    } const cases[] = {
        {" true ", as(ArrayType::LOGICAL), scalar<bool>(true)},
        {"-1.5e3", as(ArrayType::DOUBLE), scalar<double>(-1500)},
        {"18446744073709551615", as(ArrayType::UINT64), scalar(std::numeric_limits<std::uint64_t>::max())},
        {"[14 0,  255 ]", as(ArrayType::INT32), row<std::int32_t>({14, 0, 255})},
        {"[1,2;3 4]", as(ArrayType::DOUBLE), matrix<double>(2, 2, {1, 3, 2, 4})},
        {"[]", as(ArrayType::DOUBLE), row<double>({})},
        {"two words ", as(ArrayType::CHAR), text("two words ")},
        {"", as(ArrayType::CHAR), text("")},
        {"'it''s'", as(ArrayType::CHAR), text("it's")},
        {" \"a \"\"b\"\"\" ", as(ArrayType::STRING), string("a \"b\"")},
        {"12", as(ArrayType::STRING), string("12")},
        {"{\"a\",'b' \"ä\"}", as(ArrayType::CELL), texts({"a", "b", "ä"})},
        {"red", colour, text("red")},
        {"[0 .5 1]", colour, row<double>({0, .5, 1})},
    };
    for (const auto& [given, form, value] : cases) {
        EXPECT_TRUE(vx::core::parseValue(given, form) == value) << given;
    }
    EXPECT_TRUE(vx::core::parseJsonValue("[\"a\", \"b\"]", any) == texts({"a", "b"}));
    EXPECT_TRUE(vx::core::parseJsonValue("[\"Inf\", 2]", any) ==
                row<double>({std::numeric_limits<double>::infinity(), 2}));
    EXPECT_TRUE(vx::core::parseJsonValue("\"red\"", colour) == text("red"));

    const auto inObject = [](const std::string& members) { return "{\"class\": " + members + "}"; };
    const std::pair<std::string, Array> objects[] = {
        {R"("int32", "dims": [2, 3], "data": [1, 2, 3, 4, 5, 6])",
         matrix<std::int32_t>(2, 3, {1, 2, 3, 4, 5, 6})},
        {R"("double", "dims": [2, 1], "data": ["NaN", "-Inf"])",
         matrix<double>(2, 1, {std::nan(""), -std::numeric_limits<double>::infinity()})},
        {R"("double", "dims": [1, 0], "data": [])", row<double>({})},
        {R"("string", "dims": [1, 2], "data": ["a", null])", row<String>({u"a", std::nullopt})},
        {R"("cell", "dims": [1, 1], "data": ["NaN"])", texts({"NaN"})},
        {R"("char", "dims": [1, 3], "data": "red")", text("red")},
    };
    for (const auto& [members, value] : objects) {
        EXPECT_TRUE(vx::core::parseJsonValue(inObject(members), any) == value) << members;
        EXPECT_TRUE(vx::core::parseJsonValue(inObject(members), as(value.getType())) == value) << members;
    }
    EXPECT_TRUE(vx::core::parseJsonValue(inObject(objects[5].first), colour) == text("red"));
}

TEST(ValueParsingTest, SaysWhereAndWhatIsExpected)
{
    struct
    {
        std::string text;
        ParseTarget form;
        std::size_t offset;
        std::string message;
        bool isJson = false;
    } const cases[] = {
        {"maybe", as(ArrayType::LOGICAL), 0, "true or false, not maybe"},
        {"[1 2; 3]", as(ArrayType::DOUBLE), 6, "row 2 has 1 elements, expected 2"},
        {"[1 300]", as(ArrayType::UINT8), 3, "a whole number from 0 to 255, not 300"},
        {"[1 2", as(ArrayType::DOUBLE), 4, "\"]\" after an element"},
        {"'open", as(ArrayType::CHAR), 5, "a closing '"},
        {"'a' b", as(ArrayType::CHAR), 4, "nothing after the value"},
        {"{'a' 1}", as(ArrayType::CELL), 5, "a string, not 1"},
        {"{'a'; 'b'}", as(ArrayType::CELL), 0, "in one row"},
        {"{1 2}", as(ArrayType::DOUBLE), 0, "no braces"},
        {"a\xff", as(ArrayType::CHAR), 1, "UTF-8"},
        {"[1, \"a\"]", as(ArrayType::DOUBLE), 4, "a number, not a string", true},
        {"12 ,", as(ArrayType::DOUBLE), 3, "nothing after the value", true},
        {R"({"class": "float"})", {}, 10, "the name of a class", true},
        {R"({"class": "double"})", as(ArrayType::INT8), 10, "the class int8", true},
        {R"({"class": "double", "dims": [1, 1]})", {}, 0, "a member \"data\"", true},
        {R"({"class": "int8", "dims": [2, 2], "data": [1]})", {}, 26, "an array with 1 elements", true},
        {R"({"class": "int8", "dims": [9999999999999, 0], "data": []})", {}, 26, "at least one row", true},
        {R"({"class": "int8", "dims": [1], "data": [1]})", {}, 26, "the rows and columns", true},
        {R"({"class": "int8", "dims": [-1, 1], "data": []})", {}, 27, "a whole number", true},
    };
    for (const auto& test : cases) {
        const auto at = testing::Property(&vx::core::ParseError::offset, test.offset);
        const auto says = testing::Property(&vx::core::ParseError::what, testing::HasSubstr(test.message));
        EXPECT_THAT(([&] {
                        return test.isJson ? vx::core::parseJsonValue(test.text, test.form)
                                           : vx::core::parseValue(test.text, test.form);
                    }),
                    testing::Throws<vx::core::ParseError>(testing::AllOf(at, says)))
            << test.text;
    }
}

TEST(ValueParsingTest, JsonHoldsEveryValueExactly)
{
    using Limits = std::numeric_limits<double>;
    const std::u16string units = {0, 0x1f, u'"', u'\\', 0x7f, 0x20ac, 0xd83d, 0xde00, 0xde00, 0xd83d, 0xffff};
    std::vector<Array> values = {
        matrix<double>(3, 2, {-0.0, 0.1, 1.0 / 3, -Limits::infinity(), Limits::quiet_NaN(), 1e23}),
        row<String>({units, std::nullopt, u"", u"null"}),
        row<Array>({charvec(std::u16string(units)), text("")}),
    };
    // Each unit beside surrogates of both halves, and any bits as a number.
    std::mt19937_64 bits(20260101);
    for (unsigned number = 0; number < 0x10000; ++number) {
        const auto unit = static_cast<char16_t>(number);
        values.push_back(charvec(std::u16string{unit, 0xd83d, unit, 0xde00, unit}));
        values.push_back(scalar(std::bit_cast<double>(bits())));
    }
    for (const Array& value : values) {
        const std::string json = vx::core::valueToJson(value);
        ASSERT_TRUE(vx::core::parseJsonValue(json, as(value.getType())) == value) << json;
    }
    // Where nothing states the class, numbers are not taken for strings, nor strings for numbers.
    for (const Array& value : {scalar(std::nan("")), row<double>({Limits::infinity(), -Limits::infinity()}),
                               matrix<double>(2, 1, {std::nan(""), Limits::infinity()}), row<double>({}),
                               scalar(1.0), text("NaN"), texts({"NaN", "Inf"})})
    {
        const std::string json = vx::core::valueToJson(value, {});
        EXPECT_TRUE(vx::core::parseJsonValue(json, {}) == value) << json;
    }
    EXPECT_EQ(vx::core::valueToJson(scalar(Limits::infinity()), as(ArrayType::DOUBLE)), "\"Inf\"");
    EXPECT_EQ(vx::core::valueToJson(scalar(-0.0)), "-0");
    EXPECT_EQ(vx::core::valueToJson(row<Array>({matrix<char16_t>(0, 0, {})})), R"([""])");
    EXPECT_EQ(vx::core::valueToJson(matrix<char16_t>(0, 0, {})), R"("")");
}

TEST(JsonReaderTest, AcceptsWhatAnotherReaderAccepts)
{
    const std::string seed = R"({"a": [1, -2.5e+3, true, null, "x\u00e9\n"], "b": {"c": "ä", "": []}} )";
    constexpr std::string_view alphabet = "{}[]\",:\\ 0123456789.eE+-truefalsn/b\n\x01";
    std::mt19937 bits(7);
    std::size_t accepted = 0;
    for (int round = 0; round < 20000; ++round) {
        std::string json = seed;
        for (std::size_t edits = 1 + bits() % 2; edits > 0; --edits) {
            json.replace(bits() % json.size(), bits() % 2, 1, alphabet[bits() % alphabet.size()]);
        }
        boost::json::error_code error;
        boost::json::parse(json, error);
        bool isRead = true;
        try {
            static_cast<void>(vx::core::readJson(json));
        } catch (const vx::core::ParseError&) {
            isRead = false;
        }
        ASSERT_EQ(isRead, !error) << json;
        accepted += isRead ? 1 : 0;
    }
    EXPECT_GT(accepted, 1000U);
    EXPECT_THROW((void)vx::core::readJson(std::string(100000, '[')), vx::core::ParseError);
    std::string ones = "[";
    for (int count = 0; count < 1'000'000; ++count) {
        ones += "1,";
    }
    EXPECT_THROW((void)vx::core::readJson(ones + "1]"), vx::core::ParseError)
        << "with the array one too many";
}

}  // namespace
