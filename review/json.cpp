#include "json.hpp"

#include <settings_core/files/json_reader.hpp>
#include <settings_core/values/value_format.hpp>

#include <foundation/verdixdata/text.hpp>

#include <boost/json/serialize.hpp>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>

namespace vx::review {

namespace {

namespace json = boost::json;
/// Converts a number: an integer where it fits, else the nearest double, which Boost.JSON's own parser may
/// miss in the last bit.
json::value numberOf(std::string_view digits)
{
    const auto parsed = [digits](auto& number) {
        const char* const end = digits.data() + digits.size();
        return std::from_chars(digits.data(), end, number).ptr == end;
    };
    std::int64_t integer = 0;
    std::uint64_t unsignedInteger = 0;
    double number = 0;
    if (digits != "-0" && parsed(integer)) {
        return integer;
    }
    if (parsed(unsignedInteger)) {
        return unsignedInteger;
    }
    static_cast<void>(parsed(number));
    return number;
}

json::value valueOf(const core::JsonValue& read)
{
    switch (read.kind) {
    case core::JsonKind::null:
        return nullptr;
    case core::JsonKind::boolean:
        return read.text == "true";
    case core::JsonKind::number:
        return numberOf(read.text);
    case core::JsonKind::string:
        return json::value(foundation::verdixdata::toUtf8(core::decodedString(read)));
    case core::JsonKind::array: {
        json::array array;
        std::ranges::transform(read.elements, std::back_inserter(array), valueOf);
        return array;
    }
    default:
        json::object object;
        for (const core::JsonMember& member : read.members) {
            object.insert_or_assign(member.name, valueOf(member.value));
        }
        return object;
    }
}

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

json::value parseJson(std::string_view text)
{
    return valueOf(core::readJson(text));
}

void appendJson(std::string& text, const json::value& value, JsonStyle style)
{
    switch (value.kind()) {
    case json::kind::object:
        appendObject(text, value.get_object(), style);
        break;
    case json::kind::array:
        appendArray(text, value.get_array(), style);
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
