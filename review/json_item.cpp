#include "json_item.hpp"

#include <settings_core/values/value_format.hpp>

#include <foundation/verdixdata/text.hpp>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <limits>
#include <system_error>

namespace vx::review {

using core::JsonKind;
using core::JsonMember;

namespace {

/// Parses a number; returns whether it fits and nothing follows it.
template <class T>
bool parsesWhole(std::string_view text, T& number)
{
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && stop == end;
}

}  // namespace

void JsonItem::fail(const std::string& what) const
{
    throw core::ParseError(value_.offset, "expected " + what);
}

const std::vector<JsonMember>& JsonItem::members() const
{
    if (!isObject()) {
        fail("an object");
    }
    return value_.members;
}

JsonItem JsonItem::member(std::string_view name) const
{
    const auto found = std::ranges::find(members(), name, &JsonMember::name);
    if (found == members().end()) {
        fail("a member \"" + std::string(name) + "\"");
    }
    return JsonItem(found->value);
}

std::optional<JsonItem> JsonItem::find(std::string_view name) const
{
    const auto found = std::ranges::find(members(), name, &JsonMember::name);
    if (found == members().end() || found->value.kind == JsonKind::null) {
        return std::nullopt;
    }
    return JsonItem(found->value);
}

std::vector<JsonItem> JsonItem::elements() const
{
    if (value_.kind != JsonKind::array) {
        fail("an array");
    }
    return {value_.elements.begin(), value_.elements.end()};
}

bool JsonItem::boolean() const
{
    if (value_.kind != JsonKind::boolean) {
        fail("true or false");
    }
    return value_.text == "true";
}

std::u16string JsonItem::utf16() const
{
    if (value_.kind != JsonKind::string) {
        fail("a string");
    }
    return core::decodedString(value_);
}

std::string JsonItem::string() const
{
    if (isString() && value_.text.find('\\') == std::string_view::npos) {  // most strings
        return std::string(value_.text.substr(1, value_.text.size() - 2));
    }
    return foundation::verdixdata::toUtf8(utf16());
}

template <std::integral T>
T JsonItem::integer() const
{
    T result{};
    if (value_.kind != JsonKind::number || !parsesWhole(value_.text, result)) {
        fail("a whole number from " + std::to_string(std::numeric_limits<T>::min()) + " to " +
             std::to_string(std::numeric_limits<T>::max()));
    }
    return result;
}

template std::int8_t JsonItem::integer() const;
template std::int16_t JsonItem::integer() const;
template std::int32_t JsonItem::integer() const;
template std::int64_t JsonItem::integer() const;
template std::uint8_t JsonItem::integer() const;
template std::uint16_t JsonItem::integer() const;
template std::uint32_t JsonItem::integer() const;
template std::uint64_t JsonItem::integer() const;

double JsonItem::number() const
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    if (value_.kind == JsonKind::string) {
        for (const double special : {std::numeric_limits<double>::quiet_NaN(), infinity, -infinity}) {
            if (string() == core::formatNumber(special)) {
                return special;
            }
        }
    }
    double result = 0;
    if (value_.kind != JsonKind::number || !parsesWhole(value_.text, result)) {
        fail("a number, \"NaN\", \"Inf\" or \"-Inf\"");
    }
    return result;
}

}  // namespace vx::review
