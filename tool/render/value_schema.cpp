#include "render/value_schema.hpp"

#include <data/views.hpp>
#include <review/tree_json.hpp>

#include <foundation/verdixdata/text.hpp>

#include <boost/json/array.hpp>

#include <algorithm>
#include <limits>
#include <utility>

namespace vx::tool {

namespace {

namespace json = boost::json;
using core::Constraint;
using foundation::verdixdata::ArrayType;

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

json::object oneOf(const std::vector<std::u16string_view>& strings)
{
    json::array options;
    for (const std::u16string_view string : strings) {
        options.emplace_back(foundation::verdixdata::toUtf8(string));
    }
    if (options.size() == 1) {
        return {{"const", std::move(options.front())}};
    }
    return {{"enum", std::move(options)}};
}

// Elements

/// Returns the strings for those of NaN, Inf and -Inf that are accepted.
json::array nonFinite(const Constraint& constraint)
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    const bool isOpenBelow = constraint.range.lower == -infinity;
    const bool isOpenAbove = constraint.range.upper == infinity;
    json::array strings;
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

template <data::Number Number>
json::object number(const Constraint& constraint)
{
    using Limits = std::numeric_limits<Number>;
    const auto& [lower, upper] = constraint.range;
    if (!(lower <= upper)) {
        return rejectEverything();
    }
    const bool isWhole = constraint.isWhole || std::integral<Number>;
    json::object schema{{"type", isWhole ? "integer" : "number"}};
    if (static_cast<long double>(lower) > Limits::lowest()) {
        schema.emplace("minimum", lower);
    } else if (std::integral<Number>) {
        schema.emplace("minimum", Limits::lowest());
    }
    if (static_cast<long double>(upper) < Limits::max()) {
        schema.emplace("maximum", upper);
    } else if (std::integral<Number>) {
        schema.emplace("maximum", Limits::max());
    }
    for (const core::Parameter& keyword : constraint.numberKeywords) {
        schema.emplace(keyword.name, review::parameterJson(keyword));
    }
    json::array options{std::move(schema)};
    if (json::array strings = nonFinite(constraint); !isWhole && !strings.empty()) {
        options.push_back(json::object{{"enum", std::move(strings)}});
    }
    return anyOf(std::move(options));
}

json::object string(const Constraint& constraint, bool acceptsMissing)
{
    if (constraint.allowedStrings) {
        return oneOf(*constraint.allowedStrings);
    }
    json::object schema{{"type", "string"}};
    if (acceptsMissing) {
        schema["type"] = json::array{"string", "null"};
    }
    return schema;
}

json::object element(ArrayType type, const Constraint& constraint)
{
    return data::visitElementType(type, [&]<class T>(std::type_identity<T>) -> json::object {
        if constexpr (std::same_as<T, bool>) {
            return {{"type", "boolean"}};
        } else if constexpr (data::Number<T>) {
            return number<T>(constraint);
        } else {
            return string(constraint, type == ArrayType::STRING && !constraint.rejectsMissing);
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

/// Returns how long each of `lines` rows or columns may be, if there are at most so many elements together.
std::size_t share(std::size_t elements, std::size_t lines)
{
    return elements == noLimit || lines == 0 ? noLimit : elements / lines;
}

/// Accepts a scalar as 1 unless it is a cell, a row as [1, 2], and a matrix as [[1, 2], [3, 4]]. JSON Schema
/// cannot express that the rows have the same length.
json::object matrix(ArrayType type, const Constraint& constraint)
{
    const bool isCell = type == ArrayType::CELL;
    const auto& [rows, columns] = constraint.size;
    const std::size_t leastRows = rows.value_or(1);  // settings files cannot hold a matrix without rows
    const std::size_t leastColumns = columns.value_or(0);
    if (leastRows == 0 || leastRows * leastColumns > constraint.maximumLength || (isCell && leastRows != 1)) {
        return rejectEverything();
    }
    const std::size_t mostRows = isCell ? 1 : rows.value_or(share(constraint.maximumLength, leastColumns));
    const std::size_t mostColumns = columns.value_or(share(constraint.maximumLength, leastRows));
    const json::object items = element(type, constraint);
    const json::object bare = list(items, leastColumns, mostColumns);
    json::array options;
    if (!isCell && leastRows == 1 && leastColumns <= 1 && mostColumns != 0) {
        options.emplace_back(items);
    }
    if (leastRows == 1) {
        options.emplace_back(bare);
    }
    options.emplace_back(list(bare, leastRows, mostRows));
    return anyOf(std::move(options));
}

json::object characterVector(const Constraint& constraint)
{
    const auto& [rows, columns] = constraint.size;
    if (rows.value_or(1) != 1) {
        return rejectEverything();
    }
    json::object schema = element(ArrayType::CHAR, constraint);
    if (columns) {
        schema.emplace("minLength", *columns);
    }
    const std::size_t most = std::min(constraint.maximumLength, columns.value_or(noLimit));
    if (most != noLimit) {
        schema.emplace("maxLength", most);
    }
    return schema;
}

json::object ofClass(ArrayType type, const Constraint& constraint)
{
    return type == ArrayType::CHAR ? characterVector(constraint) : matrix(type, constraint);
}

}  // namespace

json::object valueSchema(const core::Constraint& constraint)
{
    if (constraint.acceptsNothing) {
        return rejectEverything();
    }
    if (!constraint.elementClass) {
        return anyOf({ofClass(ArrayType::CHAR, constraint), ofClass(ArrayType::CELL, constraint),
                      ofClass(ArrayType::LOGICAL, constraint), ofClass(ArrayType::DOUBLE, constraint)});
    }
    json::object schema = ofClass(*constraint.elementClass, constraint);
    if (constraint.colourNames.empty()) {
        return schema;
    }
    return anyOf({oneOf(constraint.colourNames), std::move(schema)});
}

}  // namespace vx::tool
