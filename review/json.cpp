#include "json.hpp"

#include <data/unprintable.hpp>
#include <settings_core/values/value_format.hpp>

#include <boost/json/serialize.hpp>

#include <cmath>

namespace vx::review {

namespace {

namespace json = boost::json;

void appendArray(std::string& text, const json::array& array, JsonStyle style)
{
    text += '[';
    for (const json::value& element : array) {
        text += &element == array.data() ? "" : ", ";
        appendJson(text, element, style);
    }
    text += ']';
}

void appendObject(std::string& text, const json::object& object, JsonStyle style)
{
    const bool isBrief = style == JsonStyle::brief;
    std::string_view separator = isBrief ? "{" : "{ ";
    for (const auto& [key, value] : object) {
        text.append(separator).append(isBrief ? std::string(key) : json::serialize(key)).append(": ");
        appendJson(text, value, style);
        separator = ", ";
    }
    text += object.empty() ? "{}" : isBrief ? "}" : " }";
}

}  // namespace

void appendJson(std::string& text, const json::value& value, JsonStyle style)
{
    switch (value.kind()) {
    case json::kind::object:
        appendObject(text, value.get_object(), style);
        break;
    case json::kind::array:
        appendArray(text, value.get_array(), style);
        break;
    case json::kind::string:
        text += data::escapeUnprintable(json::serialize(value), data::EscapeStyle::json);
        break;
    case json::kind::double_:
        text += std::isfinite(value.get_double()) ? core::formatNumber(value.get_double()) : "null";
        break;
    default:
        text += json::serialize(value);
        break;
    }
}

}  // namespace vx::review
