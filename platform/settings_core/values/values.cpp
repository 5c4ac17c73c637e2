#include <foundation/verdixdata/array_factory.hpp>
#include <foundation/verdixdata/text.hpp>
#include <verdix/settings/internal/values.hpp>

#include <algorithm>
#include <string_view>

namespace verdix::settings::internal {

using foundation::verdixdata::Array;
using foundation::verdixdata::ArrayFactory;

namespace {

template <class Unit>
Array characterRow(std::basic_string_view<Unit> text)
{
    if (text.empty()) {
        static const Array empty =
            ArrayFactory().createArray<char16_t>({1, 0});  // shared by all empty strings
        return empty;
    }
    auto row = ArrayFactory().createArray<char16_t>({1, text.size()});
    std::copy(text.begin(), text.end(), row.begin());
    return row;
}

}  // namespace

// NOLINTNEXTLINE(cppcoreguidelines-rvalue-reference-param-not-moved): the signature is the interface's.
Array charvec(std::string&& text)
{
    // Fast path for ASCII, which nearly all strings are: each byte is one UTF-16 unit.
    if (std::all_of(text.begin(), text.end(), [](char unit) { return (unit & 0x80) == 0; })) {
        return characterRow(std::string_view(text));
    }
    return characterRow(std::u16string_view(foundation::verdixdata::toUtf16(text)));
}

Array charvec(std::u16string&& text)
{
    return characterRow(std::u16string_view(text));
}

Array cellstr(std::vector<std::string>&& strings)
{
    auto cells = ArrayFactory().createArray<Array>({1, strings.size()});
    std::transform(strings.begin(), strings.end(), cells.begin(),
                   [](std::string& string) { return charvec(std::move(string)); });
    return cells;
}

Array cell(const std::vector<std::size_t>& dimensions)
{
    return ArrayFactory().createArray(foundation::verdixdata::ArrayType::CELL, dimensions);
}

}  // namespace verdix::settings::internal
