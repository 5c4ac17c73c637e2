#include "json_text.hpp"

#include <settings_core/value_text.hpp>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/serialize.hpp>
#include <boost/json/string.hpp>

#include <cmath>

namespace vx::tool {

namespace {

namespace json = boost::json;

void appendArray(std::string& text, const json::array& array)
{
    text += '[';
    for (const json::value& element : array) {
        text += &element == array.data() ? "" : ", ";
        appendJson(text, element);
    }
    text += ']';
}

void appendObject(std::string& text, const json::object& object)
{
    std::string_view separator = "{ ";
    for (const auto& [key, value] : object) {
        text.append(separator).append(json::serialize(key)).append(": ");
        appendJson(text, value);
        separator = ", ";
    }
    text += object.empty() ? "{}" : " }";
}

}  // namespace

void appendJson(std::string& text, const json::value& value)
{
    switch (value.kind()) {
    case json::kind::object:
        appendObject(text, value.get_object());
        break;
    case json::kind::array:
        appendArray(text, value.get_array());
        break;
    case json::kind::double_:
        text += std::isfinite(value.get_double()) ? core::numberText(value.get_double()) : "null";
        break;
    default:
        text += json::serialize(value);
        break;
    }
}

}  // namespace vx::tool
