// Fonts of the rich-text editor.

#include <data/views.hpp>

#include <foundation/verdixdata/text.hpp>
#include <settings/core/validators.hpp>

#include <algorithm>
#include <array>
#include <charconv>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>

namespace {

using foundation::verdixdata::Array;

/// "<number>px" or "<number>pt", the number from 1 to 400, with decimals if need be.
bool isFontSize(std::string_view text)
{
    double number = 0;
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number, std::chars_format::fixed);
    const std::string_view unit(rest, static_cast<std::size_t>(end - rest));
    return error == std::errc() && number >= 1 && number <= 400 && (unit == "px" || unit == "pt");
}

/// A row of different style words, "plain" only by itself.
bool isFontStyle(const Array& value)
{
    static constexpr std::array<std::u16string_view, 3> known{u"plain", u"bold", u"italic"};
    if (value.getType() != foundation::verdixdata::ArrayType::CELL || value.isEmpty() ||
        !vx::data::isRow(value)) {
        return false;
    }
    std::set<std::u16string_view> words;
    for (const Array& element : vx::data::elementsOf<Array>(value)) {
        const auto word = vx::data::textOf(element);
        if (!word || std::find(known.begin(), known.end(), *word) == known.end() ||
            !words.insert(*word).second) {
            return false;
        }
    }
    return words.size() == 1 || words.count(known[0]) == 0;
}

void require(bool accepted, const char* otherwise)
{
    if (!accepted) {
        throw std::invalid_argument(otherwise);
    }
}

}  // namespace

extern "C" {

VX_API void validateFontSize(const Array& value)
{
    const auto text = vx::data::textOf(value);
    require(text && isFontSize(foundation::verdixdata::toUtf8(*text)),
            "The font size must be a number from 1 to 400 followed by px or pt, such as 14px.");
}

VX_API void validateFontColor(const Array& value)
{
    const auto accepts = [](auto part) {
        return vx::data::isWhole(part) && vx::data::isWithin(part, 0, 255);
    };
    require(vx::data::hasSize(value, 1, 3) && vx::data::everyNumber(value, accepts),
            "The font color must be red, green and blue, three whole numbers from 0 to 255.");
}

VX_API void validateFontStyle(const Array& value)
{
    require(isFontStyle(value),
            "The font style must be a cell with plain alone, or with bold, italic or both.");
}

}  // extern "C"
