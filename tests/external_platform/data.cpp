// Data arrays: values are equal when their texts are.

#include <foundation/verdixdata/array_factory.hpp>
#include <foundation/verdixdata/text.hpp>

#include <boost/locale/encoding_utf.hpp>
#include <boost/mp11/algorithm.hpp>

#include <cstdlib>
#include <memory>
#include <sstream>
#include <tests/external_platform/recorded_text.hpp>
#include <tuple>

namespace foundation::verdixdata {

using detail::ArrayBlock;

namespace {

/// In the order of ArrayType, behind UNKNOWN.
using Elements = std::tuple<bool, char16_t, String, double, std::int8_t, std::uint8_t, std::int16_t,
                            std::uint16_t, std::int32_t, std::uint32_t, std::int64_t, std::uint64_t, Array>;
constexpr const char* names[] = {"unknown", "logical", "char",  "string", "double", "int8",   "uint8",
                                 "int16",   "uint16",  "int32", "uint32", "int64",  "uint64", "cell"};

/// Calls with the elements' type and their first place.
template <class Use>
void useElements(ArrayType type, void* first, Use use)
{
    boost::mp11::mp_with_index<std::tuple_size_v<Elements>>(
        static_cast<std::size_t>(type) - 1,
        [&](auto index) { use(static_cast<std::tuple_element_t<index, Elements>*>(first)); });
}

template <class T>
void write(std::ostream& out, const T& element)
{
    if constexpr (std::is_same_v<T, Array>) {
        out << " (" << recording::recordedText(element) << ')';
    } else if constexpr (std::is_same_v<T, String>) {
        out << ' ' << toUtf8(element.value_or(u"missing"));
    } else {
        out << ' ' << +element;
    }
}

}  // namespace

void detail::destroy(ArrayBlock* block) noexcept
{
    useElements(block->type, block->elements(), [&](auto* first) { std::destroy_n(first, block->count); });
    std::destroy_at(block);
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
    if (block_->references != 1) {
        const auto shared =
            std::exchange(block_, ArrayFactory().createArray(getType(), getDimensions()).block_);
        useElements(shared->type, shared->elements(), [&]<class T>(T* first) {
            std::copy_n(first, shared->count, static_cast<T*>(block_->elements()));
        });
    }
}

bool operator==(const Array& left, const Array& right) noexcept
{
    return recording::recordedText(left) == recording::recordedText(right);
}

const char* className(ArrayType type) noexcept
{
    return names[static_cast<std::size_t>(type)];
}

Array ArrayFactory::createArray(ArrayType type, const ArrayDimensions& dimensions) const
{
    boost::intrusive_ptr<ArrayBlock> block;
    useElements(type, nullptr, [&]<class T>(T*) {
        std::size_t count = 1;
        for (const std::size_t extent : dimensions) {
            count *= extent;
        }
        block = new (std::malloc(sizeof(ArrayBlock) + count * sizeof(T)))
            ArrayBlock{{0}, type, count, dimensions};
        std::uninitialized_value_construct_n(static_cast<T*>(block->elements()), count);
    });
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
    const ArrayDimensions& dimensions = value.getDimensions();
    out << className(value.getType()) << ' ' << dimensions[0] << "-by-" << dimensions[1];
    if (value.getType() == ArrayType::CHAR) {
        const TypedArray<char16_t> row(value);
        out << ' ' << toUtf8({row.begin(), row.end()});
    } else if (value.isAssigned()) {
        useElements(value.getType(), nullptr, [&]<class T>(T*) {
            const TypedArray<T> elements(value);
            for (const T& element : elements) {
                write(out, element);
            }
        });
    }
    return out.str();
}
