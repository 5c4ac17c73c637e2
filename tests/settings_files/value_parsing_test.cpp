#include <settings_core/value_parsing.hpp>

#include <foundation/verdixdata/array_factory.hpp>
#include <verdix/settings/internal/values.hpp>

#include <boost/json/parse.hpp>
#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <string>
#include <vector>

namespace {

using namespace foundation::verdixdata;
using verdix::settings::internal::cellstr;
using verdix::settings::internal::charvec;
using vx::core::ValueForm;

template <class T>
Array matrix(std::size_t rows, std::size_t columns, const std::vector<T>& byColumn)
{
    auto array = ArrayFactory().createArray<T>({rows, columns});
    std::copy(byColumn.begin(), byColumn.end(), array.begin());
    return array;
}

Array stringScalar(std::u16string text)
{
    auto array = ArrayFactory().createArray<String>({1, 1});
    array[0] = std::move(text);
    return array;
}

constexpr ValueForm as(ArrayType type)
{
    return {.elementClass = type};
}

TEST(ValueParsingTest, ReadsWhatPeopleWrite)
{
    const ValueForm any;
    const ValueForm colour{.elementClass = ArrayType::DOUBLE, .acceptsWords = true};
    struct
    {
        std::string text;
        ValueForm form;
        Array value;
    } const cases[] = {
        {" true ", as(ArrayType::LOGICAL), matrix<bool>(1, 1, {true})},
        {"-1.5e3", as(ArrayType::DOUBLE), matrix<double>(1, 1, {-1500})},
        {"+.5", as(ArrayType::DOUBLE), matrix<double>(1, 1, {.5})},
        {"3e2", as(ArrayType::INT16), matrix<std::int16_t>(1, 1, {300})},
        {"18446744073709551615", as(ArrayType::UINT64),
         matrix<std::uint64_t>(1, 1, {std::numeric_limits<std::uint64_t>::max()})},
        {"[14 0,  255 ]", as(ArrayType::INT32), matrix<std::int32_t>(1, 3, {14, 0, 255})},
        {"[1,2;3 4]", as(ArrayType::DOUBLE), matrix<double>(2, 2, {1, 3, 2, 4})},
        {"[]", as(ArrayType::DOUBLE), matrix<double>(1, 0, {})},
        {"two words ", as(ArrayType::CHAR), charvec("two words ")},
        {"", as(ArrayType::CHAR), charvec("")},
        {"'it''s'", as(ArrayType::CHAR), charvec("it's")},
        {" \"a \"\"b\"\"\" ", as(ArrayType::STRING), stringScalar(u"a \"b\"")},
        {"12", as(ArrayType::STRING), stringScalar(u"12")},
        {"{\"a\",'b' \"ä\"}", as(ArrayType::CELL), cellstr({"a", "b", "ä"})},
        {"{ }", as(ArrayType::CELL), cellstr({})},
        {"red", colour, charvec("red")},
        {"[0 .5 1]", colour, matrix<double>(1, 3, {0, .5, 1})},
        {"false", any, matrix<bool>(1, 1, {false})},
        {"-2", any, matrix<double>(1, 1, {-2})},
        {"-x", any, {}},
        {"auto", any, charvec("auto")},
        {"{'a'}", any, cellstr({"a"})},
    };
    for (const auto& [text, form, value] : cases) {
        if (value.isAssigned()) {
            EXPECT_TRUE(vx::core::parseValue(text, form) == value) << text;
        } else {
            EXPECT_THROW(static_cast<void>(vx::core::parseValue(text, form)), vx::core::TextError) << text;
        }
    }
    EXPECT_TRUE(vx::core::parseJsonValue("[\"a\", \"b\"]", any) == cellstr({"a", "b"}));
    EXPECT_TRUE(vx::core::parseJsonValue("[[1, 2], [3, 4]]", any) == matrix<double>(2, 2, {1, 3, 2, 4}));
    EXPECT_TRUE(vx::core::parseJsonValue("[\"Inf\", 2]", any) ==
                matrix<double>(1, 2, {std::numeric_limits<double>::infinity(), 2}));
    EXPECT_TRUE(vx::core::parseJsonValue("\"red\"", colour) == charvec("red"));
}

TEST(ValueParsingTest, SaysWhereAndWhatIsExpected)
{
    struct
    {
        std::string text;
        ValueForm form;
        std::size_t offset;
        std::string message;
        bool isJson = false;
    } const cases[] = {
        {"yes", as(ArrayType::LOGICAL), 0, "true or false, not yes"},
        {"[1 2; 3]", as(ArrayType::DOUBLE), 6, "row 2 has 1 elements, expected 2"},
        {"[1 300]", as(ArrayType::UINT8), 3, "a whole number from 0 to 255, not 300"},
        {"1.5", as(ArrayType::INT32), 0, "a whole number from -2147483648 to 2147483647"},
        {"1e999", as(ArrayType::DOUBLE), 0, "a number"},
        {"[1 2", as(ArrayType::DOUBLE), 4, "\"]\" after an element"},
        {"[1,]", as(ArrayType::DOUBLE), 3, "an element"},
        {"'open", as(ArrayType::CHAR), 5, "a closing '"},
        {"'a' b", as(ArrayType::CHAR), 4, "nothing more"},
        {"a", as(ArrayType::CELL), 0, "a list of texts"},
        {"{'a' 1}", as(ArrayType::CELL), 5, "a text, not 1"},
        {"{'a'; 'b'}", as(ArrayType::CELL), 0, "in one row"},
        {"{1 2}", as(ArrayType::DOUBLE), 0, "no braces"},
        {"a\xff", as(ArrayType::CHAR), 1, "UTF-8"},
        {"[1, \"a\"]", as(ArrayType::DOUBLE), 4, "a number, not a text", true},
        {"[[1, 2], [3]]", as(ArrayType::DOUBLE), 9, "a list of 2 elements", true},
        {"{\"a\": 1}", as(ArrayType::DOUBLE), 0, "not an object", true},
        {"null", as(ArrayType::CHAR), 0, "a text", true},
        {"12 ,", as(ArrayType::DOUBLE), 3, "the end of the text", true},
    };
    for (const auto& test : cases) {
        try {
            static_cast<void>(test.isJson ? vx::core::parseJsonValue(test.text, test.form)
                                          : vx::core::parseValue(test.text, test.form));
            ADD_FAILURE() << test.text << " was read";
        } catch (const vx::core::TextError& error) {
            EXPECT_EQ(error.offset(), test.offset) << test.text << ": " << error.what();
            EXPECT_NE(std::string(error.what()).find(test.message), std::string::npos) << error.what();
        }
    }
}

class RandomValues
{
public:
    Array any()
    {
        switch (below(7)) {
        case 0:
            return numbers<double>([this] { return real(); });
        case 1:
            return numbers<std::int64_t>([this] { return static_cast<std::int64_t>(bits_()); });
        case 2:
            return numbers<std::uint8_t>([this] { return static_cast<std::uint8_t>(bits_()); });
        case 3:
            return numbers<bool>([this] { return below(2) == 1; });
        case 4:
            return charvec(units());
        case 5:
            return numbers<String>([this] { return below(4) == 0 ? String() : String(units()); });
        default:
            return texts();
        }
    }

private:
    std::size_t below(std::size_t limit) { return bits_() % limit; }

