#include <data/unprintable.hpp>
#include <data/views.hpp>
#include <settings_core/values/array_visit.hpp>
#include <settings_core/values/value_format.hpp>

#include <foundation/verdixdata/text.hpp>

#include <array>
#include <charconv>
#include <cmath>
#include <concepts>
#include <cstdint>

namespace vx::core {

namespace {

using namespace foundation::verdixdata;

void append(std::string& text, const Array& value);

template <class Number>
void appendNumber(std::string& text, Number number)
{
    std::array<char, 32> buffer;
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number).ptr;
    text.append(buffer.data(), end);
}

void appendQuoted(std::string& text, std::string_view content)
{
    text += '"';
    for (const char c : content) {
        text.append(c == '"' ? 2 : 1, c);
    }
    text += '"';
}

void appendElement(std::string& text, bool element)
{
    text += element ? "true" : "false";
}

void appendElement(std::string& text, const String& element)
{
    if (element) {
        appendQuoted(text, toUtf8(*element));
    } else {
        text += "missing";
    }
}

void appendElement(std::string& text, double element)
{
    text += formatNumber(element);
}

template <std::integral Integer>
void appendElement(std::string& text, Integer element)
{
    appendNumber(text, element);
}

void appendElement(std::string& text, const Array& element)
{
    if (element.isAssigned()) {
        append(text, element);
    } else {
        text += "[]";  // an element of a cell that was never assigned
    }
}

struct Brackets
{
    std::string_view open, betweenColumns, betweenRows, close;
};

constexpr Brackets matrix{"[", " ", "; ", "]"};
constexpr Brackets cellBraces{"{", ",", "; ", "}"};

template <class T>
void appendRows(std::string& text, const TypedArray<T>& array, const Brackets& brackets)
{
    const std::size_t rows = array.getDimensions()[0];
    const std::size_t columns = rows == 0 ? 0 : array.getNumberOfElements() / rows;
    text += brackets.open;
    for (std::size_t row = 0; row < rows && columns != 0; ++row) {
        text += row == 0 ? std::string_view() : brackets.betweenRows;
        for (std::size_t column = 0; column < columns; ++column) {
            text += column == 0 ? std::string_view() : brackets.betweenColumns;
            appendElement(text, array[column * rows + row]);
        }
    }
    text += brackets.close;
}

void appendCharacters(std::string& text, const TypedArray<char16_t>& array)
{
    if (const auto row = data::textOf(array)) {
        appendQuoted(text, toUtf8(*row));
        return;
    }
    const std::size_t rows = array.getDimensions()[0];
    text += '[';
    for (std::size_t row = 0; row < rows; ++row) {
        std::u16string characters;
        for (std::size_t index = row; index < array.getNumberOfElements(); index += rows) {
            characters += array[index];
        }
        text += row == 0 ? "" : "; ";
        appendQuoted(text, toUtf8(characters));
    }
    text += ']';
}

/// Appends a value with all strings quoted.
void append(std::string& text, const Array& value)
{
    visitArray(value, [&text]<class T>(const TypedArray<T>& array) {
        if constexpr (std::same_as<T, char16_t>) {
            appendCharacters(text, array);
        } else if constexpr (std::same_as<T, Array>) {
            appendRows(text, array, cellBraces);
        } else if (array.getNumberOfElements() == 1) {
            appendElement(text, array[0]);
        } else {
            appendRows(text, array, matrix);
        }
    });
}

constexpr bool startsCharacter(char c)
{
    return (static_cast<unsigned char>(c) & 0xc0U) != 0x80U;
}

/// Returns the length in bytes of the first `count` characters.
std::size_t prefixLength(std::string_view text, std::size_t count)
{
    std::size_t length = 0;
    while (length < text.size() && (!startsCharacter(text[length]) || count-- > 0)) {
        ++length;
    }
    return length;
}

}  // namespace

std::string formatNumber(double number)
{
    constexpr double exactWhole = 9007199254740992.0;  // 2^53
    const bool isNegativeZero = number == 0 && std::signbit(number);
    std::string text;
    if (std::isnan(number)) {
        text = "NaN";
    } else if (std::isinf(number)) {
        text = number < 0 ? "-Inf" : "Inf";
    } else if (std::abs(number) <= exactWhole && number == std::trunc(number) && !isNegativeZero) {
        appendNumber(text, static_cast<std::int64_t>(number));
    } else {
        appendNumber(text, number);
    }
    return text;
}

std::string formatValue(const Array& value)
{
    if (const auto string = data::textOf(value)) {
        return toUtf8(*string);
    }
    std::string text;
    if (value.isAssigned()) {
        append(text, value);
    }
    return text;
}

std::string formatValueOnOneLine(const Array& value, std::size_t width)
{
    std::string text;
    if (value.isAssigned()) {
        append(text, value);
    }
    return truncate(data::escapeUnprintable(text), width);
}

std::string truncate(std::string text, std::size_t width)
{
    if (characterCount(text) > width) {
        text.resize(prefixLength(text, width == 0 ? 0 : width - 1));
        text += width == 0 ? "" : "…";
    }
    return text;
}

std::string formatClassAndSize(const Array& value)
{
    return std::string(className(value.getType())) + ", " + formatDimensions(value.getDimensions());
}

std::string formatDimensions(const ArrayDimensions& dimensions)
{
    std::string text;
    for (const std::size_t size : dimensions) {
        text += text.empty() ? "" : "-by-";
        appendNumber(text, size);
    }
    return text;
}

std::size_t characterCount(std::string_view utf8) noexcept
{
    std::size_t count = 0;
    for (const char c : utf8) {
        count += startsCharacter(c) ? 1 : 0;
    }
    return count;
}

}  // namespace vx::core
