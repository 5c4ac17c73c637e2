#pragma once

#include <foundation/verdixdata/array.hpp>

#include <utility>

namespace foundation::verdixdata {

namespace detail {

template <class T>
struct ElementClass;

#define VX_ELEMENT_CLASS(cppType, arrayType)                                                                 \
    template <>                                                                                              \
    struct ElementClass<cppType>                                                                             \
    {                                                                                                        \
        static constexpr ArrayType value = ArrayType::arrayType;                                             \
    };
VX_ELEMENT_CLASS(bool, LOGICAL)
VX_ELEMENT_CLASS(char16_t, CHAR)
VX_ELEMENT_CLASS(String, STRING)
VX_ELEMENT_CLASS(double, DOUBLE)
VX_ELEMENT_CLASS(std::int8_t, INT8)
VX_ELEMENT_CLASS(std::uint8_t, UINT8)
VX_ELEMENT_CLASS(std::int16_t, INT16)
VX_ELEMENT_CLASS(std::uint16_t, UINT16)
VX_ELEMENT_CLASS(std::int32_t, INT32)
VX_ELEMENT_CLASS(std::uint32_t, UINT32)
VX_ELEMENT_CLASS(std::int64_t, INT64)
VX_ELEMENT_CLASS(std::uint64_t, UINT64)
VX_ELEMENT_CLASS(Array, CELL)
#undef VX_ELEMENT_CLASS

}  // namespace detail

/// The element class for the C++ type T.
template <class T>
inline constexpr ArrayType arrayTypeOf = detail::ElementClass<T>::value;

/// Random-access iterator over the elements of an array in column-major order.
template <class T>
using TypedIterator = T*;

/// An array with typed access to its elements. T is bool, char16_t (UTF-16 code units), String, double, an
/// integer type of 8 to 64 bits, or Array for a cell.
template <class T>
class TypedArray : public Array
{
public:
    /// Throws InvalidArrayTypeException when the array has another element class.
    ///@{
    explicit TypedArray(Array&& array);
    explicit TypedArray(const Array& array);
    ///@}

    /// Read access, without a copy. Indices are zero-based in column-major order and must be in range.
    ///@{
    [[nodiscard]] TypedIterator<const T> begin() const noexcept { return static_cast<const T*>(elements()); }
    [[nodiscard]] TypedIterator<const T> end() const noexcept { return begin() + getNumberOfElements(); }
    [[nodiscard]] const T& operator[](std::size_t index) const noexcept { return begin()[index]; }
    ///@}

    /// Write access. Copies the elements first if they are shared. Throws std::bad_alloc.
    ///@{
    [[nodiscard]] TypedIterator<T> begin()
    {
        detach();
        return static_cast<T*>(elements());
    }
    [[nodiscard]] TypedIterator<T> end() { return begin() + getNumberOfElements(); }
    [[nodiscard]] T& operator[](std::size_t index) { return begin()[index]; }
    ///@}
};

namespace detail {

/// Writes one element. The index is zero-based in column-major order and must be in range.
template <class T>
void setElement(TypedArray<T>& array, std::size_t index, T value)
{
    array[index] = std::move(value);
}

}  // namespace detail

// Instantiated in the data array library.
#define VX_TYPED_ARRAY(cppType)                                                                              \
    extern template class VX_API TypedArray<cppType>;                                                        \
    extern template VX_API void detail::setElement(TypedArray<cppType>&, std::size_t, cppType);
VX_TYPED_ARRAY(bool)
VX_TYPED_ARRAY(char16_t)
VX_TYPED_ARRAY(String)
VX_TYPED_ARRAY(double)
VX_TYPED_ARRAY(std::int8_t)
VX_TYPED_ARRAY(std::uint8_t)
VX_TYPED_ARRAY(std::int16_t)
VX_TYPED_ARRAY(std::uint16_t)
VX_TYPED_ARRAY(std::int32_t)
VX_TYPED_ARRAY(std::uint32_t)
VX_TYPED_ARRAY(std::int64_t)
VX_TYPED_ARRAY(std::uint64_t)
VX_TYPED_ARRAY(Array)
#undef VX_TYPED_ARRAY

}  // namespace foundation::verdixdata
