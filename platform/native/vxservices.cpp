// Validators of the fonts of the rich-text editor.

#include <data/views.hpp>

#include <settings/core/validators.hpp>

#include <algorithm>
#include <array>
#include <set>
#include <stdexcept>
#include <string_view>

namespace {

using foundation::verdixdata::Array;

bool isDigits(std::u16string_view string)
{
    return !string.empty() && string.find_first_not_of(u"0123456789") == string.npos;
}

/// Returns true for "<number>px", where number is above 0, has digits on both sides of the decimal point, if
/// there is one, and no redundant leading zero.
bool isFontSize(std::u16string_view string)
{
    if (!string.ends_with(u"px")) {
        return false;
    }
    const std::u16string_view number = string.substr(0, string.size() - 2);
    const std::size_t point = number.find(u'.');
    const std::u16string_view whole = number.substr(0, point);
    const bool hasLeadingZero = whole.size() > 1 && whole.front() == u'0';
    return isDigits(whole) && !hasLeadingZero &&
           (point == number.npos || isDigits(number.substr(point + 1))) &&
           number.find_first_not_of(u"0.") != number.npos;
}

/// Returns true for a row of distinct styles; "plain" cannot be combined with others.
bool isFontStyle(const Array& value)
{
    static constexpr std::array<std::u16string_view, 3> allowedStyles{u"plain", u"bold", u"italic"};
    if (value.getType() != foundation::verdixdata::ArrayType::CELL || value.isEmpty() ||
        !vx::data::isRow(value)) {
        return false;
    }
    std::set<std::u16string_view> styles;
    for (const Array& element : vx::data::elementsOf<Array>(value)) {
        const auto style = vx::data::textOf(element);
        if (!style || std::find(allowedStyles.begin(), allowedStyles.end(), *style) == allowedStyles.end() ||
            !styles.insert(*style).second)
        {
            return false;
        }
    }
    return styles.size() == 1 || styles.count(allowedStyles[0]) == 0;
}

void require(bool isValid, const char* message)
{
    if (!isValid) {
        throw std::invalid_argument(message);
    }
}

}  // namespace

extern "C" {

VX_API void validateFontSize(const Array& value)
{
    const auto string = vx::data::textOf(value);
    require(string && isFontSize(*string),
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
