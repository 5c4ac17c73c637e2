#include <data/views.hpp>

#include <foundation/verdixdata/array.hpp>
#include <foundation/verdixdata/array_factory.hpp>
#include <foundation/verdixdata/text.hpp>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <span>
#include <string>
#include <utility>

namespace foundation::verdixdata {

/// Header of the memory block of an array. The elements follow it, in column-major order.
struct alignas(std::max_align_t) detail::ArrayBlock
{
    std::atomic<std::uint32_t> references = 1;  ///< reference count; 1 for the Array that creates the block
    ArrayType type;                             ///< element class
    std::size_t count = 0;                      ///< number of elements: the product of the dimensions
    /// Size of a two-dimensional array. Nearly all arrays have two dimensions, which need no allocation.
    std::array<std::size_t, 2> size{};
    std::unique_ptr<const ArrayDimensions> dimensions;  ///< of an array with more than two; else null

    ArrayBlock(ArrayType elementClass, const ArrayDimensions& sizes) : type(elementClass)
    {
        if (sizes.size() == size.size()) {
            std::copy(sizes.begin(), sizes.end(), size.begin());
        } else {
            dimensions = std::make_unique<const ArrayDimensions>(sizes);
        }
    }

    [[nodiscard]] void* elements() noexcept { return this + 1; }

