#pragma once

// Ways to look at an array whose element class is known only at run time.

#include <foundation/verdixdata/typed_array.hpp>

#include <algorithm>
#include <cmath>
#include <concepts>
#include <cstddef>
#include <optional>
#include <span>
#include <stdexcept>
#include <string_view>
#include <type_traits>

namespace vx::data {

/// Calls visitor(std::type_identity<T>) with the C++ type of an element class; every call must return the
/// same type. Raises std::invalid_argument for UNKNOWN.
template <class Visitor>
decltype(auto) visitElementType(foundation::verdixdata::ArrayType type, Visitor&& visitor)
{
    using foundation::verdixdata::ArrayType;
    switch (type) {
    case ArrayType::LOGICAL:
        return visitor(std::type_identity<bool>{});
    case ArrayType::CHAR:
        return visitor(std::type_identity<char16_t>{});
    case ArrayType::STRING:
        return visitor(std::type_identity<foundation::verdixdata::String>{});
    case ArrayType::DOUBLE:
        return visitor(std::type_identity<double>{});
    case ArrayType::INT8:
        return visitor(std::type_identity<std::int8_t>{});
    case ArrayType::UINT8:
        return visitor(std::type_identity<std::uint8_t>{});
    case ArrayType::INT16:
        return visitor(std::type_identity<std::int16_t>{});
    case ArrayType::UINT16:
        return visitor(std::type_identity<std::uint16_t>{});
    case ArrayType::INT32:
        return visitor(std::type_identity<std::int32_t>{});
    case ArrayType::UINT32:
        return visitor(std::type_identity<std::uint32_t>{});
    case ArrayType::INT64:
        return visitor(std::type_identity<std::int64_t>{});
    case ArrayType::UINT64:
        return visitor(std::type_identity<std::uint64_t>{});
    case ArrayType::CELL:
        return visitor(std::type_identity<foundation::verdixdata::Array>{});
    case ArrayType::UNKNOWN:
        break;
    }
    throw std::invalid_argument("An array that nothing was assigned to has no elements to work on.");
}

/// Element types of the numeric classes: double and the eight integer widths, neither logical nor text.
template <class T>
concept Number =
    (std::integral<T> && !std::same_as<T, bool> && !std::same_as<T, char16_t>) || std::same_as<T, double>;

template <Number T>
[[nodiscard]] bool isWhole(T number) noexcept
{
    if constexpr (std::integral<T>) {
        return true;
    } else {
        return std::isfinite(number) && std::trunc(number) == number;
    }
}

/// Whether lower <= number <= upper, exactly also for integers that no double can express.
template <Number T>
[[nodiscard]] bool isWithin(T number, double lower, double upper) noexcept
{
    const auto exact = static_cast<long double>(number);
    return lower <= exact && exact <= upper;
}

/// True for a numeric array whose every element the predicate accepts. Without elements there is nothing to
/// refuse, but the class still counts.
template <class Predicate>
[[nodiscard]] bool everyNumber(const foundation::verdixdata::Array& array, Predicate accepts)
{
    return array.isAssigned() && visitElementType(array.getType(), [&]<class T>(std::type_identity<T>) {
               if constexpr (Number<T>) {
                   const foundation::verdixdata::TypedArray<T> typed(array);
                   return std::all_of(typed.begin(), typed.end(), accepts);
               } else {
                   return false;
               }
           });
}

/// True for an array of a numeric class, whatever its elements.
[[nodiscard]] inline bool isNumeric(const foundation::verdixdata::Array& array)
{
    return everyNumber(array, [](auto) { return true; });
}

/// The elements, column by column; valid as long as the array or a copy of it. Raises
/// InvalidArrayTypeException when the array is of another class.
template <class T>
[[nodiscard]] std::span<const T> elementsOf(const foundation::verdixdata::Array& array)
{
    const foundation::verdixdata::TypedArray<T> typed(array);
    return {typed.begin(), typed.getNumberOfElements()};
}

/// True for a two-dimensional array of this size; any number of rows or columns where none is given. The
/// 0-by-0 array of characters is the empty character vector, and so counts as 1-by-0.
[[nodiscard]] inline bool hasSize(const foundation::verdixdata::Array& array, std::optional<std::size_t> rows,
                                  std::optional<std::size_t> columns)
{
    const auto dimensions = array.getDimensions();
    if (dimensions.size() != 2) {
        return false;
    }
    const bool isEmptyVector = array.getType() == foundation::verdixdata::ArrayType::CHAR &&
                               dimensions[0] == 0 && dimensions[1] == 0;
    const std::size_t actualRows = isEmptyVector ? 1 : dimensions[0];
    return rows.value_or(actualRows) == actualRows && columns.value_or(dimensions[1]) == dimensions[1];
}

[[nodiscard]] inline bool isScalar(const foundation::verdixdata::Array& array)
{
    return hasSize(array, 1, 1);
}

/// True for a 1-by-N array, N from 0 on, and for the 0-by-0 array of characters.
[[nodiscard]] inline bool isRow(const foundation::verdixdata::Array& array)
{
    return hasSize(array, 1, array.getNumberOfElements());
}

/// The text of a character row or of a 1-by-1 string that is not missing; nothing for any other array. The
/// view is valid as long as the array or a copy of it.
[[nodiscard]] inline std::optional<std::u16string_view> textOf(const foundation::verdixdata::Array& array)
{
    using foundation::verdixdata::ArrayType;
    if (array.getType() == ArrayType::CHAR && isRow(array)) {
        const auto units = elementsOf<char16_t>(array);
        return std::u16string_view(units.data(), units.size());
    }
    if (array.getType() == ArrayType::STRING && isScalar(array)) {
        return elementsOf<foundation::verdixdata::String>(array).front();
    }
    return std::nullopt;
}

}  // namespace vx::data
