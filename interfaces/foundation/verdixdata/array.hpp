#pragma once

#include <foundation/export.hpp>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

/// Data arrays: the values of the scripting language, with an element class and dimensions.
namespace foundation::verdixdata {

/// Element class of an array. UNKNOWN is the class of an unassigned array.
enum class ArrayType : std::uint8_t
{
    UNKNOWN,
    LOGICAL,
    CHAR,
    STRING,
    DOUBLE,
    INT8,
    UINT8,
    INT16,
    UINT16,
    INT32,
    UINT32,
    INT64,
    UINT64,
    CELL
};

/// Sizes along each dimension, rows first; at least two.
using ArrayDimensions = std::vector<std::size_t>;

/// An element of a string array: a UTF-16 string, or std::nullopt for a missing string.
using String = std::optional<std::u16string>;

/// Thrown when a TypedArray is constructed from an array of another element class.
class VX_API InvalidArrayTypeException : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

namespace detail {

/// Storage of an array: element class, dimensions and elements.
struct ArrayBlock;

}  // namespace detail

/// A data array: elements of one class in two or more dimensions. Reference-counted with copy-on-write:
/// copies share their elements until one of them is written through a TypedArray. Copies that share elements
/// may be used in different threads; concurrent use of one object needs a lock.
class VX_API Array
{
public:
    /// Creates an unassigned array: class UNKNOWN, 0-by-0.
    Array() noexcept;
    /// Copies share the elements; a moved-from array is unassigned.
    ///@{
    Array(const Array& other) noexcept;
    Array(Array&& other) noexcept;
    Array& operator=(const Array& other) noexcept;
    Array& operator=(Array&& other) noexcept;
    ///@}
    ~Array();

    /// Returns the element class.
    [[nodiscard]] ArrayType getType() const noexcept;

    /// Returns the size along each dimension; 0-by-0 for an unassigned array. Throws std::bad_alloc.
    [[nodiscard]] ArrayDimensions getDimensions() const;

    /// Returns the number of elements: the product of the dimensions.
    [[nodiscard]] std::size_t getNumberOfElements() const noexcept;

    /// Returns true if there are no elements, as in an unassigned array or a 1-by-0 character vector.
    [[nodiscard]] bool isEmpty() const noexcept;

    /// Returns false for an unassigned array, as created by the default constructor.
    [[nodiscard]] bool isAssigned() const noexcept;

    /// Returns true if class, dimensions and elements are equal; cells are compared recursively. NaN equals
    /// NaN, because the comparison serves to detect changed values.
    friend VX_API bool operator==(const Array& left, const Array& right) noexcept;

protected:
    friend class ArrayFactory;

    /// Takes ownership of one reference to the block.
    explicit Array(detail::ArrayBlock* block) noexcept;

    /// Copies the elements if they are shared. Throws std::bad_alloc.
    void detach();

    /// Returns a pointer to the first element; TypedArray lists its C++ type for each class. The array must
    /// be assigned.
    [[nodiscard]] void* elements() const noexcept;

    detail::ArrayBlock* block_;  ///< null for an unassigned array
};

/// Returns the name of an element class in the scripting language: "logical", "char", "string", "double",
/// "int8" to "uint64", "cell"; "unknown" for UNKNOWN.
[[nodiscard]] VX_API const char* className(ArrayType type) noexcept;

}  // namespace foundation::verdixdata