    double real()
    {
        constexpr double special[] = {0.0,
                                      -0.0,
                                      1e300,
                                      5e-324,
                                      std::numeric_limits<double>::quiet_NaN(),
                                      -std::numeric_limits<double>::infinity()};
        const std::size_t choice = below(12);
        return choice < std::size(special) ? special[choice]
                                           : std::normal_distribution<double>(0, 1e6)(bits_);
    }

    std::u16string units()
    {
        std::u16string text(below(6), u' ');
        for (char16_t& unit : text) {
            // A third ASCII with its control characters, a third surrogates, paired or not.
            const std::size_t kind = below(3);
            unit = static_cast<char16_t>(kind == 0   ? below(128)
                                         : kind == 1 ? 0xD800 + below(0x800)
                                                     : bits_());
        }
        return text;
    }

    template <class T, class Make>
    Array numbers(Make make)
    {
        const std::size_t rows = 1 + below(3);
        auto array = ArrayFactory().createArray<T>({rows, below(4)});
        for (T& element : array) {
            element = make();
        }
        return array;
    }

    Array texts()
    {
        auto cell = ArrayFactory().createArray<Array>({1, below(4)});
        for (Array& element : cell) {
            element = charvec(units());
        }
        return cell;
    }

    std::mt19937_64 bits_{20260101};
};

TEST(ValueParsingTest, JsonHoldsEveryValueExactly)
{
    RandomValues random;
    for (int round = 0; round < 5000; ++round) {
        const Array value = random.any();
        const std::string json = vx::core::valueToJson(value);
        ASSERT_TRUE(vx::core::parseJsonValue(json, as(value.getType())) == value) << json;
    }
    const Array minusZero = vx::core::parseJsonValue(vx::core::valueToJson(matrix<double>(1, 1, {-0.0})), {});
    EXPECT_TRUE(std::signbit(TypedArray<double>(minusZero)[0]));
    EXPECT_THROW(static_cast<void>(vx::core::valueToJson({})), std::invalid_argument);
    EXPECT_THROW(static_cast<void>(vx::core::valueToJson(matrix<double>(0, 3, {}))), std::invalid_argument);
}

TEST(JsonReaderTest, AcceptsWhatAnotherReaderAccepts)
{
    const std::string seed = R"({"a": [1, -2.5e+3, true, null, "x\u00e9\n"], "b": {"c": "ä", "": []}} )";
    constexpr std::string_view alphabet = "{}[]\",:\\ 0123456789.eE+-truefalsn/b\n\x01";
    std::mt19937 bits(7);
    std::size_t accepted = 0;
    for (int round = 0; round < 20000; ++round) {
        std::string text = seed;
        for (std::size_t edits = 1 + bits() % 2; edits > 0; --edits) {
            text.replace(bits() % text.size(), bits() % 2, 1, alphabet[bits() % alphabet.size()]);
        }
        boost::json::error_code error;
        boost::json::parse(text, error);
        bool isRead = true;
        try {
            static_cast<void>(vx::core::readJson(text));
        } catch (const vx::core::TextError&) {
            isRead = false;
        }
        ASSERT_EQ(isRead, !error) << text;
        accepted += isRead ? 1 : 0;
    }
    EXPECT_GT(accepted, 1000U);
    EXPECT_THROW(static_cast<void>(vx::core::readJson(std::string(100000, '['))), vx::core::TextError);
}

}  // namespace
