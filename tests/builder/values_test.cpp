#include <builder/values.hpp>

#include <gtest/gtest.h>

#include <array>
#include <cstdint>

namespace {

using namespace verdix::settings::internal;
using foundation::verdixdata::TypedArray;

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

}  // namespace
