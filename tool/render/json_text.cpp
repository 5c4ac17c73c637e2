#include "render/json_text.hpp"

#include <review/json.hpp>
#include <review/tree_json.hpp>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/serialize.hpp>

#include <string>
#include <string_view>

namespace vx::tool {

namespace {

namespace json = boost::json;

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
        review::appendJson(text, entry);
        out << Exact{text};
    }
    out << "\n  ]";
}

}  // namespace

void writeJson(const json::object& document, Output& out)
{
    const char* separator = "{\n  ";
    std::string text;
    for (const auto& [key, value] : document) {
        out << separator << Exact{json::serialize(key)} << ": ";
        separator = ",\n  ";
        if (isListOfObjects(value)) {
            writeLines(value.get_array(), out);
        } else {
            text.clear();
            review::appendJson(text, value);
            out << Exact{text};
        }
    }
    out << "\n}\n";
}

void addLayerValue(json::object& document, const core::LayerValue& value)
{
    document.emplace("value", review::valueJson(value.value));
    document.emplace("origin", core::originName(value.origin));
    document.emplace("file", review::stringOrNull(value.file.string()));
    if (!value.computedBy.empty()) {
        document.emplace("computedBy", value.computedBy);
    }
}

std::string jsonOnOneLine(std::string_view json)
{
    std::string line(json);
    std::erase_if(line, [](char c) { return c == '\n' || c == '\r' || c == '\t'; });
    return line;
}

}  // namespace vx::tool
