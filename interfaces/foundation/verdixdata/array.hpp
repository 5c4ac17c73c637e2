#pragma once

#include <foundation/export.hpp>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

/// Data arrays: typed, shaped and cheaply shared values, as the scripting language has them.
namespace foundation::verdixdata {

/// Element class of an array. UNKNOWN belongs to an array that nothing was assigned to.
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

/// One element of a string array: a UTF-16 string, or nothing where the string is missing.
using String = std::optional<std::u16string>;

/// Thrown when an array is viewed as another element class than it has.
class VX_API InvalidArrayTypeException : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

namespace detail {

/// What the library keeps of an array: its class, its dimensions and its elements.
struct ArrayBlock;

}  // namespace detail

/// A data array: a shared handle, as cheap to copy as a pointer, to elements of one class in two or more
/// dimensions. Copies share their elements until one of them is written through a TypedArray, which then
/// takes elements of its own. Handles to one array may be used from several threads; one handle may not.
class VX_API Array
{
public:
    /// An array that nothing was assigned to: class UNKNOWN, 0-by-0.
    Array() noexcept;
    /// Copies share the elements; what was moved from is unassigned.
    ///@{
    Array(const Array& other) noexcept;
    Array(Array&& other) noexcept;
    Array& operator=(const Array& other) noexcept;
    Array& operator=(Array&& other) noexcept;
    ///@}
    ~Array();

    /// The element class.
    [[nodiscard]] ArrayType getType() const noexcept;

    /// Sizes along each dimension; 0-by-0 for an unassigned array. Throws std::bad_alloc.
    [[nodiscard]] ArrayDimensions getDimensions() const;

    /// The product of the dimensions.
    [[nodiscard]] std::size_t getNumberOfElements() const noexcept;

    /// True without elements: also for an assigned array such as the 1-by-0 character vector.
    [[nodiscard]] bool isEmpty() const noexcept;

    /// False only for an array that nothing was assigned to.
    [[nodiscard]] bool isAssigned() const noexcept;

    /// Same class, same dimensions, equal elements (cells: to any depth). It answers "has this value
    /// changed": NaN equals NaN.
    friend VX_API bool operator==(const Array& left, const Array& right) noexcept;

protected:
    friend class ArrayFactory;

    /// Takes over a handle to this block.
    explicit Array(detail::ArrayBlock* block) noexcept;

    /// Gives this handle elements of its own if others share them. Throws std::bad_alloc.
    void detach();

    /// The first element; its C++ type follows from the class, see TypedArray. The array must be assigned.
    [[nodiscard]] void* elements() const noexcept;

    detail::ArrayBlock* block_;  ///< null while nothing was assigned
};

/// Name of an element class as the scripting language spells it: "logical", "char", "string", "double",
/// "int8" to "uint64", "cell"; "unknown" for UNKNOWN.
[[nodiscard]] VX_API const char* className(ArrayType type) noexcept;

}  // namespace foundation::verdixdata
