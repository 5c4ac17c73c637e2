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
        static const Array empty = ArrayFactory().createArray<char16_t>({1, 0});  // for all who have no text
        return empty;
    }
    auto row = ArrayFactory().createArray<char16_t>({1, text.size()});
    std::copy(text.begin(), text.end(), row.begin());
    return row;
}

}  // namespace

// NOLINTNEXTLINE(cppcoreguidelines-rvalue-reference-param-not-moved): the interface takes the text so.
Array charvec(std::string&& text)
{
    // Nearly all texts are plain, and each of their bytes is one unit.
    if (std::all_of(text.begin(), text.end(), [](char unit) { return (unit & 0x80) == 0; })) {
        return characterRow(std::string_view(text));
    }
    return characterRow(std::u16string_view(foundation::verdixdata::toUtf16(text)));
}

Array charvec(std::u16string&& text)
{
    return characterRow(std::u16string_view(text));
}

Array cellstr(std::vector<std::string>&& texts)
{
    auto cells = ArrayFactory().createArray<Array>({1, texts.size()});
    std::transform(texts.begin(), texts.end(), cells.begin(),
                   [](std::string& text) { return charvec(std::move(text)); });
    return cells;
}

Array cell(const std::vector<std::size_t>& dimensions)
{
    return ArrayFactory().createArray(foundation::verdixdata::ArrayType::CELL, dimensions);
}

}  // namespace verdix::settings::internal
