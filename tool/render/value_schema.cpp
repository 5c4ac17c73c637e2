#include "render/value_schema.hpp"

#include <data/views.hpp>

#include <foundation/verdixdata/text.hpp>

#include <boost/json/array.hpp>

#include <cmath>
#include <utility>

namespace vx::tool {

namespace {

namespace json = boost::json;
using foundation::verdixdata::ArrayType;
using foundation::verdixdata::toUtf8;

constexpr std::size_t noLimit = std::numeric_limits<std::size_t>::max();

json::object rejectEverything()
{
    return {{"not", json::object()}};
}

json::object anyOf(json::array options)
{
    if (options.size() == 1) {
        return std::move(options.front().get_object());
    }
    return {{"anyOf", std::move(options)}};
}

json::object oneOf(const std::vector<std::u16string>& strings)
{
    if (strings.size() == 1) {
        return {{"const", toUtf8(strings.front())}};
    }
    json::array options;
    for (const std::u16string& string : strings) {
        options.emplace_back(toUtf8(string));
    }
    return {{"enum", std::move(options)}};
}

// Elements

template <std::integral Integer>
json::object integer(const ValueConstraints& values)
{
    using Limits = std::numeric_limits<Integer>;
    json::object schema{{"type", "integer"}, {"minimum", Limits::min()}, {"maximum", Limits::max()}};
    if (static_cast<long double>(values.range.lower) > Limits::min()) {
        schema["minimum"] = values.range.lower;
    }
    if (static_cast<long double>(values.range.upper) < Limits::max()) {
        schema["maximum"] = values.range.upper;
    }
    return schema;
}

/// Returns the strings for those of NaN, Inf and -Inf that are accepted.
json::array nonFinite(const ValueConstraints& values)
{
    json::array strings;
    if (values.isWhole) {
        return strings;
    }
    constexpr double infinity = std::numeric_limits<double>::infinity();
    const bool isOpenBelow = values.range.lower == -infinity;
    const bool isOpenAbove = values.range.upper == infinity;
    if (isOpenBelow && isOpenAbove) {
        strings.emplace_back("NaN");
    }
    if (isOpenAbove) {
        strings.emplace_back("Inf");
    }
    if (isOpenBelow) {
        strings.emplace_back("-Inf");
    }
    return strings;
}

json::object real(const ValueConstraints& values)
{
    json::object number{{"type", values.isWhole ? "integer" : "number"}};
    if (std::isfinite(values.range.lower)) {
        number.emplace("minimum", values.range.lower);
    }
    if (std::isfinite(values.range.upper)) {
        number.emplace("maximum", values.range.upper);
    }
    json::array options{std::move(number)};
    if (json::array strings = nonFinite(values); !strings.empty()) {
        options.push_back(json::object{{"enum", std::move(strings)}});
    }
    return anyOf(std::move(options));
}

json::object string(const ValueConstraints& values)
{
    if (values.allowedStrings) {
        return oneOf(*values.allowedStrings);
    }
    json::object schema{{"type", "string"}};
    if (!values.rejectsMissing) {
        schema["type"] = json::array{"string", "null"};
    }
    return schema;
}

json::object element(ArrayType type, const ValueConstraints& values)
{
    return data::visitElementType(type, [&values]<class T>(std::type_identity<T>) -> json::object {
        if constexpr (std::same_as<T, bool>) {
            return {{"type", "boolean"}};
        } else if constexpr (std::same_as<T, double>) {
            return real(values);
        } else if constexpr (data::Number<T>) {
            return integer<T>(values);
        } else {
            return string(values);
        }
    });
}

// Values

json::object list(const json::object& items, std::size_t least, std::size_t most)
{
    json::object schema{{"type", "array"}, {"items", items}};
    if (least != 0) {
        schema.emplace("minItems", least);
    }
    if (most != noLimit) {
        schema.emplace("maxItems", most);
    }
    return schema;
}

/// Accepts a row as [1, 2], or as the only row of a matrix: [[1, 2]].
json::array row(const json::object& items, std::size_t least, std::size_t most)
{
    json::object bare = list(items, least, most);
    json::object nested = list(bare, 1, 1);
    return {std::move(bare), std::move(nested)};
}

/// Returns how long each of `lines` rows or columns may be, if there are at most so many elements together.
std::size_t share(std::size_t elements, std::size_t lines)
{
    return elements == noLimit || lines == 0 ? noLimit : elements / lines;
}

/// Accepts a scalar as 1, a row as [1, 2], and a matrix as [[1, 2], [3, 4]]. JSON Schema cannot express that
/// the rows have the same length.
json::object matrix(ArrayType type, const ValueConstraints& values)
{
    const auto& [rows, columns] = values.size;
    const std::size_t leastRows = rows.value_or(1);  // settings files cannot hold a matrix without rows
    const std::size_t leastColumns = columns.value_or(0);
    if (leastRows == 0 || leastRows * leastColumns > values.maximumLength) {
        return rejectEverything();
    }
    const std::size_t mostRows = rows.value_or(share(values.maximumLength, leastColumns));
    const std::size_t mostColumns = columns.value_or(share(values.maximumLength, leastRows));
    const json::object items = element(type, values);
    const json::object bare = list(items, leastColumns, mostColumns);
    json::array options;
    if (leastRows == 1 && leastColumns <= 1 && mostColumns != 0) {
        options.emplace_back(items);
    }
    if (leastRows == 1) {
        options.emplace_back(bare);
    }
    options.emplace_back(list(bare, leastRows, mostRows));
    return anyOf(std::move(options));
}

json::object cell(const ValueConstraints& values)
{
    const auto& [rows, columns] = values.size;
    if (rows.value_or(1) != 1) {
        return rejectEverything();
    }
    json::object items =
        values.allowedStrings ? oneOf(*values.allowedStrings) : json::object{{"type", "string"}};
    return anyOf(row(items, columns.value_or(0), std::min(values.maximumLength, columns.value_or(noLimit))));
}

json::object characterVector(const ValueConstraints& values)
{
    const auto& [rows, columns] = values.size;
    if (rows.value_or(1) != 1) {
        return rejectEverything();
    }
    json::object schema =
        values.allowedStrings ? oneOf(*values.allowedStrings) : json::object{{"type", "string"}};
    if (columns) {
        schema.emplace("minLength", *columns);
    }
    const std::size_t most = std::min(values.maximumLength, columns.value_or(noLimit));
    if (most != noLimit) {
        schema.emplace("maxLength", most);
    }
    return schema;
}

json::object ofClass(ArrayType type, const ValueConstraints& values)
{
    switch (type) {
    case ArrayType::CHAR:
        return characterVector(values);
    case ArrayType::CELL:
        return cell(values);
    default:
        return matrix(type, values);
    }
}

json::object ofAnyClass(const ValueConstraints& values)
{
    return anyOf({characterVector(values), cell(values), matrix(ArrayType::LOGICAL, values),
                  matrix(ArrayType::DOUBLE, values)});
}

}  // namespace

json::object valueSchema(const ValueConstraints& values)
{
    if (values.acceptsNothing) {
        return rejectEverything();
    }
    if (!values.form.elementClass) {
        return ofAnyClass(values);
    }
    json::object schema = ofClass(*values.form.elementClass, values);
    if (values.colourNames.empty()) {
        return schema;
    }
    json::array options{oneOf(values.colourNames)};
    options.emplace_back(std::move(schema));
    return anyOf(std::move(options));
}

}  // namespace vx::tool
