#pragma once

#include <foundation/export.hpp>

#include <boost/container/small_vector.hpp>
#include <boost/smart_ptr/intrusive_ptr.hpp>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>

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
using ArrayDimensions = boost::container::small_vector<std::size_t, 2>;

/// One element of a string array: UTF-16 text, or nothing where the string is missing.
using String = std::optional<std::u16string>;

/// Raised when an array is viewed as another element class than it has.
class VX_API InvalidArrayTypeException : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// How arrays keep their elements.
namespace detail {

/// Head of an array's only memory block; the elements follow it, column by column.
struct alignas(std::max_align_t) ArrayBlock
{
    std::atomic<std::uint32_t> references{1};  ///< handles to the block, the maker's first
    ArrayType type = ArrayType::UNKNOWN;       ///< class of every element
    std::size_t count = 0;                     ///< of elements: the product of the dimensions
    ArrayDimensions dimensions;                ///< rows first, two or more

    /// The first element; its C++ type follows from `type`, see TypedArray.
    [[nodiscard]] void* elements() noexcept { return this + 1; }
};

/// Destroys the elements and frees the block.
VX_API void destroy(ArrayBlock* block) noexcept;

/// One handle more.
inline void intrusive_ptr_add_ref(ArrayBlock* block) noexcept
{
    block->references.fetch_add(1, std::memory_order_relaxed);
}

/// One handle less; the last one destroys the block.
inline void intrusive_ptr_release(ArrayBlock* block) noexcept
{
    if (block->references.fetch_sub(1, std::memory_order_acq_rel) == 1) {
        destroy(block);
    }
}

}  // namespace detail

/// A data array: a shared handle, as cheap to copy as a pointer, to elements of one class in two or more
/// dimensions. Copies share their elements until one of them is written through a TypedArray, which then
/// takes elements of its own. Handles to one array may be used from several threads; one handle may not.
class VX_API Array
{
public:
    /// An array that nothing was assigned to: class UNKNOWN, 0-by-0.
    Array() noexcept = default;

    /// The element class.
    [[nodiscard]] ArrayType getType() const noexcept { return block_ ? block_->type : ArrayType::UNKNOWN; }

    /// Sizes along each dimension; 0-by-0 for an unassigned array.
    [[nodiscard]] const ArrayDimensions& getDimensions() const noexcept;

    /// The product of the dimensions.
    [[nodiscard]] std::size_t getNumberOfElements() const noexcept { return block_ ? block_->count : 0; }

    /// True without elements: also for an assigned array such as the 1-by-0 text.
    [[nodiscard]] bool isEmpty() const noexcept { return getNumberOfElements() == 0; }

    /// False only for a default-constructed array.
    [[nodiscard]] bool isAssigned() const noexcept { return block_ != nullptr; }

    /// Same class, same dimensions, equal elements (cells: to any depth). It answers "has this value
    /// changed": NaN equals NaN.
    friend VX_API bool operator==(const Array& left, const Array& right) noexcept;

protected:
    friend class ArrayFactory;

    /// A further handle to this block.
    explicit Array(boost::intrusive_ptr<detail::ArrayBlock> block) noexcept : block_(std::move(block)) {}

    /// Gives this handle elements of its own if others share them. Raises std::bad_alloc.
    void detach();

    boost::intrusive_ptr<detail::ArrayBlock> block_;  ///< null while nothing was assigned
};

/// Name of an element class as the scripting language spells it: "logical", "char", "string", "double",
/// "int8" to "uint64", "cell"; "unknown" for UNKNOWN.
[[nodiscard]] VX_API const char* className(ArrayType type) noexcept;

}  // namespace foundation::verdixdata
