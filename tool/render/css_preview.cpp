#include "render/css_preview.hpp"

#include <data/views.hpp>
#include <settings_core/constraints/constraints.hpp>
#include <settings_core/values/value_format.hpp>

#include <foundation/verdixdata/text.hpp>

#include <algorithm>
#include <optional>
#include <string_view>

#include "render/escaping.hpp"

namespace vx::tool {

namespace {

using core::Node;
using foundation::verdixdata::Array;
using foundation::verdixdata::toUtf8;

/// Returns the factory value of a setting in the group; unassigned if there is none.
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
    // SansSerif and Monospaced are the environment's names for the default fonts of the platform.
    if (name == "SansSerif") {
        return "sans-serif";
    }
    return cssString(name) + (name == "Monospaced" || name == "Courier" ? ", monospace" : ", sans-serif");
}

/// Returns a number as points, and a string such as "14px" as it is; empty for anything else.
std::string size(const Array& value)
{
    if (const auto points = numberOf(value)) {
        return core::formatNumber(*points) + "pt";
    }
    const auto characters = data::textOf(value);
    const std::string length = characters ? toUtf8(*characters) : "";
    const std::size_t unit = length.find_first_not_of("0123456789.");
    return unit != 0 && unit != std::string::npos && length.substr(unit) == "px" ? length : "";
}

struct FontStyle
{
    bool isBold;
    bool isItalic;
};

/// Parses a style: 0 plain, 1 bold, 2 italic, 3 both; or a cell with "bold" and "italic".
std::optional<FontStyle> fontStyle(const Array& value)
{
    if (const auto number = numberOf(value)) {
        return FontStyle{*number == 1 || *number == 3, *number == 2 || *number == 3};
    }
    if (value.getType() != foundation::verdixdata::ArrayType::CELL) {
        return std::nullopt;
    }
    const auto names = data::elementsOf<Array>(value);
    const auto has = [&names](std::u16string_view name) {
        return std::any_of(names.begin(), names.end(),
                           [name](const Array& element) { return data::textOf(element) == name; });
    };
    return FontStyle{has(u"bold"), has(u"italic")};
}

}  // namespace

std::string cssColour(const Node& setting, const Array& value)
{
    const auto form = core::constraintOf(setting.properties()).colour;
    if (!form || !data::hasSize(value, 1, 3)) {
        return "";
    }
    const bool isNormalised = *form == ::settings::core::SettingValueValidator::Colour::normalised;
    std::string css = "rgb(";
    const bool isTriple = data::everyNumber(value, [&](auto part) {
        css += css.back() == '(' ? "" : " ";
        css += core::formatNumber(static_cast<double>(part) * (isNormalised ? 100 : 1));
        css += isNormalised ? "%" : "";
        return true;
    });
    return isTriple ? css + ")" : "";
}

std::string cssFont(const Node& group)
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
