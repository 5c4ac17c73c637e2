#include <data/views.hpp>
#include <settings_core/text_position.hpp>
#include <settings_core/value_format.hpp>
#include <settings_core/value_literals.hpp>

#include <foundation/verdixdata/array_factory.hpp>
#include <foundation/verdixdata/text.hpp>
#include <verdix/settings/internal/values.hpp>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <concepts>
#include <limits>
#include <system_error>
#include <utility>

namespace vx::core {

namespace {

using namespace foundation::verdixdata;

[[noreturn]] void expected(const std::string& what, std::size_t offset)
{
    throw ParseError(offset, "expected " + what);
}

std::string found(const Literal& literal)
{
    return literal.isString ? ", not a text" : ", not " + std::string(literal.token);
}

/// Nothing unless the whole word is a number of this type.
template <class T>
std::optional<T> readWhole(std::string_view word)
{
    T number{};
    const char* const end = word.data() + word.size();
    const auto [stop, error] = std::from_chars(word.data(), end, number);
    return error == std::errc() && stop == end ? std::optional(number) : std::nullopt;
}

std::string_view withoutPlus(std::string_view word)
{
    const bool isSigned = word.size() > 1 && word[0] == '+' && word[1] != '-';
    return word.substr(isSigned ? 1 : 0);
}

std::optional<double> readNotFinite(std::string_view word)
{
    if (word == "NaN") {
        return std::numeric_limits<double>::quiet_NaN();
    }
    if (word == "Inf" || word == "-Inf") {
        constexpr double infinity = std::numeric_limits<double>::infinity();
        return word == "Inf" ? infinity : -infinity;
    }
    return std::nullopt;
}

std::optional<double> readDouble(std::string_view word)
{
    word = withoutPlus(word);
    const std::size_t digits = word.starts_with('-') ? 1 : 0;
    const bool isDecimal =
        word.size() > digits && (word[digits] == '.' || (word[digits] >= '0' && word[digits] <= '9'));
    return isDecimal ? readWhole<double>(word) : readNotFinite(word);
}

/// A whole number in any notation: 300, 3e2, 300.0.
template <std::integral T>
std::optional<T> readInteger(std::string_view word)
{
    if (const auto number = readWhole<T>(withoutPlus(word))) {
        return number;
    }
    constexpr double exactWhole = 9007199254740992.0;  // 2^53
    const double number = readDouble(word).value_or(std::numeric_limits<double>::quiet_NaN());
    const bool fits = std::abs(number) <= exactWhole && number == std::trunc(number) &&
                      std::in_range<T>(static_cast<std::int64_t>(number));
    return fits ? std::optional(static_cast<T>(number)) : std::nullopt;
}

bool elementOf(Literal&& literal, std::type_identity<bool>)
{
    if (literal.isString || (literal.token != "true" && literal.token != "false")) {
        expected("true or false" + found(literal), literal.offset);
    }
    return literal.token == "true";
}

double elementOf(Literal&& literal, std::type_identity<double>)
{
    // JSON has no numbers that are not finite: there they stand as texts.
    const auto number = literal.isString ? readNotFinite(toUtf8(literal.string)) : readDouble(literal.token);
    if (!number) {
        expected("a number" + found(literal), literal.offset);
    }
    return *number;
}

template <data::Number T>
T elementOf(Literal&& literal, std::type_identity<T>)
{
    const auto number = literal.isString ? std::nullopt : readInteger<T>(literal.token);
    if (!number) {
        expected("a whole number from " + std::to_string(std::numeric_limits<T>::min()) + " to " +
                     std::to_string(std::numeric_limits<T>::max()) + found(literal),
                 literal.offset);
    }
    return *number;
}

String elementOf(Literal&& literal, std::type_identity<String>)
{
    if (!literal.isString && literal.token != "null" && literal.token != "missing") {
        expected("a text" + found(literal), literal.offset);
    }
    return literal.isString ? String(std::move(literal.string)) : std::nullopt;
}

Array elementOf(Literal&& literal, std::type_identity<Array>)
{
    if (!literal.isString) {
        expected("a text" + found(literal), literal.offset);
    }
    return verdix::settings::internal::charvec(std::move(literal.string));
}

char16_t elementOf(Literal&& /*literal*/, std::type_identity<char16_t>) = delete;

template <class T>
Array arrayWith(LiteralGrid&& grid)
{
    auto array = ArrayFactory().createArray<T>({grid.rows, grid.columns});
    T* const elements = array.begin();
    for (std::size_t index = 0; index < grid.literals.size(); ++index) {
        const std::size_t column = index % grid.columns;
        elements[column * grid.rows + index / grid.columns] =
            elementOf(std::move(grid.literals[index]), std::type_identity<T>());
    }
    return array;
}

Array oneText(LiteralGrid&& grid)
{
    if (grid.brackets != Brackets::none || !grid.literals.front().isString) {
        expected("a text", grid.offset);
    }
    return verdix::settings::internal::charvec(std::move(grid.literals.front().string));
}

ArrayType classByForm(const LiteralGrid& grid)
{
    const auto& literals = grid.literals;
    if (grid.brackets == Brackets::curly) {
        return ArrayType::CELL;
    }
    if (literals.empty()) {
        return ArrayType::DOUBLE;
    }
    // In JSON a number that is not finite stands as a text among the others.
    const auto bare = std::ranges::find(literals, false, &Literal::isString);
    if (bare == literals.end()) {
        return grid.brackets == Brackets::none ? ArrayType::CHAR : ArrayType::CELL;
    }
    return bare->token == "true" || bare->token == "false" ? ArrayType::LOGICAL : ArrayType::DOUBLE;
}

bool isLoneText(const LiteralGrid& grid)
{
    return grid.brackets == Brackets::none && grid.literals.front().isString;
}

void requireList(const LiteralGrid& grid)
{
    if (grid.brackets == Brackets::none) {
        expected("a list of texts", grid.offset);
    }
    if (grid.rows != 1) {
        expected("a list of texts in one row", grid.offset);
    }
}

}  // namespace

Array arrayOf(LiteralGrid&& grid, const ParseTarget& form)
{
    ArrayType type = form.elementClass.value_or(classByForm(grid));
    if (form.acceptsColourNames && isLoneText(grid)) {
        type = ArrayType::CHAR;
    }
    if (type == ArrayType::CHAR) {
        return oneText(std::move(grid));
    }
    if (type == ArrayType::CELL) {
        requireList(grid);
    } else if (grid.brackets == Brackets::curly) {
        expected("no braces, which stand for a list of texts", grid.offset);
    }
    return data::visitElementType(type, [&grid]<class T>(std::type_identity<T>) -> Array {
        if constexpr (std::same_as<T, char16_t>) {
            return oneText(std::move(grid));
        } else {
            return arrayWith<T>(std::move(grid));
        }
    });
}

}  // namespace vx::core
