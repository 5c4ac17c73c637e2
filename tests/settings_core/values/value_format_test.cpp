#include <settings_core/values/value_format.hpp>

#include <gtest/gtest.h>

#include <limits>
#include <tests/support/values.hpp>

namespace {

using namespace foundation::verdixdata;
using tests::matrix;
using tests::text;
using tests::texts;
using vx::core::formatValue;
using vx::core::formatValueOnOneLine;

TEST(FormatValue, WritesEveryShape)
{
    EXPECT_EQ(formatValue(matrix<double>(2, 2, {1, 3, 2, 4})), "[1 2; 3 4]");  // stored column by column
    EXPECT_EQ(formatValue(matrix<std::uint64_t>(1, 1, {std::numeric_limits<std::uint64_t>::max()})),
              "18446744073709551615");
    EXPECT_EQ(formatValue(text("a \"b\"")), "a \"b\"");
    EXPECT_EQ(formatValueOnOneLine(matrix<char16_t>(0, 0, {}), 40), R"("")");
    EXPECT_EQ(formatValue(matrix<String>(1, 2, {u"a", std::nullopt})), R"(["a" missing])");
    EXPECT_EQ(formatValue(texts({"a", "say \"x\""})), R"({"a","say ""x"""})");
    EXPECT_EQ(formatValue(matrix<Array>(1, 2, {texts({"a"}), Array()})), R"({{"a"},[]})");
}

TEST(FormatValue, WritesNumbersSoThatTheyReadBack)
{
    using vx::core::formatNumber;
    constexpr double infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(formatNumber(9007199254740992.0), "9007199254740992");
    EXPECT_EQ(formatNumber(1e300), "1e+300");
    EXPECT_EQ(formatNumber(-0.0), "-0");
    EXPECT_EQ(formatNumber(std::numeric_limits<double>::quiet_NaN()), "NaN");
    EXPECT_EQ(formatNumber(-infinity), "-Inf");
}

TEST(FormatValue, ShortFormFitsOneLine)
{
    EXPECT_EQ(formatValueOnOneLine(text("a\nb\tc\x01"), 40), R"("a\nb\tc\x01")");
    EXPECT_EQ(formatValueOnOneLine(text("äöü"), 5), "\"äöü\"");
    EXPECT_EQ(formatValueOnOneLine(text("äöü"), 4), "\"äö…");
    EXPECT_EQ(formatValueOnOneLine(text("abc"), 0), "");
}

}  // namespace
