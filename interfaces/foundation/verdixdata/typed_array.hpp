#pragma once

#include <foundation/verdixdata/array.hpp>

#include <utility>

namespace foundation::verdixdata {

/// Calls the macro X(C++ type, ArrayType, class name) for each class of elements.
#define VX_FOR_EACH_ELEMENT_CLASS(X)                                                                         \
    X(bool, LOGICAL, "logical")                                                                              \
    X(char16_t, CHAR, "char")                                                                                \
    X(::foundation::verdixdata::String, STRING, "string")                                                    \
    X(double, DOUBLE, "double")                                                                              \
    X(std::int8_t, INT8, "int8")                                                                             \
    X(std::uint8_t, UINT8, "uint8")                                                                          \
    X(std::int16_t, INT16, "int16")                                                                          \
    X(std::uint16_t, UINT16, "uint16")                                                                       \
    X(std::int32_t, INT32, "int32")                                                                          \
    X(std::uint32_t, UINT32, "uint32")                                                                       \
    X(std::int64_t, INT64, "int64")                                                                          \
    X(std::uint64_t, UINT64, "uint64")                                                                       \
    X(::foundation::verdixdata::Array, CELL, "cell")

namespace detail {

template <class T>
struct ElementClass;

#define VX_ELEMENT_CLASS(cppType, arrayType, className)                                                      \
    template <>                                                                                              \
    struct ElementClass<cppType>                                                                             \
    {                                                                                                        \
        static constexpr ArrayType value = ArrayType::arrayType;                                             \
    };
VX_FOR_EACH_ELEMENT_CLASS(VX_ELEMENT_CLASS)
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
#define VX_TYPED_ARRAY(cppType, arrayType, className)                                                        \
    extern template class VX_API TypedArray<cppType>;                                                        \
    extern template VX_API void detail::setElement(TypedArray<cppType>&, std::size_t, cppType);
VX_FOR_EACH_ELEMENT_CLASS(VX_TYPED_ARRAY)
#undef VX_TYPED_ARRAY

}  // namespace foundation::verdixdata
