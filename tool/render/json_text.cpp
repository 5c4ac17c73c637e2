#include "render/json_text.hpp"

#include <settings_core/values/value_format.hpp>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/serialize.hpp>
#include <boost/json/string.hpp>

#include <cmath>
#include <string_view>

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

bool isListOfObjects(const json::value& value)
{
    return value.is_array() && !value.get_array().empty() && value.get_array().front().is_object();
}

/// Writes an array with one element per line.
void writeLines(const json::array& entries, Output& out)
{
    std::string text;
    for (const json::value& entry : entries) {
        text = &entry == entries.data() ? "[\n    " : ",\n    ";
        appendJson(text, entry);
        out << text;
    }
    out << "\n  ]";
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
        text += std::isfinite(value.get_double()) ? core::formatNumber(value.get_double()) : "null";
        break;
    default:
        text += json::serialize(value);
        break;
    }
}

void writeJson(const json::object& document, Output& out)
{
    std::string_view separator = "{\n  ";
    std::string text;
    for (const auto& [key, value] : document) {
        out << separator << json::serialize(key) << ": ";
        separator = ",\n  ";
        if (isListOfObjects(value)) {
            writeLines(value.get_array(), out);
        } else {
            text.clear();
            appendJson(text, value);
            out << text;
        }
    }
    out << "\n}\n";
}

}  // namespace vx::tool
