#include <builder/values.hpp>

#include <verdix/settings/internal/values.hpp>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace {

using namespace verdix::settings::internal;
using foundation::verdixdata::Array;
using foundation::verdixdata::ArrayType;
using foundation::verdixdata::TypedArray;
using testing::ElementsAre;

template <class T>
std::string outcome(int value)
{
    try {
        const TypedArray<T> row(makeRow<T>(std::array{value}));
        return std::to_string(row[0]);
    } catch (const boost::numeric::bad_numeric_cast& error) {
        return error.what();
    }
}

TEST(Values, RowsRefuseWhatTheirClassCannotHold)
{
    const std::string tooLow = "bad numeric conversion: negative overflow";
    const std::string tooHigh = "bad numeric conversion: positive overflow";
    EXPECT_EQ(outcome<std::uint8_t>(255), "255");
    EXPECT_EQ(outcome<std::uint8_t>(256), tooHigh);
    EXPECT_EQ(outcome<std::uint8_t>(-1), tooLow);
    EXPECT_EQ(outcome<std::int16_t>(-32768), "-32768");
    EXPECT_EQ(outcome<std::int16_t>(-32769), tooLow);
    EXPECT_EQ(outcome<std::int16_t>(32768), tooHigh);
    EXPECT_EQ(outcome<std::uint16_t>(65535), "65535");
    EXPECT_EQ(outcome<std::uint16_t>(65536), tooHigh);
    EXPECT_THROW((void)makeRow<std::uint8_t>(std::array{1, -1, 256}), boost::numeric::negative_overflow)
        << "the first wrong element decides";
}

TEST(Values, RowsKeepOrderAndShape)
{
    const TypedArray<double> doubles(makeRow<double>(std::array{3, 1, 2}));
    EXPECT_THAT(std::vector(doubles.begin(), doubles.end()), ElementsAre(3.0, 1.0, 2.0));
    EXPECT_THAT(doubles.getDimensions(), ElementsAre(1U, 3U));
    EXPECT_EQ(TypedArray<double>(makeRow(std::array{0.94}))[0], 0.94);

    const Array empty = makeRow<std::int16_t>(std::vector<int>());
    EXPECT_EQ(empty.getType(), ArrayType::INT16);
    EXPECT_THAT(empty.getDimensions(), ElementsAre(1U, 0U));
}

TEST(Values, ScalarsHaveTheClassAsked)
{
    EXPECT_EQ(makeScalar<std::uint32_t>(0).getType(), ArrayType::UINT32);
    EXPECT_EQ(TypedArray<std::int16_t>(makeScalar<std::int16_t>(600))[0], 600);
    EXPECT_EQ(TypedArray<std::uint8_t>(makeScalar<std::uint8_t>(255))[0], 255);
    EXPECT_EQ(TypedArray<int>(makeScalar<int>(-1))[0], -1);
}

TEST(Values, TextsAreRows)
{
    EXPECT_THAT(charvec(std::string()).getDimensions(), ElementsAre(1U, 0U));
    EXPECT_THAT(charvec(std::u16string(u"ab")).getDimensions(), ElementsAre(1U, 2U));

    const TypedArray<Array> texts(cellstr({"a", ""}));
    EXPECT_THAT(texts.getDimensions(), ElementsAre(1U, 2U));
    EXPECT_EQ(texts[1], charvec(std::string()));
    EXPECT_THAT(cell({1, 0}).getDimensions(), ElementsAre(1U, 0U));
    EXPECT_EQ(cell({1, 0}).getType(), ArrayType::CELL);
}

}  // namespace
