#pragma once

// Functions for arrays whose element class is only known at run time.

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

/// Calls visitor(std::type_identity<T>()) with the C++ type T of an element class and returns the result,
/// whose type must not depend on T. Throws std::invalid_argument for UNKNOWN.
template <class Visitor>
decltype(auto) visitElementType(foundation::verdixdata::ArrayType type, Visitor&& visitor)
{
    using foundation::verdixdata::ArrayType;
    switch (type) {
#define VX_VISIT(cppType, arrayType, className)                                                              \
    case ArrayType::arrayType:                                                                               \
        return visitor(std::type_identity<cppType>{});
        VX_FOR_EACH_ELEMENT_CLASS(VX_VISIT)
#undef VX_VISIT
    case ArrayType::UNKNOWN:
        break;
    }
    throw std::invalid_argument("An array that nothing was assigned to has no elements to work on.");
}

/// Returns the element class with this name, such as "logical"; nothing if there is none.
[[nodiscard]] inline std::optional<foundation::verdixdata::ArrayType> classNamed(std::string_view name)
{
    using foundation::verdixdata::ArrayType;
#define VX_COMPARE(cppType, arrayType, className)                                                            \
    if (name == (className)) {                                                                               \
        return ArrayType::arrayType;                                                                         \
    }
    VX_FOR_EACH_ELEMENT_CLASS(VX_COMPARE)
#undef VX_COMPARE
    return std::nullopt;
}

/// The element types of the numeric classes: double and the eight integer types. bool and char16_t are not
/// numeric.
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

/// Returns true if lower <= number <= upper. Exact even for 64-bit integers that a double cannot represent.
template <Number T>
[[nodiscard]] bool isWithin(T number, double lower, double upper) noexcept
{
    const auto exact = static_cast<long double>(number);
    return lower <= exact && exact <= upper;
}

/// Returns true if the array is numeric and the predicate is true for all of its elements; true for an empty
/// numeric array.
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

/// Returns true if the element class is numeric.
[[nodiscard]] inline bool isNumeric(const foundation::verdixdata::Array& array)
{
    return everyNumber(array, [](auto) { return true; });
}

/// Returns the elements in column-major order, valid while the array or a copy of it exists. Throws
/// InvalidArrayTypeException when the array has another element class.
template <class T>
[[nodiscard]] std::span<const T> elementsOf(const foundation::verdixdata::Array& array)
{
    const foundation::verdixdata::TypedArray<T> typed(array);
    return {typed.begin(), typed.getNumberOfElements()};
}

/// Returns true if the array is two-dimensional and has this size; std::nullopt allows any number of rows or
/// columns. A 0-by-0 char array is an empty character vector and is treated as 1-by-0.
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

/// Returns true for a 1-by-N array, N >= 0, and for the 0-by-0 char array.
[[nodiscard]] inline bool isRow(const foundation::verdixdata::Array& array)
{
    return hasSize(array, 1, array.getNumberOfElements());
}

/// Returns the characters of a character vector or of a string scalar that is not missing; std::nullopt for
/// any other array. The view is valid while the array or a copy of it exists.
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
