#include <data/views.hpp>
#include <settings_core/values/value_format.hpp>
#include <settings_core/values/value_literals.hpp>
#include <settings_core/values/value_parsing.hpp>

#include <foundation/verdixdata/array_factory.hpp>
#include <foundation/verdixdata/text.hpp>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <stdexcept>
#include <utility>

namespace vx::core {

namespace {

using namespace foundation::verdixdata;

Literal literalOf(const JsonValue& json)
{
    switch (json.kind) {
    case JsonKind::string:
        return {.offset = json.offset, .isString = true, .string = decodedString(json)};
    case JsonKind::array:
        throw ParseError(json.offset, "expected a list of values, or a list of rows of the same length");
    case JsonKind::object:
        throw ParseError(json.offset, "expected a value or a list, not an object");
    case JsonKind::null:
    case JsonKind::boolean:
    case JsonKind::number:
        break;
    }
    return {.offset = json.offset, .token = json.text};
}

void appendRow(LiteralGrid& grid, const std::vector<JsonValue>& elements)
{
    for (const JsonValue& element : elements) {
        grid.literals.push_back(literalOf(element));
    }
}

void appendRows(LiteralGrid& grid, const std::vector<JsonValue>& rows)
{
    grid.rows = rows.size();
    grid.columns = rows.front().elements.size();
    for (const JsonValue& row : rows) {
        if (row.kind != JsonKind::array || row.elements.size() != grid.columns) {
            throw ParseError(row.offset, "expected a list of " + std::to_string(grid.columns) +
                                             " elements as in the first row");
        }
        appendRow(grid, row.elements);
    }
}

LiteralGrid gridOf(const JsonValue& json)
{
    LiteralGrid grid;
    grid.offset = json.offset;
    if (json.kind != JsonKind::array) {
        grid.columns = 1;
        grid.literals.push_back(literalOf(json));
        return grid;
    }
    grid.brackets = Brackets::square;
    if (!json.elements.empty() && json.elements.front().kind == JsonKind::array) {
        grid.brackets = Brackets::nested;
        appendRows(grid, json.elements);
    } else {
        grid.columns = json.elements.size();
        appendRow(grid, json.elements);
    }
    return grid;
}

const JsonValue& memberOf(const JsonValue& object, std::string_view name)
{
    const auto found = std::ranges::find(object.members, name, &JsonMember::name);
    if (found == object.members.end()) {
        throw ParseError(object.offset, "expected a member \"" + std::string(name) + "\"");
    }
    return found->value;
}

/// Returns the class that the object names, which must be the one of the target, if that has one.
ArrayType classIn(const JsonValue& object, const ParseTarget& target)
{
    const JsonValue& name = memberOf(object, "class");
    const auto type =
        name.kind == JsonKind::string ? data::classNamed(toUtf8(decodedString(name))) : std::nullopt;
    const bool isColourName = target.acceptsColourNames && type == ArrayType::CHAR;
    if (!type || (target.elementClass && type != target.elementClass && !isColourName)) {
        throw ParseError(name.offset, target.elementClass ? "expected the class " +
                                                                std::string(className(*target.elementClass))
                                                          : "expected the name of a class");
    }
    return *type;
}

std::size_t sizeIn(const JsonValue& json)
{
    std::size_t size = 0;
    const char* const end = json.text.data() + json.text.size();
    const auto [stop, error] = std::from_chars(json.text.data(), end, size);
    if (json.kind != JsonKind::number || error != std::errc() || stop != end) {
        throw ParseError(json.offset, "expected a whole number");
    }
    return size;
}

/// Returns the grid of a value that is written as an object with its size and its elements column by column.
LiteralGrid gridInObject(const JsonValue& object)
{
    const JsonValue& sizes = memberOf(object, "dims");
    const std::vector<JsonValue>& elements = memberOf(object, "data").elements;
    LiteralGrid grid;
    grid.offset = sizes.offset;
    grid.brackets = Brackets::nested;
    grid.rows = 0;
    if (sizes.elements.size() == 2) {
        grid.rows = sizeIn(sizes.elements[0]);
        grid.columns = sizeIn(sizes.elements[1]);
    }
    const std::size_t count = elements.size();
    // Settings files hold no value without rows; and no empty one of many rows, which would be long.
    const bool isOneRow = grid.rows == 1 && grid.columns == count;
    const bool isMatrix =
        grid.rows > 1 && count != 0 && count % grid.rows == 0 && grid.columns == count / grid.rows;
    if (!isOneRow && !isMatrix) {
        throw ParseError(sizes.offset, "expected the rows and columns of an array with " +
                                           std::to_string(count) + " elements, at least one row");
    }
    for (std::size_t index = 0; index < count; ++index) {
        const std::size_t row = index / grid.columns;
        const std::size_t column = index % grid.columns;
        grid.literals.push_back(literalOf(elements[column * grid.rows + row]));
    }
    return grid;
}

/// Reads a value as exported trees have it: {"class": "int32", "dims": [1, 2], "data": [180, 45]}.
Array arrayInObject(const JsonValue& object, ParseTarget target)
{
    target.elementClass = classIn(object, target);
    const JsonValue& data = memberOf(object, "data");
    return data.kind == JsonKind::array ? arrayOf(gridInObject(object), target)
                                        : arrayOf(gridOf(data), target);  // a character vector
}

/// Whether JSON without a class would be read as a string or as a cell of strings.
bool looksLikeStrings(const Array& value)
{
    return value.getType() == ArrayType::DOUBLE && value.getNumberOfElements() != 0 &&
           std::ranges::none_of(data::elementsOf<double>(value),
                                [](double element) { return std::isfinite(element); });
}

void append(std::string& json, bool element)
{
    json += element ? "true" : "false";
}

void append(std::string& json, double element)
{
    if (std::isfinite(element)) {
        json += formatNumber(element);
    } else {
        json.append(1, '"').append(formatNumber(element)).append(1, '"');
    }
}

template <data::Number Integer>
void append(std::string& json, Integer element)
{
    std::array<char, 24> buffer;
    json.append(buffer.data(), std::to_chars(buffer.data(), buffer.data() + buffer.size(), element).ptr);
}

void append(std::string& json, const String& element)
{
    json += element ? jsonLiteral(*element) : "null";
}

void append(std::string& json, const Array& element)
{
    if (element.getType() != ArrayType::CHAR || !data::isRow(element)) {
        throw std::invalid_argument("a settings file cannot hold a cell of anything but strings");
    }
    json += jsonLiteral(*data::textOf(element));
}

/// Appends one row of a matrix that is stored column by column.
template <class T>
void appendRow(std::string& json, const T* first, std::size_t rows, std::size_t columns)
{
    json += '[';
    for (std::size_t column = 0; column < columns; ++column) {
        json += column == 0 ? "" : ", ";
        append(json, first[column * rows]);
    }
    json += ']';
}

template <class T>
std::string elementsToJson(const Array& value)
{
    const auto elements = data::elementsOf<T>(value);
    const std::size_t rows = value.getDimensions()[0];
    std::string json;
    if (data::isScalar(value) && value.getType() != ArrayType::CELL) {
        append(json, elements.front());
        return json;
    }
    json += rows == 1 ? "" : "[";
    for (std::size_t row = 0; row < rows; ++row) {
        json += row == 0 ? "" : ", ";
        appendRow(json, elements.data() + row, rows, value.getDimensions()[1]);
    }
    return json += rows == 1 ? "" : "]";
}

void requireStorable(const Array& value)
{
    const bool isOneRow = value.getType() == ArrayType::CHAR || value.getType() == ArrayType::CELL;
    if (!value.isAssigned() || value.getDimensions().size() != 2 ||
        (isOneRow ? !data::isRow(value) : value.getDimensions()[0] == 0))
    {
        throw std::invalid_argument("a settings file cannot hold a value of this class and size: " +
                                    formatClassAndSize(value));
    }
}

}  // namespace

Array valueFromJson(const JsonValue& json, const ParseTarget& target)
{
    return arrayOf(gridOf(json), target);
}

Array parseJsonValue(std::string_view text, const ParseTarget& target)
{
    const JsonValue json = readJson(text);
    return json.kind == JsonKind::object ? arrayInObject(json, target) : valueFromJson(json, target);
}

std::string valueToJson(const Array& value, const ParseTarget& target)
{
    std::string json = valueToJson(value);
    if ((target.elementClass && !target.acceptsColourNames) || !looksLikeStrings(value)) {
        return json;
    }
    const std::size_t depth = json.starts_with("[[") ? 0 : json.starts_with('[') ? 1 : 2;
    return std::string(depth, '[').append(json).append(depth, ']');
}

std::string valueToJson(const Array& value)
{
    requireStorable(value);
    return data::visitElementType(value.getType(), [&value]<class T>(std::type_identity<T>) -> std::string {
        if constexpr (std::same_as<T, char16_t>) {
            return jsonLiteral(*data::textOf(value));
        } else {
            return elementsToJson<T>(value);
        }
    });
}

}  // namespace vx::core