    [[nodiscard]] std::span<const std::size_t> sizes() const noexcept
    {
        return dimensions ? std::span<const std::size_t>(*dimensions) : size;
    }
};

namespace {

template <class T>
T* elementsOf(detail::ArrayBlock& block) noexcept
{
    return static_cast<T*>(block.elements());
}

/// Returns the product of the dimensions. 0 if any dimension is 0, even when the product of the others
/// overflows; throws std::bad_array_new_length on any other overflow.
std::size_t elementCount(const ArrayDimensions& dimensions)
{
    std::size_t count = 1;
    bool overflows = false;
    for (const std::size_t extent : dimensions) {
        if (extent == 0) {
            return 0;
        }
        overflows |= __builtin_mul_overflow(count, extent, &count);
    }
    if (overflows) {
        throw std::bad_array_new_length();
    }
    return count;
}

void destroyBlock(detail::ArrayBlock* block) noexcept
{
    vx::data::visitElementType(block->type, [block]<class T>(std::type_identity<T>) {
        std::destroy_n(elementsOf<T>(*block), block->count);
    });
    std::destroy_at(block);
    ::operator delete(block);
}

struct DestroyBlock
{
    void operator()(detail::ArrayBlock* block) const noexcept { destroyBlock(block); }
};
using NewBlock = std::unique_ptr<detail::ArrayBlock, DestroyBlock>;

void addReference(detail::ArrayBlock* block) noexcept
{
    if (block != nullptr) {
        block->references.fetch_add(1, std::memory_order_relaxed);
    }
}

/// Drops a reference and destroys the block with the last one.
void release(detail::ArrayBlock* block) noexcept
{
    if (block != nullptr && block->references.fetch_sub(1, std::memory_order_acq_rel) == 1) {
        destroyBlock(block);
    }
}

/// Allocates a block for the elements without constructing them. Its count stays 0 until the caller has
/// constructed all, so that the block can be destroyed when a constructor throws.
NewBlock allocateBlock(ArrayType type, const ArrayDimensions& dimensions, std::size_t count,
                       std::size_t elementSize)
{
    std::size_t bytes = 0;
    if (__builtin_mul_overflow(count, elementSize, &bytes) ||
        __builtin_add_overflow(bytes, sizeof(detail::ArrayBlock), &bytes) || bytes > PTRDIFF_MAX)
    {
        throw std::bad_array_new_length();
    }
    void* const memory = ::operator new(bytes);
    try {
        return NewBlock(new (memory) detail::ArrayBlock(type, dimensions));
    } catch (...) {
        ::operator delete(memory);
        throw;
    }
}

NewBlock copyOf(detail::ArrayBlock& source)
{
    return vx::data::visitElementType(source.type, [&]<class T>(std::type_identity<T>) {
        const auto sizes = source.sizes();
        NewBlock block = allocateBlock(source.type, {sizes.begin(), sizes.end()}, source.count, sizeof(T));
        std::uninitialized_copy_n(elementsOf<T>(source), source.count, elementsOf<T>(*block));
        block->count = source.count;
        return block;
    });
}

template <class T>
bool equalElement(const T& left, const T& right) noexcept
{
    return left == right;
}

bool equalElement(double left, double right) noexcept
{
    return left == right || (left != left && right != right);
}

}  // namespace

Array::Array() noexcept : block_(nullptr) {}

Array::Array(detail::ArrayBlock* block) noexcept : block_(block) {}

Array::Array(const Array& other) noexcept : block_(other.block_)
{
    addReference(block_);
}

Array::Array(Array&& other) noexcept : block_(std::exchange(other.block_, nullptr)) {}

Array& Array::operator=(const Array& other) noexcept
{
    Array copy(other);
    std::swap(block_, copy.block_);
    return *this;
}

Array& Array::operator=(Array&& other) noexcept
{
    release(std::exchange(block_, std::exchange(other.block_, nullptr)));
    return *this;
}

Array::~Array()
{
    release(block_);
}

ArrayType Array::getType() const noexcept
{
    return block_ == nullptr ? ArrayType::UNKNOWN : block_->type;
}

ArrayDimensions Array::getDimensions() const
{
    if (block_ == nullptr) {
        return {0, 0};
    }
    const auto sizes = block_->sizes();
    return {sizes.begin(), sizes.end()};
}

std::size_t Array::getNumberOfElements() const noexcept
{
    return block_ == nullptr ? 0 : block_->count;
}

bool Array::isEmpty() const noexcept
{
    return getNumberOfElements() == 0;
}

bool Array::isAssigned() const noexcept
{
    return block_ != nullptr;
}

void* Array::elements() const noexcept
{
    return block_->elements();
}

void Array::detach()
{
    // When the count is 1, only this Array refers to the block, so no other thread can increase it.
    if (block_ != nullptr && block_->references.load(std::memory_order_acquire) != 1) {
        NewBlock copy = copyOf(*block_);
        release(std::exchange(block_, copy.release()));
    }
}

bool operator==(const Array& left, const Array& right) noexcept
{
    if (left.block_ == right.block_) {
        return true;
    }
    if (left.getType() != right.getType() || left.block_ == nullptr ||
        !std::ranges::equal(left.block_->sizes(), right.block_->sizes()))
    {
        return false;
    }
    return vx::data::visitElementType(left.getType(), [&]<class T>(std::type_identity<T>) {
        const T* first = elementsOf<T>(*left.block_);
        return std::equal(first, first + left.block_->count, elementsOf<T>(*right.block_),
                          [](const T& a, const T& b) { return equalElement(a, b); });
    });
}

Array ArrayFactory::createArray(ArrayType type, const ArrayDimensions& dimensions) const
{
    if (dimensions.size() < 2) {
        throw std::invalid_argument("An array has at least two dimensions, rows first; " +
                                    std::to_string(dimensions.size()) + " given.");
    }
    return vx::data::visitElementType(type, [&]<class T>(std::type_identity<T>) {
        const std::size_t count = elementCount(dimensions);
        NewBlock block = allocateBlock(type, dimensions, count, sizeof(T));
        std::uninitialized_value_construct_n(elementsOf<T>(*block), count);
        block->count = count;
        return Array(block.release());
    });
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): the interface takes the string by value.
Array ArrayFactory::createScalarInternal(std::string utf8) const
{
    auto scalar = createArray<String>({1, 1});
    scalar[0] = toUtf16(utf8);
    return scalar;
}

const char* className(ArrayType type) noexcept
{
    switch (type) {
#define VX_CLASS_NAME(cppType, arrayType, className)                                                         \
    case ArrayType::arrayType:                                                                               \
        return className;
        VX_FOR_EACH_ELEMENT_CLASS(VX_CLASS_NAME)
#undef VX_CLASS_NAME
    case ArrayType::UNKNOWN:
        break;
    }
    return "unknown";
}

namespace {

void checkClass(ArrayType wanted, ArrayType found)
{
    if (found != wanted) {
        throw InvalidArrayTypeException(std::string("An array of class ") + className(found) +
                                        " cannot be viewed as one of class " + className(wanted) + ".");
    }
}

}  // namespace

template <class T>
TypedArray<T>::TypedArray(Array&& array) : Array(std::move(array))
{
    checkClass(arrayTypeOf<T>, getType());
}

template <class T>
TypedArray<T>::TypedArray(const Array& array) : Array(array)
{
    checkClass(arrayTypeOf<T>, getType());
}

#define VX_TYPED_ARRAY(cppType, arrayType, className)                                                        \
    template class TypedArray<cppType>;                                                                      \
    template void detail::setElement(TypedArray<cppType>&, std::size_t, cppType);
VX_FOR_EACH_ELEMENT_CLASS(VX_TYPED_ARRAY)
#undef VX_TYPED_ARRAY

}  // namespace foundation::verdixdata
