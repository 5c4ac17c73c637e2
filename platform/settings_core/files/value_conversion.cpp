#include <settings_core/constraints/constraints.hpp>
#include <settings_core/constraints/validation.hpp>
#include <settings_core/files/value_conversion.hpp>
#include <settings_core/values/value_parsing.hpp>

#include <foundation/verdixdata/text.hpp>

#include <string_view>
#include <utility>
#include <vector>

namespace vx::core {

namespace {

using foundation::verdixdata::Array;
using foundation::verdixdata::ArrayType;

/// JSON text; nothing where a conversion does not apply.
using Converted = std::optional<std::string>;
using Conversion = Converted (*)(const JsonValue& value);

// Conversions of scalars. Each has an inverse, so none loses anything by itself.

/// Returns the shortest decimal of a number. Integers keep all digits: not every one is a double.
Converted decimalOf(const JsonValue& value)
{
    if (value.kind != JsonKind::number) {
        return std::nullopt;
    }
    if (value.text.find_first_of(".eE") == std::string_view::npos) {
        return std::string(value.text);
    }
    try {
        return valueToJson(valueFromJson(value, {.elementClass = ArrayType::DOUBLE}));
    } catch (const ParseError&) {  // out of range
        return std::nullopt;
    }
}

Converted logicalToNumber(const JsonValue& value)
{
    return value.kind == JsonKind::boolean ? Converted(value.text == "true" ? "1" : "0") : std::nullopt;
}

Converted numberToLogical(const JsonValue& value)
{
    const Converted decimal = decimalOf(value);
    return decimal == "0" || decimal == "1" ? Converted(decimal == "1" ? "true" : "false") : std::nullopt;
}

Converted numberToString(const JsonValue& value)
{
    const Converted decimal = decimalOf(value);
    return decimal ? Converted('"' + *decimal + '"') : std::nullopt;
}

Converted stringToNumber(const JsonValue& value)
{
    if (value.kind != JsonKind::string) {
        return std::nullopt;
    }
    std::string decimal = foundation::verdixdata::toUtf8(decodedString(value));
    try {
        const JsonValue number = readJson(decimal);
        return number.kind == JsonKind::number && number.text == decimal ? Converted(std::move(decimal))
                                                                         : std::nullopt;
    } catch (const ParseError&) {
        return std::nullopt;
    }
}

/// The strings for false and true, as JSON.
struct LogicalNames
{
    std::string_view no;
    std::string_view yes;
};

constexpr LogicalNames falseAndTrue{R"("false")", R"("true")"};
constexpr LogicalNames offAndOn{R"("off")", R"("on")"};

template <const LogicalNames& names>
Converted logicalToString(const JsonValue& value)
{
    return value.kind == JsonKind::boolean ? Converted(value.text == "true" ? names.yes : names.no)
                                           : std::nullopt;
}

template <const LogicalNames& names>
Converted stringToLogical(const JsonValue& value)
{
    const bool isNo = value.text == names.no;
    return isNo || value.text == names.yes ? Converted(isNo ? "false" : "true") : std::nullopt;
}

/// Converts a scalar, or each element of a list or of a list of rows.
template <Conversion scalar>
Converted eachElement(const JsonValue& value)
{
    if (value.kind != JsonKind::array) {
        return scalar(value);
    }
    std::string list = "[";
    for (const JsonValue& element : value.elements) {
        const Converted converted = eachElement<scalar>(element);
        if (!converted) {
            return std::nullopt;
        }
        list.append(list.size() == 1 ? "" : ", ").append(*converted);
    }
    return list += ']';
}

// A number, or a logical value, and a list of it are the same value already.

Converted stringToList(const JsonValue& value)
{
    return value.kind == JsonKind::string ? Converted('[' + std::string(value.text) + ']') : std::nullopt;
}

Converted listToString(const JsonValue& value)
{
    const bool isList = value.elements.size() == 1 && value.elements.front().kind == JsonKind::string;
    return isList ? Converted(value.elements.front().text) : std::nullopt;
}

constexpr Conversion conversions[] = {
    eachElement<logicalToNumber>,
    eachElement<numberToLogical>,
    eachElement<numberToString>,
    eachElement<stringToNumber>,
    eachElement<logicalToString<falseAndTrue>>,
    eachElement<stringToLogical<falseAndTrue>>,
    eachElement<logicalToString<offAndOn>>,
    eachElement<stringToLogical<offAndOn>>,
    stringToList,
    listToString,
};

/// Returns the value of a setting if the setting accepts it.
std::optional<Array> acceptedValue(const Node& setting, const JsonValue& json)
try {
    Array value = valueFromJson(json, constraintOf(setting.properties()));
    return acceptsValue(setting, value) ? std::optional(std::move(value)) : std::nullopt;
} catch (const ParseError&) {
    return std::nullopt;
}

/// Appends the elements, row by row, with equal strings in equal notation.
void appendElements(std::vector<std::string>& elements, const JsonValue& value)
{
    if (value.kind != JsonKind::array) {
        elements.push_back(value.kind == JsonKind::string ? jsonLiteral(decodedString(value))
                                                          : std::string(value.text));
    }
    for (const JsonValue& element : value.elements) {
        appendElements(elements, element);
    }
}

std::vector<std::string> elementsOf(const std::string& json)
{
    std::vector<std::string> elements;
    appendElements(elements, readJson(json));
    return elements;
}

/// Whether the setting accepts the value and stores exactly its decimals: "0.10" would come back as 0.1.
bool acceptsExactly(const Node& setting, const std::string& json)
{
    const std::optional<Array> value = acceptedValue(setting, readJson(json));
    return value && elementsOf(valueToJson(*value)) == elementsOf(json);
}

}  // namespace

std::optional<std::string> convertStoredValue(const Node& setting, const JsonValue& value)
{
    if (setting.properties().readOnly.value() || acceptedValue(setting, value)) {
        return std::nullopt;
    }
    for (const Conversion convert : conversions) {
        Converted converted = convert(value);
        if (converted && acceptsExactly(setting, *converted)) {
            return converted;
        }
    }
    return std::nullopt;
}

}  // namespace vx::core
