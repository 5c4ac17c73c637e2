// Data arrays: what an element class needs stands in a table, and values are equal when their texts are.

#include <foundation/verdixdata/array_factory.hpp>
#include <foundation/verdixdata/text.hpp>

#include <boost/locale/encoding_utf.hpp>

#include <cstdlib>
#include <new>
#include <sstream>
#include <tests/external_platform/recorded_text.hpp>

namespace foundation::verdixdata {

namespace {

struct Element
{
    const char* className;
    std::size_t size;
    void (*make)(void* at);
    void (*copy)(void* at, const void* from);
    void (*drop)(void* at);
    void (*write)(std::ostream& out, const Array& value);
};

template <class T>
void write(std::ostream& out, const Array& value)
{
    const TypedArray<T> elements(value);
    if constexpr (std::is_same_v<T, char16_t>) {
        out << ' ' << toUtf8({elements.begin(), elements.end()});
        return;
    }
    for (const T& element : elements) {
        if constexpr (std::is_same_v<T, Array>) {
            out << " (" << recording::recordedText(element) << ')';
        } else if constexpr (std::is_same_v<T, String>) {
            out << ' ' << toUtf8(element.value_or(u"missing"));
        } else {
            out << ' ' << +element;
        }
    }
}

template <class T>
Element element(const char* name)
{
    return {name,
            sizeof(T),
            [](void* at) { new (at) T(); },
            [](void* at, const void* from) { new (at) T(*static_cast<const T*>(from)); },
            [](void* at) { static_cast<T*>(at)->~T(); },
            write<T>};
}

const Element& elementOf(ArrayType type)
{
    static const Element byNumber[] = {
        {"unknown", 0, nullptr, nullptr, nullptr, [](std::ostream&, const Array&) {}},
        element<bool>("logical"),
        element<char16_t>("char"),
        element<String>("string"),
        element<double>("double"),
        element<std::int8_t>("int8"),
        element<std::uint8_t>("uint8"),
        element<std::int16_t>("int16"),
        element<std::uint16_t>("uint16"),
        element<std::int32_t>("int32"),
        element<std::uint32_t>("uint32"),
        element<std::int64_t>("int64"),
        element<std::uint64_t>("uint64"),
        element<Array>("cell"),
    };
    return byNumber[static_cast<std::size_t>(type)];
}

std::byte* elementAt(detail::ArrayBlock& block, std::size_t index)
{
    return static_cast<std::byte*>(block.elements()) + index * elementOf(block.type).size;
}

}  // namespace

void detail::destroy(ArrayBlock* block) noexcept
{
    while (block->count != 0) {
        elementOf(block->type).drop(elementAt(*block, --block->count));
    }
    block->~ArrayBlock();
    std::free(block);
}

void detail::throwWrongType(ArrayType, ArrayType found)
{
    throw InvalidArrayTypeException(className(found));
}

const ArrayDimensions& Array::getDimensions() const noexcept
{
    static const ArrayDimensions none(2, 0);
    return isAssigned() ? block_->dimensions : none;
}

void Array::detach()
{
    const auto shared = block_;
    block_ = ArrayFactory().createArray(shared->type, shared->dimensions).block_;
    for (std::size_t i = 0; i < shared->count; ++i) {
        elementOf(shared->type).drop(elementAt(*block_, i));
        elementOf(shared->type).copy(elementAt(*block_, i), elementAt(*shared, i));
    }
}

bool operator==(const Array& left, const Array& right) noexcept
{
    return recording::recordedText(left) == recording::recordedText(right);
}

const char* className(ArrayType type) noexcept
{
    return elementOf(type).className;
}

Array ArrayFactory::createArray(ArrayType type, const ArrayDimensions& dimensions) const
{
    std::size_t count = 1;
    for (const std::size_t extent : dimensions) {
        count *= extent;
    }
    void* memory = std::malloc(sizeof(detail::ArrayBlock) + count * elementOf(type).size);
    boost::intrusive_ptr<detail::ArrayBlock> block(new (memory) detail::ArrayBlock);
    block->type = type;
    block->dimensions = dimensions;
    for (; block->count < count; ++block->count) {
        elementOf(type).make(elementAt(*block, block->count));
    }
    return Array(std::move(block));
}

Array ArrayFactory::createScalarInternal(std::string text) const
{
    auto scalar = createArray<String>({1, 1});
    scalar[0] = toUtf16(text);
    return scalar;
}

std::u16string toUtf16(std::string_view text)
{
    return boost::locale::conv::utf_to_utf<char16_t>(text.data(), text.data() + text.size());
}

std::string toUtf8(std::u16string_view text)
{
    return boost::locale::conv::utf_to_utf<char>(text.data(), text.data() + text.size());
}

}  // namespace foundation::verdixdata

using namespace foundation::verdixdata;

std::string recording::recordedText(const Array& value)
{
    std::ostringstream out;
    out.precision(17);
    const auto& dimensions = value.getDimensions();
    out << className(value.getType()) << ' ' << dimensions[0] << "-by-" << dimensions[1];
    elementOf(value.getType()).write(out, value);
    return out.str();
}
