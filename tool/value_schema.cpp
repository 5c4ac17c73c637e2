#include "value_schema.hpp"

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

json::object acceptNothing()
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

json::object oneOf(const std::vector<std::u16string>& texts)
{
    if (texts.size() == 1) {
        return {{"const", toUtf8(texts.front())}};
    }
    json::array words;
    for (const std::u16string& text : texts) {
        words.emplace_back(toUtf8(text));
    }
    return {{"enum", std::move(words)}};
}

// One element

template <std::integral Integer>
json::object integer(const ValueConstraints& values)
{
    using Limits = std::numeric_limits<Integer>;
    json::object schema{{"type", "integer"}, {"minimum", Limits::min()}, {"maximum", Limits::max()}};
    if (values.range && static_cast<long double>(values.range->lower) > Limits::min()) {
        schema["minimum"] = values.range->lower;
    }
    if (values.range && static_cast<long double>(values.range->upper) < Limits::max()) {
        schema["maximum"] = values.range->upper;
    }
    return schema;
}

/// The texts that stand for what is no finite number, as far as such a double is accepted.
json::array notFinite(const ValueConstraints& values)
{
    json::array texts;
    if (values.isWhole) {
        return texts;
    }
    if (!values.range) {
        texts.emplace_back("NaN");
    }
    if (!values.range || std::isinf(values.range->upper)) {
        texts.emplace_back("Inf");
    }
    if (!values.range || std::isinf(values.range->lower)) {
        texts.emplace_back("-Inf");
    }
    return texts;
}

json::object real(const ValueConstraints& values)
{
    json::object number{{"type", values.isWhole ? "integer" : "number"}};
    if (values.range && std::isfinite(values.range->lower)) {
        number.emplace("minimum", values.range->lower);
    }
    if (values.range && std::isfinite(values.range->upper)) {
        number.emplace("maximum", values.range->upper);
    }
    json::array options{std::move(number)};
    if (json::array texts = notFinite(values); !texts.empty()) {
        options.push_back(json::object{{"enum", std::move(texts)}});
    }
    return anyOf(std::move(options));
}

json::object string(const ValueConstraints& values)
{
    if (values.texts) {
        return oneOf(*values.texts);
    }
    json::object schema{{"type", "string"}};
    if (!values.isPresent) {
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

// A value

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

/// A row may stand in a list of its own, as the only row of a matrix.
json::array row(const json::object& items, std::size_t least, std::size_t most)
{
    json::object bare = list(items, least, most);
    json::object nested = list(bare, 1, 1);
    return {std::move(bare), std::move(nested)};
}

json::object matrixOfSize(const json::object& items, const ValueConstraints::Records::Size& size)
{
    if (size.rows == 0) {
        return acceptNothing();  // no JSON stands for it
    }
    if (size.rows > 1) {
        return list(list(items, size.columns, size.columns), size.rows, size.rows);
    }
    json::array options = row(items, size.columns, size.columns);
    if (size.columns == 1) {
        options.insert(options.begin(), items);
    }
    return anyOf(std::move(options));
}

json::object matrix(ArrayType type, const ValueConstraints& values)
{
    const json::object items = element(type, values);
    if (values.size) {
        return values.size->rows * values.size->columns > values.maximumLength
                   ? acceptNothing()
                   : matrixOfSize(items, *values.size);
    }
    const json::object anyRow = list(items, 0, values.maximumLength);
    return anyOf({items, anyRow, list(anyRow, 1, noLimit)});
}

json::object cell(const ValueConstraints& values)
{
    if (values.size && values.size->rows != 1) {
        return acceptNothing();
    }
    json::object items = values.texts ? oneOf(*values.texts) : json::object{{"type", "string"}};
    return anyOf(row(items, values.size ? values.size->columns : 0,
                     std::min(values.maximumLength, values.size ? values.size->columns : noLimit)));
}

json::object text(const ValueConstraints& values)
{
    if (values.size && values.size->rows != 1) {
        return acceptNothing();
    }
    json::object schema = values.texts ? oneOf(*values.texts) : json::object{{"type", "string"}};
    if (values.size) {
        schema.emplace("minLength", values.size->columns);
    }
    const std::size_t most = std::min(values.maximumLength, values.size ? values.size->columns : noLimit);
    if (most != noLimit) {
        schema.emplace("maxLength", most);
    }
    return schema;
}

json::object ofClass(ArrayType type, const ValueConstraints& values)
{
    switch (type) {
    case ArrayType::CHAR:
        return text(values);
    case ArrayType::CELL:
        return cell(values);
    default:
        return matrix(type, values);
    }
}

json::object ofAnyClass(const ValueConstraints& values)
{
    return anyOf(
        {text(values), cell(values), matrix(ArrayType::LOGICAL, values), matrix(ArrayType::DOUBLE, values)});
}

}  // namespace

json::object valueSchema(const ValueConstraints& values)
{
    if (values.isImpossible) {
        return acceptNothing();
    }
    if (!values.form.elementClass) {
        return ofAnyClass(values);
    }
    json::object schema = ofClass(*values.form.elementClass, values);
    if (values.wordsForNumbers.empty()) {
        return schema;
    }
    json::array options{oneOf(values.wordsForNumbers)};
    options.emplace_back(std::move(schema));
    return anyOf(std::move(options));
}

}  // namespace vx::tool
