#include <data/views.hpp>
#include <settings_core/files/text_position.hpp>
#include <settings_core/values/value_format.hpp>
#include <settings_core/values/value_literals.hpp>

#include <foundation/verdixdata/array_factory.hpp>
#include <foundation/verdixdata/text.hpp>
#include <verdix/settings/internal/values.hpp>

#include <boost/algorithm/string/predicate.hpp>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <concepts>
#include <limits>
#include <locale>
#include <system_error>
#include <utility>

namespace vx::core {

namespace {

using namespace foundation::verdixdata;

[[noreturn]] void expected(const std::string& what, std::size_t offset)
{
    throw UnsuitableValue(offset, "expected " + what);
}

std::string describeFound(const Literal& literal)
{
    return literal.isString ? ", not a string" : ", not " + std::string(literal.token);
}

/// Parses a number of this type; returns nothing unless the whole token is one.
template <class T>
std::optional<T> parseNumber(std::string_view token)
{
    T number{};
    const char* const end = token.data() + token.size();
    const auto [stop, error] = std::from_chars(token.data(), end, number);
    return error == std::errc() && stop == end ? std::optional(number) : std::nullopt;
}

std::string_view withoutPlus(std::string_view token)
{
    const bool isSigned = token.size() > 1 && token[0] == '+' && token[1] != '-';
    return token.substr(isSigned ? 1 : 0);
}

std::optional<double> parseNonFinite(std::string_view token)
{
    if (token == "NaN") {
        return std::numeric_limits<double>::quiet_NaN();
    }
    if (token == "Inf" || token == "-Inf") {
        constexpr double infinity = std::numeric_limits<double>::infinity();
        return token == "Inf" ? infinity : -infinity;
    }
    return std::nullopt;
}

std::optional<double> parseDouble(std::string_view token)
{
    token = withoutPlus(token);
    const std::size_t first = token.starts_with('-') ? 1 : 0;
    const bool isDecimal =
        token.size() > first && (token[first] == '.' || (token[first] >= '0' && token[first] <= '9'));
    return isDecimal ? parseNumber<double>(token) : parseNonFinite(token);
}

/// Parses a whole number in any notation: 300, 3e2, 300.0.
template <std::integral T>
std::optional<T> parseInteger(std::string_view token)
{
    if (const auto number = parseNumber<T>(withoutPlus(token))) {
        return number;
    }
    constexpr double exactWhole = 9007199254740992.0;  // 2^53
    const double number = parseDouble(token).value_or(std::numeric_limits<double>::quiet_NaN());
    const bool fits = std::abs(number) <= exactWhole && number == std::trunc(number) &&
                      std::in_range<T>(static_cast<std::int64_t>(number));
    return fits ? std::optional(static_cast<T>(number)) : std::nullopt;
}

bool elementOf(Literal&& literal, std::type_identity<bool>)
{
    // JSON has true and false only: its reader rejects the others, unless they are strings.
    const auto value = literal.isString ? std::nullopt : parseLogical(literal.token);
    if (!value) {
        expected("true or false" + describeFound(literal), literal.offset);
    }
    return *value;
}

double elementOf(Literal&& literal, std::type_identity<double>)
{
    // JSON cannot represent NaN and the infinities as numbers: there they are strings.
    const auto number =
        literal.isString ? parseNonFinite(toUtf8(literal.string)) : parseDouble(literal.token);
    if (!number) {
        expected("a number" + describeFound(literal), literal.offset);
    }
    return *number;
}

template <data::Number T>
T elementOf(Literal&& literal, std::type_identity<T>)
{
    const auto number = literal.isString ? std::nullopt : parseInteger<T>(literal.token);
    if (!number) {
        expected("a whole number from " + std::to_string(std::numeric_limits<T>::min()) + " to " +
                     std::to_string(std::numeric_limits<T>::max()) + describeFound(literal),
                 literal.offset);
    }
    return *number;
}

String elementOf(Literal&& literal, std::type_identity<String>)
{
    if (!literal.isString && literal.token != "null" && literal.token != "missing") {
        expected("a string" + describeFound(literal), literal.offset);
    }
    return literal.isString ? String(std::move(literal.string)) : std::nullopt;
}

Array elementOf(Literal&& literal, std::type_identity<Array>)
{
    if (!literal.isString) {
        expected("a string" + describeFound(literal), literal.offset);
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

Array characterVectorOf(LiteralGrid&& grid)
{
    if (grid.brackets != Brackets::none || !grid.literals.front().isString) {
        expected("a string", grid.offset);
    }
    return verdix::settings::internal::charvec(std::move(grid.literals.front().string));
}

ArrayType classByNotation(const LiteralGrid& grid)
{
    const auto& literals = grid.literals;
    if (grid.brackets == Brackets::curly) {
        return ArrayType::CELL;
    }
    if (literals.empty()) {
        return ArrayType::DOUBLE;
    }
    // In JSON, NaN and the infinities are strings, so a list with any other literal is not one of strings.
    const auto firstToken = std::ranges::find(literals, false, &Literal::isString);
    if (firstToken == literals.end()) {
        if (grid.brackets == Brackets::nested && std::ranges::all_of(literals, [](const Literal& literal) {
                return parseNonFinite(toUtf8(literal.string)).has_value();
            }))
        {
            return ArrayType::DOUBLE;
        }
        return grid.brackets == Brackets::none ? ArrayType::CHAR : ArrayType::CELL;
    }
    return firstToken->token == "true" || firstToken->token == "false" ? ArrayType::LOGICAL
                                                                       : ArrayType::DOUBLE;
}

bool isSingleString(const LiteralGrid& grid)
{
    return grid.brackets == Brackets::none && grid.literals.front().isString;
}

void requireList(const LiteralGrid& grid)
{
    if (grid.brackets == Brackets::none) {
        expected("a list of strings", grid.offset);
    }
    if (grid.rows != 1) {
        expected("a list of strings in one row", grid.offset);
    }
}

}  // namespace

std::optional<bool> parseLogical(std::string_view word)
{
    constexpr std::array<std::string_view, 3> yes{"true", "on", "yes"};
    constexpr std::array<std::string_view, 3> no{"false", "off", "no"};
    const auto isWord = [word](std::string_view other) {
        return boost::algorithm::iequals(word, other, std::locale::classic());
    };
    const bool isTrue = std::ranges::any_of(yes, isWord);
    return isTrue || std::ranges::any_of(no, isWord) ? std::optional(isTrue) : std::nullopt;
}

Array arrayOf(LiteralGrid&& grid, const ParseTarget& target)
{
    ArrayType type = target.elementClass.value_or(classByNotation(grid));
    if (target.acceptsColourNames && isSingleString(grid)) {
        type = ArrayType::CHAR;
    }
    if (type == ArrayType::CHAR) {
        return characterVectorOf(std::move(grid));
    }
    if (type == ArrayType::CELL) {
        requireList(grid);
    } else if (grid.brackets == Brackets::curly) {
        expected("no braces, which are for lists of strings", grid.offset);
    }
    return data::visitElementType(type, [&grid]<class T>(std::type_identity<T>) -> Array {
        if constexpr (std::same_as<T, char16_t>) {
            return characterVectorOf(std::move(grid));
        } else {
            return arrayWith<T>(std::move(grid));
        }
    });
}

}  // namespace vx::core
