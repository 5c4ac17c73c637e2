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

/// Parses a number: as an integer if it fits, else as the nearest double. (The doubles of Boost.JSON's own
/// parser can differ in the last bit.)
json::value parseNumber(std::string_view digits)
{
    const auto parseAs = [digits](auto& number) {
        const char* const end = digits.data() + digits.size();
        return std::from_chars(digits.data(), end, number).ptr == end;
    };
    std::int64_t integer = 0;
    std::uint64_t unsignedInteger = 0;
    double number = 0;
    if (digits != "-0" && parseAs(integer)) {
        return integer;
    }
    if (parseAs(unsignedInteger)) {
        return unsignedInteger;
    }
    static_cast<void>(parseAs(number));
    return number;
}

json::value convert(const core::JsonValue& parsed)
{
    switch (parsed.kind) {
    case core::JsonKind::null:
        return nullptr;
    case core::JsonKind::boolean:
        return parsed.text == "true";
    case core::JsonKind::number:
        return parseNumber(parsed.text);
    case core::JsonKind::string:
        return json::value(foundation::verdixdata::toUtf8(core::decodedString(parsed)));
    case core::JsonKind::array: {
        json::array array;
        std::ranges::transform(parsed.elements, std::back_inserter(array), convert);
        return array;
    }
    default:
        json::object object;
        for (const core::JsonMember& member : parsed.members) {
            object.insert_or_assign(member.name, convert(member.value));
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
    return convert(core::readJson(text));
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
