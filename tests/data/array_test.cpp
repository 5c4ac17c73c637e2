#include <data/views.hpp>

#include <foundation/verdixdata/array_factory.hpp>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <tests/support/allocations.hpp>

namespace {

using namespace foundation::verdixdata;

const ArrayFactory factory;

template <class T>
T sample(int seed)
{
    if constexpr (std::same_as<T, String>) {
        return std::u16string(40, static_cast<char16_t>(u'a' + seed));
    } else if constexpr (std::same_as<T, Array>) {
        return factory.createScalarInternal(std::to_string(seed));
    } else {
        return static_cast<T>(seed);
    }
}

template <class T>
class ArrayOf : public testing::Test
{};

using Elements =
    testing::Types<bool, char16_t, String, double, std::int8_t, std::uint8_t, std::int16_t, std::uint16_t,
                   std::int32_t, std::uint32_t, std::int64_t, std::uint64_t, Array>;
TYPED_TEST_SUITE(ArrayOf, Elements);

TYPED_TEST(ArrayOf, KeepsItsElementsAndSharesThemUntilTheyAreWritten)
{
    auto original = factory.createArray<TypeParam>({2, 3});
    EXPECT_EQ(original.getDimensions(), (ArrayDimensions{2, 3}));
    for (const TypeParam& element : std::as_const(original)) {
        EXPECT_EQ(element, TypeParam()) << className(original.getType());
    }
    detail::setElement(original, 5, sample<TypeParam>(1));

    TypedArray<TypeParam> copy = original;
    EXPECT_EQ(std::as_const(copy).begin(), std::as_const(original).begin()) << "not shared";
    copy[0] = sample<TypeParam>(1);
    EXPECT_EQ(std::as_const(original)[0], TypeParam());
    EXPECT_EQ(std::as_const(copy)[5], sample<TypeParam>(1));
    EXPECT_FALSE(copy == original);

    const TypeParam* before = std::as_const(copy).begin();
    copy[1] = sample<TypeParam>(1);
    EXPECT_EQ(std::as_const(copy).begin(), before) << "copied without need";
    original[0] = original[1] = sample<TypeParam>(1);
    EXPECT_TRUE(copy == original);
}

TYPED_TEST(ArrayOf, IsViewedAsItsOwnClassOnly)
{
    const Array array = factory.createArray<TypeParam>({1, 0});
    EXPECT_TRUE(array.isEmpty());
    EXPECT_TRUE(array.isAssigned());
    EXPECT_NO_THROW(TypedArray<TypeParam>{array});
    using Other = std::conditional_t<std::same_as<TypeParam, bool>, double, bool>;
    EXPECT_THROW(TypedArray<Other>{array}, InvalidArrayTypeException);
    EXPECT_THROW(TypedArray<TypeParam>{Array()}, InvalidArrayTypeException);
}

TEST(ArrayFactory, RefusesWhatCannotBeMade)
{
    constexpr std::size_t huge = std::numeric_limits<std::size_t>::max();
    for (const ArrayDimensions& dimensions :
         {ArrayDimensions{huge, 2}, ArrayDimensions{huge / 8, 1}, ArrayDimensions{huge / 16, 1, 1}})
    {
        EXPECT_THROW(static_cast<void>(factory.createArray(ArrayType::DOUBLE, dimensions)),
                     std::bad_array_new_length);
    }
    EXPECT_THROW(static_cast<void>(factory.createArray(ArrayType::DOUBLE, {4})), std::invalid_argument);
    EXPECT_THROW(static_cast<void>(factory.createArray(ArrayType::UNKNOWN, {1, 1})), std::invalid_argument);
    EXPECT_EQ(factory.createArray(ArrayType::DOUBLE, {huge, huge, 0}).getNumberOfElements(), 0U);
}

TEST(Array, EqualityComparesClassSizeAndElementsToAnyDepth)
{
    auto number = factory.createArray<double>({1, 2});
    auto same = number;
    number[0] = same[0] = std::nan("");
    EXPECT_TRUE(number == same) << "NaN has not changed";
    EXPECT_FALSE(number == factory.createArray<double>({2, 1}));
    EXPECT_FALSE(factory.createArray<double>({1, 1}) == factory.createArray<std::int32_t>({1, 1}));
    EXPECT_FALSE(Array() == factory.createArray<double>({0, 0}));

    auto inner = factory.createArray<Array>({1, 1});
    inner[0] = number;
    auto left = factory.createArray<Array>({1, 2});
    auto right = factory.createArray<Array>({1, 2});
    left[0] = right[0] = inner;
    EXPECT_TRUE(left == right);
    same[1] = 1;
    inner[0] = same;
    right[0] = inner;
    EXPECT_FALSE(left == right);
}

TEST(Array, FailedAllocationsLeaveTheArrayAsItWas)
{
    auto original = factory.createArray<String>({1, 3, 2});
    std::fill(original.begin(), original.end(), sample<String>(1));
    auto copy = original;
    const std::size_t failures =
        tests::failEveryAllocation([&] { copy[2] = std::nullopt; },
                                   [&] {
                                       EXPECT_TRUE(copy == original);
                                       EXPECT_EQ(std::as_const(copy)[5], sample<String>(1));
                                   });
    EXPECT_GE(failures, 7U) << "the block and its texts";
    EXPECT_FALSE(copy == original);
}

}  // namespace
