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

/// Raises InvalidArrayTypeException that names both classes.
[[noreturn]] VX_API void throwWrongType(ArrayType wanted, ArrayType found);

}  // namespace detail

/// The array class that holds elements of the C++ type T.
template <class T>
inline constexpr ArrayType arrayTypeOf = detail::ElementClass<T>::value;

/// Walks the elements of an array column by column.
template <class T>
using TypedIterator = T*;

/// View of an array as elements of the C++ type T: bool, char16_t (UTF-16 units), String, double, the eight
/// integer widths, or Array for a cell.
template <class T>
class TypedArray : public Array
{
public:
    /// Raises InvalidArrayTypeException when the array is of another class.
    ///@{
    explicit TypedArray(Array&& array) : Array(std::move(array)) { check(); }
    explicit TypedArray(const Array& array) : Array(array) { check(); }
    ///@}

    /// The reading forms copy nothing. An index counts from 0, column by column, and must lie inside the
    /// array.
    ///@{
    [[nodiscard]] TypedIterator<const T> begin() const noexcept { return elements(); }
    [[nodiscard]] TypedIterator<const T> end() const noexcept { return elements() + getNumberOfElements(); }
    [[nodiscard]] const T& operator[](std::size_t index) const noexcept { return elements()[index]; }
    ///@}

    /// The writing forms give this handle elements of its own first. They raise std::bad_alloc.
    ///@{
    [[nodiscard]] TypedIterator<T> begin()
    {
        detach();
        return elements();
    }
    [[nodiscard]] TypedIterator<T> end() { return begin() + getNumberOfElements(); }
    [[nodiscard]] T& operator[](std::size_t index) { return begin()[index]; }
    ///@}

private:
    void check() const
    {
        if (getType() != arrayTypeOf<T>) {
            detail::throwWrongType(arrayTypeOf<T>, getType());
        }
    }

    [[nodiscard]] T* elements() const noexcept { return static_cast<T*>(block_->elements()); }
};

namespace detail {

/// Writes one element, counted from 0 column by column; the index must lie inside the array.
template <class T>
void setElement(TypedArray<T>& array, std::size_t index, T value)
{
    array[index] = std::move(value);
}

}  // namespace detail

}  // namespace foundation::verdixdata
