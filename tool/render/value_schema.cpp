#include "render/value_schema.hpp"

#include <data/views.hpp>
#include <settings_core/constraints/constraints.hpp>

#include <foundation/verdixdata/text.hpp>

#include <boost/json/array.hpp>
#include <boost/json/parse.hpp>

#include <algorithm>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "render/native_constraints.hpp"

namespace vx::tool {

namespace {

namespace json = boost::json;
using core::Constraint;
using foundation::verdixdata::ArrayType;
using Range = Constraint::ValueValidator::Range;

constexpr std::size_t noLimit = std::numeric_limits<std::size_t>::max();
constexpr double infinity = std::numeric_limits<double>::infinity();

/// A constraint with further JSON Schema keywords.
struct SchemaConstraint : Constraint
{
    json::object stringKeywords;  ///< for every string
    json::object rowKeywords;     ///< for the array of a row's elements
};

SchemaConstraint schemaConstraintOf(const core::Node::Properties& properties)
{
    SchemaConstraint constraint{core::constraintOf(properties), {}, {}};
    constraint.require(!properties.readOnly.value());
    if (const NativeConstraint* native = findNativeConstraint(properties.validator)) {
        if (native->wholeNumbers) {
            constraint.restrictRange(*native->wholeNumbers);
            constraint.isWhole = true;
        }
        constraint.stringKeywords = json::parse(native->stringKeywords).get_object();
        constraint.rowKeywords = json::parse(native->rowKeywords).get_object();
    }
    return constraint;
}

// Parts of schemas

json::object rejectEverything()
{
    return {{"not", json::object()}};
}

void add(json::object& schema, const json::object& keywords)
{
    schema.insert(keywords.begin(), keywords.end());
}

json::object oneOf(const std::vector<std::u16string_view>& strings)
{
    json::array options;
    for (const std::u16string_view string : strings) {
        options.emplace_back(foundation::verdixdata::toUtf8(string));
    }
    return options.empty() ? rejectEverything() : json::object{{"enum", std::move(options)}};
}

// Elements

/// Accepts also the strings for those of NaN, Inf and -Inf that are in the range. They are no enumeration,
/// because editors would offer its strings.
void acceptNonFinite(json::object& schema, const Range& range)
{
    std::string names;
    std::string message = "Expected a number";
    const auto accept = [&](const char* name) {
        names.append(names.empty() ? "" : "|").append(name);
        message.append(" or \"").append(name).append("\"");
    };
    const bool isOpenBelow = range.lower == -infinity;
    const bool isOpenAbove = range.upper == infinity;
    if (isOpenBelow && isOpenAbove) {
        accept("NaN");
    }
    if (isOpenAbove) {
        accept("Inf");
    }
    if (isOpenBelow) {
        accept("-Inf");
    }
    if (!names.empty()) {
        schema["type"] = json::array{"number", "string"};
        schema["errorMessage"] = message + ".";
        schema.emplace("pattern", "^(?:" + names + ")(?!\\n)$");
    }
}

/// Integers are numbers that are multiples of 1: some editors take 4.0 for no integer, and 1e-1 for one. An
/// open range ends at the largest double, beyond which numbers are infinite to some.
template <data::Number Number>
json::object number(const Constraint& constraint)
{
    using Limits = std::numeric_limits<Number>;
    const auto& [lower, upper] = constraint.range;
    if (!(lower <= upper)) {
        return rejectEverything();
    }
    const bool isOpenBelow = static_cast<long double>(lower) <= Limits::lowest();
    const bool isOpenAbove = static_cast<long double>(upper) >= Limits::max();
    const bool isWhole = constraint.isWhole || std::integral<Number>;
    json::object schema{{"type", "number"},
                        {"errorMessage", isWhole ? "Expected a whole number." : "Expected a number."},
                        {"minimum", isOpenBelow ? json::value(Limits::lowest()) : json::value(lower)},
                        {"maximum", isOpenAbove ? json::value(Limits::max()) : json::value(upper)}};
    if (isWhole) {
        schema.emplace("multipleOf", 1);
    } else {
        acceptNonFinite(schema, constraint.range);
    }
    return schema;
}

json::object string(const SchemaConstraint& constraint, bool acceptsMissing)
{
    if (constraint.allowedStrings) {
        return oneOf(*constraint.allowedStrings);
    }
    json::object schema{{"type", "string"}};
    if (acceptsMissing) {
        schema["type"] = json::array{"string", "null"};
    }
    add(schema, constraint.stringKeywords);
    return schema;
}

json::object element(ArrayType type, const SchemaConstraint& constraint)
{
    return data::visitElementType(type, [&]<class T>(std::type_identity<T>) -> json::object {
        if constexpr (std::same_as<T, bool>) {
            return {{"type", "boolean"}, {"errorMessage", "Expected true or false."}};
        } else if constexpr (data::Number<T>) {
            return number<T>(constraint);
        } else {
            return string(constraint, type == ArrayType::STRING && !constraint.rejectsMissing);
        }
    });
}

// Values

/// Returns keywords for arrays.
json::object list(json::object items, std::size_t least, std::size_t most)
{
    json::object schema{{"items", std::move(items)}};
    if (least != 0) {
        schema.emplace("minItems", least);
    }
    if (most != noLimit) {
        schema.emplace("maxItems", most);
    }
    return schema;
}

json::object array(const json::object& keywords)
{
    json::object schema{{"type", "array"}};
    add(schema, keywords);
    return schema;
}

/// Accepts what the element's schema accepts, and arrays with these keywords. A type restricts the other
/// keywords, so that no anyOf is needed, whose errors are less clear in editors.
json::object elementOr(const json::object& element, const json::object& keywords)
{
    const json::value* type = element.if_contains("type");
    if (type == nullptr) {
        return {{"anyOf", json::array{element, array(keywords)}}};
    }
    json::array types = type->is_array() ? type->get_array() : json::array{*type};
    types.emplace_back("array");
    json::object schema = element;
    schema["type"] = std::move(types);
    add(schema, keywords);
    return schema;
}

/// Returns how long each of `lines` rows or columns may be, if there are at most so many elements together.
std::size_t share(std::size_t elements, std::size_t lines)
{
    return elements == noLimit || lines == 0 ? noLimit : elements / lines;
}

/// Accepts a scalar as 1 unless it is a cell, a row as [1, 2], and a matrix as [[1, 2], [3, 4]].
json::object matrix(ArrayType type, const SchemaConstraint& constraint)
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
    const json::object scalar = element(type, constraint);
    json::object row = list(scalar, leastColumns, mostColumns);
    add(row, constraint.rowKeywords);
    if (leastRows != 1) {
        return array(list(array(row), leastRows, mostRows));
    }
    const bool mayBeScalar = !isCell && leastColumns <= 1 && mostColumns != 0;
    if (mayBeScalar && mostColumns == 1 && mostRows == 1) {
        return elementOr(scalar, list(elementOr(scalar, row), 1, 1));
    }
    const json::object lists{{"anyOf", json::array{row, list(array(row), leastRows, mostRows)}}};
    return mayBeScalar ? elementOr(scalar, lists) : array(lists);
}

json::object characterVector(const SchemaConstraint& constraint)
{
    const auto& [rows, columns] = constraint.size;
    const std::size_t least = columns.value_or(0);
    const std::size_t most = std::min(constraint.maximumLength, columns.value_or(noLimit));
    if (rows.value_or(1) != 1 || least > most) {
        return rejectEverything();
    }
    if (constraint.allowedStrings) {
        auto strings = *constraint.allowedStrings;
        std::erase_if(strings, [=](auto string) { return string.size() < least || string.size() > most; });
        return oneOf(strings);
    }
    json::object schema = element(ArrayType::CHAR, constraint);
    if (least != 0) {
        schema.emplace("minLength", least / 2 + least % 2);  // all may be pairs of code units
    }
    if (most != noLimit) {
        schema.emplace("maxLength", most);
    }
    return schema;
}

json::object ofClass(ArrayType type, const SchemaConstraint& constraint)
{
    return type == ArrayType::CHAR ? characterVector(constraint) : matrix(type, constraint);
}

}  // namespace

json::object valueSchema(const core::Node::Properties& properties)
{
    const SchemaConstraint constraint = schemaConstraintOf(properties);
    if (constraint.acceptsNothing) {
        return rejectEverything();
    }
    if (!constraint.elementClass) {
        return {
            {"anyOf",
             json::array{ofClass(ArrayType::CHAR, constraint), ofClass(ArrayType::CELL, constraint),
                         ofClass(ArrayType::LOGICAL, constraint), ofClass(ArrayType::DOUBLE, constraint)}}};
    }
    json::object schema = ofClass(*constraint.elementClass, constraint);
    if (constraint.colourNames.empty()) {
        return schema;
    }
    return {{"anyOf", json::array{oneOf(constraint.colourNames), std::move(schema)}}};
}

}  // namespace vx::tool
