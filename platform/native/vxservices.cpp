// Fonts of the rich-text editor.

#include <data/views.hpp>

#include <settings/core/validators.hpp>

#include <algorithm>
#include <array>
#include <set>
#include <stdexcept>
#include <string_view>

namespace {

using foundation::verdixdata::Array;

bool isDigits(std::u16string_view text)
{
    return !text.empty() && text.find_first_not_of(u"0123456789") == text.npos;
}

/// "<number>px": a decimal number above 0, with digits before and after a point and no needless zero in
/// front.
bool isFontSize(std::u16string_view text)
{
    if (!text.ends_with(u"px")) {
        return false;
    }
    const std::u16string_view number = text.substr(0, text.size() - 2);
    const std::size_t point = number.find(u'.');
    const std::u16string_view whole = number.substr(0, point);
    const bool hasNeedlessZero = whole.size() > 1 && whole.front() == u'0';
    return isDigits(whole) && !hasNeedlessZero &&
           (point == number.npos || isDigits(number.substr(point + 1))) &&
           number.find_first_not_of(u"0.") != number.npos;
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
    require(text && isFontSize(*text),
            "The font size must be a number above 0 followed by px, such as 14px or 12.5px.");
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
