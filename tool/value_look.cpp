#include "value_look.hpp"

#include <data/views.hpp>
#include <settings_core/value_format.hpp>

#include <foundation/verdixdata/text.hpp>

#include <algorithm>
#include <optional>
#include <string_view>

#include "html_text.hpp"

namespace vx::tool {

namespace {

using core::Node;
using foundation::verdixdata::Array;
using foundation::verdixdata::toUtf8;
using Records = ::settings::core::SettingValueValidator;

std::optional<Records::Colour> colourForm(const Node& setting)
{
    for (const auto& record : setting.properties().valueValidators) {
        if (record.colour) {
            return record.colour;
        }
    }
    return std::nullopt;
}

/// Unassigned when the group has no such setting.
Array factoryValue(const Node& group, std::string_view name)
{
    const auto found = std::find_if(group.children().begin(), group.children().end(),
                                    [name](const Node& child) { return child.name() == name; });
    return found == group.children().end() ? Array() : found->properties().factoryValue;
}

std::optional<double> numberOf(const Array& value)
{
    std::optional<double> number;
    const bool isNumber = data::isScalar(value) && data::everyNumber(value, [&number](auto n) {
                              number = static_cast<double>(n);
                              return true;
                          });
    return isNumber ? number : std::nullopt;
}

std::string family(std::string_view name)
{
    // The environment's own names for the platform's usual fonts.
    if (name == "SansSerif") {
        return "sans-serif";
    }
    return cssString(name) + (name == "Monospaced" || name == "Courier" ? ", monospace" : ", sans-serif");
}

/// Points where it is a number; else a number followed by px.
std::string size(const Array& value)
{
    if (const auto points = numberOf(value)) {
        return core::formatNumber(*points) + "pt";
    }
    const auto text = data::textOf(value);
    const std::string written = text ? toUtf8(*text) : "";
    const std::size_t unit = written.find_first_not_of("0123456789.");
    return unit != 0 && unit != std::string::npos && written.substr(unit) == "px" ? written : "";
}

/// Plain, bold, italic or both: as a number from 0 to 3, or in words.
struct FontStyle
{
    bool isBold;
    bool isItalic;
};

std::optional<FontStyle> fontStyle(const Array& value)
{
    if (const auto number = numberOf(value)) {
        return FontStyle{*number == 1 || *number == 3, *number == 2 || *number == 3};
    }
    if (value.getType() != foundation::verdixdata::ArrayType::CELL) {
        return std::nullopt;
    }
    const auto words = data::elementsOf<Array>(value);
    const auto has = [&words](std::u16string_view word) {
        return std::any_of(words.begin(), words.end(),
                           [word](const Array& element) { return data::textOf(element) == word; });
    };
    return FontStyle{has(u"bold"), has(u"italic")};
}

}  // namespace

std::string colourOf(const Node& setting, const Array& value)
{
    const auto form = colourForm(setting);
    if (!form || !data::hasSize(value, 1, 3)) {
        return "";
    }
    const bool isNormalised = *form == Records::Colour::normalised;
    std::string css = "rgb(";
    const bool isTriple = data::everyNumber(value, [&](auto part) {
        css += css.back() == '(' ? "" : " ";
        css += core::formatNumber(static_cast<double>(part) * (isNormalised ? 100 : 1));
        css += isNormalised ? "%" : "";
        return true;
    });
    return isTriple ? css + ")" : "";
}

std::string fontOf(const Node& group)
{
    const Array nameValue = factoryValue(group, "Name");
    const auto name = data::textOf(nameValue);
    const std::string fontSize = size(factoryValue(group, "Size"));
    const auto style = fontStyle(factoryValue(group, "Style"));
    if (!name || fontSize.empty() || !style) {
        return "";
    }
    return "font-family: " + family(toUtf8(*name)) + "; font-size: " + fontSize +
           (style->isBold ? "; font-weight: bold" : "") + (style->isItalic ? "; font-style: italic" : "");
}

}  // namespace vx::tool
