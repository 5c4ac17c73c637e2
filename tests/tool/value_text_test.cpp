#include <settings_core/value_text.hpp>

#include <gtest/gtest.h>

#include <limits>
#include <tests/support/values.hpp>

namespace {

using namespace foundation::verdixdata;
using tests::matrix;
using tests::text;
using tests::texts;
using vx::core::shortValueText;
using vx::core::valueText;

TEST(ValueText, WritesEveryShape)
{
    EXPECT_EQ(valueText(matrix<bool>(1, 1, {true})), "true");
    EXPECT_EQ(valueText(matrix<std::int32_t>(1, 3, {14, 0, 255})), "[14 0 255]");
    EXPECT_EQ(valueText(matrix<double>(2, 2, {1, 3, 2, 4})), "[1 2; 3 4]");  // stored column by column
    EXPECT_EQ(valueText(matrix<std::uint64_t>(1, 1, {std::numeric_limits<std::uint64_t>::max()})),
              "18446744073709551615");
    EXPECT_EQ(valueText(text("a \"b\"")), "a \"b\"");
    EXPECT_EQ(shortValueText(matrix<char16_t>(0, 0, {}), 40), R"("")");
    EXPECT_EQ(valueText(tests::string("héllo")), "héllo");
    EXPECT_EQ(valueText(matrix<String>(1, 2, {u"a", std::nullopt})), R"(["a" missing])");
    EXPECT_EQ(valueText(texts({"a", "say \"x\""})), R"({"a","say ""x"""})");
    EXPECT_EQ(valueText(matrix<Array>(1, 2, {texts({"a"}), Array()})), R"({{"a"},[]})");
    EXPECT_EQ(valueText(Array()), "");
}

TEST(ValueText, WritesNumbersSoThatTheyReadBack)
{
    using vx::core::numberText;
    constexpr double infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(numberText(9007199254740992.0), "9007199254740992");
    EXPECT_EQ(numberText(1e300), "1e+300");
    EXPECT_EQ(numberText(std::numeric_limits<double>::quiet_NaN()), "NaN");
    EXPECT_EQ(numberText(-infinity), "-Inf");
}

TEST(ValueText, ShortFormFitsOneLine)
{
    EXPECT_EQ(shortValueText(text("a\nb\tc\x01"), 40), R"("a\nb\tc\x01")");
    EXPECT_EQ(shortValueText(text("äöü"), 5), "\"äöü\"");
    EXPECT_EQ(shortValueText(text("äöü"), 4), "\"äö…");
    EXPECT_EQ(shortValueText(text("abc"), 0), "");
}

}  // namespace
