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
void expectBounds(int lowest, int highest)
{
    EXPECT_EQ(TypedArray<T>(makeRow<T>(std::array{lowest, highest}))[1], highest);
    EXPECT_THROW((void)makeRow<T>(std::array{lowest - 1}), boost::numeric::negative_overflow);
    EXPECT_THROW((void)makeRow<T>(std::array{highest + 1}), boost::numeric::positive_overflow);
}

TEST(Values, RowsRefuseWhatTheirClassCannotHold)
{
    expectBounds<std::uint8_t>(0, 255);
    expectBounds<std::int16_t>(-32768, 32767);
    expectBounds<std::uint16_t>(0, 65535);
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
