#include <data/views.hpp>

#include <foundation/verdixdata/array.hpp>
#include <foundation/verdixdata/array_factory.hpp>
#include <foundation/verdixdata/text.hpp>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <new>
#include <string>
#include <utility>

namespace foundation::verdixdata {

namespace {

using BlockHandle = boost::intrusive_ptr<detail::ArrayBlock>;

template <class T>
T* elementsOf(detail::ArrayBlock& block) noexcept
{
    return static_cast<T*>(block.elements());
}

/// Zero as soon as one dimension is, however large the others are.
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

/// A block with room for the elements and none of them made yet: until then its count is 0, so that the
/// handle alone cleans up when making them fails.
BlockHandle allocateBlock(ArrayType type, const ArrayDimensions& dimensions, std::size_t count,
                          std::size_t elementSize)
{
    std::size_t bytes = 0;
    if (__builtin_mul_overflow(count, elementSize, &bytes) ||
        __builtin_add_overflow(bytes, sizeof(detail::ArrayBlock), &bytes) || bytes > PTRDIFF_MAX)
    {
        throw std::bad_array_new_length();
    }
    BlockHandle block(new (::operator new(bytes)) detail::ArrayBlock, false);
    block->type = type;
    block->dimensions = dimensions;
    return block;
}

BlockHandle copyOf(detail::ArrayBlock& source)
{
    return vx::data::visitElementType(source.type, [&]<class T>(std::type_identity<T>) {
        BlockHandle block = allocateBlock(source.type, source.dimensions, source.count, sizeof(T));
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

void detail::destroy(ArrayBlock* block) noexcept
{
    vx::data::visitElementType(block->type, [block]<class T>(std::type_identity<T>) {
        std::destroy_n(elementsOf<T>(*block), block->count);
    });
    std::destroy_at(block);
    ::operator delete(block);
}

void detail::throwWrongType(ArrayType wanted, ArrayType found)
{
    throw InvalidArrayTypeException(std::string("An array of class ") + className(found) +
                                    " cannot be viewed as one of class " + className(wanted) + ".");
}

const ArrayDimensions& Array::getDimensions() const noexcept
{
    static const ArrayDimensions unassigned{0, 0};
    return block_ ? block_->dimensions : unassigned;
}

void Array::detach()
{
    // Nobody else can gain a share while this handle holds the only one.
    if (block_ && block_->references.load(std::memory_order_acquire) != 1) {
        block_ = copyOf(*block_);
    }
}

bool operator==(const Array& left, const Array& right) noexcept
{
    if (left.block_ == right.block_) {
        return true;
    }
    if (left.getType() != right.getType() || left.getDimensions() != right.getDimensions()) {
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
        BlockHandle block = allocateBlock(type, dimensions, count, sizeof(T));
        std::uninitialized_value_construct_n(elementsOf<T>(*block), count);
        block->count = count;
        return Array(std::move(block));
    });
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): the interface takes the text by value.
Array ArrayFactory::createScalarInternal(std::string text) const
{
    auto scalar = createArray<String>({1, 1});
    scalar[0] = toUtf16(text);
    return scalar;
}

const char* className(ArrayType type) noexcept
{
    switch (type) {
    case ArrayType::LOGICAL:
        return "logical";
    case ArrayType::CHAR:
        return "char";
    case ArrayType::STRING:
        return "string";
    case ArrayType::DOUBLE:
        return "double";
    case ArrayType::INT8:
        return "int8";
    case ArrayType::UINT8:
        return "uint8";
    case ArrayType::INT16:
        return "int16";
    case ArrayType::UINT16:
        return "uint16";
    case ArrayType::INT32:
        return "int32";
    case ArrayType::UINT32:
        return "uint32";
    case ArrayType::INT64:
        return "int64";
    case ArrayType::UINT64:
        return "uint64";
    case ArrayType::CELL:
        return "cell";
    case ArrayType::UNKNOWN:
        break;
    }
    return "unknown";
}

}  // namespace foundation::verdixdata
