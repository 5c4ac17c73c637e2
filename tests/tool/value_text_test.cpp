#include <settings_core/value_text.hpp>

#include <foundation/verdixdata/array_factory.hpp>
#include <verdix/settings/internal/values.hpp>

#include <gtest/gtest.h>

#include <initializer_list>
#include <limits>

namespace {

using namespace foundation::verdixdata;
using verdix::settings::internal::cell;
using verdix::settings::internal::cellstr;
using verdix::settings::internal::charvec;
using vx::core::shortValueText;
using vx::core::valueText;

template <class T>
Array make(const ArrayDimensions& dimensions, std::initializer_list<T> elements)
{
    TypedArray<T> array = ArrayFactory().createArray<T>(dimensions);
    std::copy(elements.begin(), elements.end(), array.begin());
    return array;
}

TEST(ValueText, WritesEveryShape)
{
    EXPECT_EQ(valueText(make<bool>({1, 1}, {true})), "true");
    EXPECT_EQ(valueText(make<std::int32_t>({1, 3}, {14, 0, 255})), "[14 0 255]");
    EXPECT_EQ(valueText(make<double>({2, 2}, {1, 3, 2, 4})), "[1 2; 3 4]");  // stored column by column
    EXPECT_EQ(valueText(make<std::int8_t>({1, 1}, {-5})), "-5");
    EXPECT_EQ(valueText(make<std::uint64_t>({1, 1}, {std::numeric_limits<std::uint64_t>::max()})),
              "18446744073709551615");
    EXPECT_EQ(valueText(make<double>({1, 0}, {})), "[]");
    EXPECT_EQ(valueText(charvec(std::string("a \"b\""))), "a \"b\"");
    EXPECT_EQ(valueText(charvec(std::string())), "");
    EXPECT_EQ(valueText(make<char16_t>({2, 2}, {u'a', u'c', u'b', u'd'})), R"(["ab"; "cd"])");
    EXPECT_EQ(valueText(ArrayFactory().createScalarInternal("héllo")), "héllo");
    EXPECT_EQ(valueText(make<String>({1, 2}, {u"a", std::nullopt})), R"(["a" missing])");
    EXPECT_EQ(valueText(cellstr({"a", "say \"x\""})), R"({"a","say ""x"""})");
    EXPECT_EQ(valueText(cell({1, 0})), "{}");
    EXPECT_EQ(valueText(make<Array>({1, 2}, {cellstr({"a"}), Array()})), R"({{"a"},[]})");
    EXPECT_EQ(valueText(Array()), "");
}

TEST(ValueText, WritesNumbersSoThatTheyReadBack)
{
    using vx::core::numberText;
    constexpr double infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(numberText(100000), "100000");
    EXPECT_EQ(numberText(-2147483648.0), "-2147483648");
    EXPECT_EQ(numberText(9007199254740992.0), "9007199254740992");
    EXPECT_EQ(numberText(1e300), "1e+300");
    EXPECT_EQ(numberText(0.94), "0.94");
    EXPECT_EQ(numberText(std::numeric_limits<double>::quiet_NaN()), "NaN");
    EXPECT_EQ(numberText(-infinity), "-Inf");
}

TEST(ValueText, ShortFormFitsOneLine)
{
    EXPECT_EQ(shortValueText(charvec(std::string("a\nb\tc\x01")), 40), R"("a\nb\tc\x01")");
    EXPECT_EQ(shortValueText(charvec(std::string("äöü")), 5), "\"äöü\"");
    EXPECT_EQ(shortValueText(charvec(std::string("äöü")), 4), "\"äö…");
    EXPECT_EQ(shortValueText(charvec(std::string("abc")), 0), "");
}

}  // namespace
