#include <data/unprintable.hpp>
#include <data/views.hpp>
#include <settings_core/constraints/constraints.hpp>
#include <settings_core/constraints/kinds.hpp>
#include <settings_core/constraints/rejection.hpp>
#include <settings_core/constraints/validation.hpp>
#include <settings_core/tree/secret_settings.hpp>
#include <settings_core/tree/suggestions.hpp>
#include <settings_core/values/value_format.hpp>
#include <settings_core/values/value_literals.hpp>

#include <foundation/verdixdata/text.hpp>
#include <verdix/settings/internal/values.hpp>

#include <boost/algorithm/string/classification.hpp>
#include <boost/algorithm/string/replace.hpp>
#include <boost/algorithm/string/split.hpp>
#include <boost/algorithm/string/trim.hpp>

#include <algorithm>
#include <iterator>
#include <limits>
#include <optional>
#include <type_traits>
#include <utility>
#include <vector>

namespace vx::core {

namespace {

using foundation::verdixdata::Array;
using foundation::verdixdata::ArrayType;
using foundation::verdixdata::toUtf8;
using Properties = Node::Properties;
using Strings = std::vector<std::u16string_view>;

constexpr std::size_t shownWidth = 60;  // characters of a value

std::string inQuotes(std::u16string_view string)
{
    return '"' + truncate(data::escapeUnprintable(toUtf8(string)), shownWidth) + '"';
}

/// Returns `didYouMean` for the strings that are similar to the wanted one.
std::string suggestion(std::u16string_view wanted, const Strings& strings)
{
    std::vector<std::string> names;
    std::ranges::transform(strings, std::back_inserter(names), toUtf8);
    const auto similar =
        suggestNames(toUtf8(wanted), std::vector<std::string_view>(names.begin(), names.end()));
    std::vector<std::string> quoted;
    quoted.reserve(similar.size());
    for (const std::string_view name : similar) {
        quoted.push_back('"' + std::string(name) + '"');
    }
    return didYouMean(std::vector<std::string_view>(quoted.begin(), quoted.end()));
}

std::string list(const Strings& strings)
{
    std::string text;
    for (const std::u16string_view string : strings) {
        text += (text.empty() ? "" : ", ") + (string.empty() ? "\"\"" : toUtf8(string));
    }
    return text;
}

/// Describes all constraints, with the numbers that the class has if nothing else limits them.
std::string describeAllowed(const Properties& properties)
{
    const Constraint constraint = constraintOf(properties);
    std::string description = describeConstraint(properties);
    if (!constraint.elementClass || constraint.colour || !isOpen(constraint.range)) {
        return description;
    }
    return data::visitElementType(
        *constraint.elementClass, [&]<class T>(std::type_identity<T>) -> std::string {
            if constexpr (data::Number<T> && std::numeric_limits<T>::is_integer) {
                return description + " from " + std::to_string(std::numeric_limits<T>::min()) + " to " +
                       std::to_string(std::numeric_limits<T>::max());
            } else {
                return description;
            }
        });
}

std::string notAllowed(const std::string& what, const Properties& properties)
{
    return what + " is not allowed: must be " + describeAllowed(properties);
}

std::string hiddenValue(const Node& setting)
{
    return notAllowed("its value, which is not shown,", setting.properties());
}

/// Returns the first of these strings that is not among the allowed ones.
std::optional<std::u16string_view> disallowedString(const Array& value, const Strings& allowed)
{
    if (value.getType() == ArrayType::CELL) {
        for (const Array& element : data::elementsOf<Array>(value)) {
            if (auto string = disallowedString(element, allowed)) {
                return string;
            }
        }
        return std::nullopt;
    }
    const auto string = data::textOf(value);
    return string && std::ranges::find(allowed, *string) == allowed.end() ? string : std::nullopt;
}

std::string describeValue(const Properties& properties, const Array& value)
{
    if (!value.isAssigned()) {
        return "an unset value";
    }
    const ArrayType wanted = properties.factoryValue.getType();
    const bool isOfOtherClass =
        wanted != ArrayType::UNKNOWN && wanted != value.getType() && !constraintOf(properties).colour;
    return formatValueOnOneLine(value, shownWidth) +
           (isOfOtherClass ? " (" + formatClassAndSize(value) + ")" : "");
}

// Corrected texts

std::optional<Array> parse(const std::string& text, Notation notation, const Constraint& target)
try {
    return notation == Notation::json ? parseJsonValue(text, target) : parseValue(text, target);
} catch (const ParseError&) {
    return std::nullopt;
}

/// A text that the user may have meant.
struct Correction
{
    const char* advice;
    std::string text;  ///< empty if there is none
};

/// Returns what a text has in quotes, a logical value as true or false; empty without quotes.
std::string withoutQuotes(std::string_view text, const Constraint& target)
{
    if (text.size() < 2 || !isQuote(text.front()) || text.back() != text.front()) {
        return "";
    }
    const std::string_view content = text.substr(1, text.size() - 2);
    if (target.elementClass != ArrayType::LOGICAL) {
        return std::string(content);
    }
    const auto value = parseLogical(content);
    return value ? *value ? "true" : "false" : "";
}

/// Whether digits are in groups of three, with commas between them: 25,000.
bool isGrouped(std::string_view digits)
{
    const std::size_t first = digits.find(',');
    if (first == 0 || first > 3 || digits.size() % 4 != first) {
        return false;
    }
    for (std::size_t at = 0; at < digits.size(); ++at) {
        if (at % 4 == first ? digits[at] != ',' : digits[at] < '0' || digits[at] > '9') {
            return false;
        }
    }
    return true;
}

std::string withoutCommas(std::string text)
{
    const std::size_t start = text.starts_with('-') || text.starts_with('+') ? 1 : 0;
    if (!isGrouped(std::string_view(text).substr(start, text.find('.') - start))) {
        return "";
    }
    std::erase(text, ',');
    return text;
}

std::string inDoubledQuotes(const std::string& text)
{
    return '"' + boost::algorithm::replace_all_copy(text, "\"", "\"\"") + '"';
}

/// Returns a list of the strings that a text without quotes separates by commas, or in brackets by
/// whitespace.
std::string listOfStrings(std::string_view text)
{
    const bool isBracketed =
        (text.starts_with('{') && text.ends_with('}')) || (text.starts_with('[') && text.ends_with(']'));
    text = isBracketed ? text.substr(1, text.size() - 2) : text;
    if (text.find_first_of("\"';[]{}") != std::string_view::npos) {
        return "";
    }
    std::vector<std::string> strings;
    boost::algorithm::split(strings, boost::algorithm::trim_copy(text),
                            boost::algorithm::is_any_of(isBracketed ? ", " : ","),
                            boost::algorithm::token_compress_on);
    for (std::string& string : strings) {
        boost::algorithm::trim(string);
        if (string.empty()) {
            return "";
        }
    }
    return formatValue(verdix::settings::internal::cellstr(std::move(strings)));
}

/// Returns what the user may have meant, the most likely first; not all of it is a value of the setting.
std::vector<Correction> corrections(const std::string& text, Notation notation, const Constraint& target)
{
    const bool isScript = notation == Notation::script;
    std::vector<Correction> all;
    if (isScript && isQuote(text.front())) {
        all.push_back({"write it in quotes: ", text + text.front()});
        all.push_back({"write it in quotes: ", inDoubledQuotes(text)});
    }
    all.push_back({"write it without quotes: ", withoutQuotes(text, target)});
    if (isScript && target.elementClass == ArrayType::CELL) {
        all.push_back({"write it as a list: ", "{" + text + "}"});
        all.push_back({"write it as a list: ", listOfStrings(text)});
    } else if (target.elementClass != ArrayType::CHAR) {  // in a string, brackets are mere characters
        all.push_back({"write it as a list: ", "[" + text + "]"});
    }
    all.push_back({"write it without commas: ", withoutCommas(text)});
    return all;
}

/// Returns a text as the user has to write it. On a command line, numbers and words need no quotes.
std::string asWritten(const std::string& text, const Writing& writing)
{
    const bool isPlain = std::string_view("\"'#[{").find(text.front()) == std::string_view::npos;
    return writing.hasPosition || isPlain ? text : "'" + text + "'";
}

bool isNormalised(const Constraint& constraint)
{
    return constraint.colour == ::settings::core::SettingValueValidator::Colour::normalised;
}

std::string describeRed(const Constraint& constraint, const Writing& writing)
{
    if (writing.notation == Notation::json) {
        return "red is " + asWritten(isNormalised(constraint) ? "[1, 0, 0]" : "[255, 0, 0]", writing);
    }
    return "red is " + asWritten(isNormalised(constraint) ? "[1 0 0]" : "[255 0 0]", writing) + " or " +
           asWritten("#ff0000", writing);
}

/// Returns what to do about a value that is no colour; empty if that is not obvious.
std::string colourAdvice(const Array& value, const Constraint& constraint, const Writing& writing)
{
    if (!constraint.colour) {
        return "";
    }
    if (data::textOf(value)) {
        return describeRed(constraint, writing);
    }
    const bool isTripleOfBytes = data::hasSize(value, 1, 3) && data::everyNumber(value, [](auto part) {
                                     return data::isWithin(part, 0, 255) && data::isWhole(part);
                                 });
    return isNormalised(constraint) && isTripleOfBytes ? "divide each by 255" : "";
}

/// Returns what to do about the text; empty if that is not obvious, or too long to be shown.
std::string adviceFor(const std::string& text, const Writing& writing, const Node& setting, bool isWellFormed)
{
    const bool isQuotable = writing.hasPosition || text.find('\'') == std::string::npos;
    if (text.empty() || text.size() > shownWidth || !isQuotable) {
        return "";
    }
    const Constraint target = constraintOf(setting.properties());
    if (data::escapeUnprintable(text) == text) {
        for (const auto& [advice, corrected] : corrections(text, writing.notation, target)) {
            const auto value = corrected.empty() ? std::nullopt : parse(corrected, writing.notation, target);
            if (value && acceptsValue(setting, *value)) {
                return advice + asWritten(corrected, writing);
            }
        }
    }
    return target.colour && isWellFormed ? describeRed(target, writing) : "";
}

std::string withAdvice(std::string message, const std::string& advice)
{
    return std::move(message) + (advice.empty() ? "" : "; " + advice);
}

}  // namespace

std::string describeRejection(const Node& setting, const Array& value, const Writing& writing)
{
    const Properties& properties = setting.properties();
    if (isSecret(setting.fullName())) {
        return hiddenValue(setting);
    }
    const Constraint constraint = constraintOf(properties);
    const Strings& allowed = constraint.allowedStrings ? *constraint.allowedStrings : constraint.colourNames;
    if (const auto string = disallowedString(value, allowed)) {
        const std::string meant = suggestion(*string, allowed);
        if (!meant.empty()) {
            return inQuotes(*string) + " is not allowed; " + meant +
                   " Allowed: " + (constraint.allowedStrings ? list(allowed) : describeAllowed(properties));
        }
    }
    return withAdvice(notAllowed(describeValue(properties, value), properties),
                      colourAdvice(value, constraint, writing));
}

std::string describeTextRejection(const Node& setting, std::string_view text, const Writing& writing,
                                  const ParseError& error)
{
    const Properties& properties = setting.properties();
    if (isSecret(setting.fullName())) {
        return hiddenValue(setting);
    }
    const bool isEmpty = text.empty();
    const std::string what = isEmpty ? "an empty value" : truncate(data::escapeUnprintable(text), shownWidth);
    const bool isWellFormed = dynamic_cast<const UnsuitableValue*>(&error) != nullptr;
    const std::string advice = adviceFor(std::string(text), writing, setting, isWellFormed);
    if (!advice.empty() || isEmpty || (isWellFormed && constraintOf(properties).elementClass)) {
        return withAdvice(notAllowed(what, properties), advice);
    }
    const std::string place =
        writing.hasPosition
            ? ""
            : what + ": column " + std::to_string(positionAt(text, error.offset()).column) + ": ";
    return place + error.what() + "; must be " + describeAllowed(properties);
}

}  // namespace vx::core
