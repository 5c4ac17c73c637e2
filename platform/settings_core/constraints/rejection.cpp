#include <data/unprintable.hpp>
#include <data/views.hpp>
#include <settings_core/constraints/constraints.hpp>
#include <settings_core/constraints/kinds.hpp>
#include <settings_core/constraints/rejection.hpp>
#include <settings_core/tree/secret_settings.hpp>
#include <settings_core/tree/suggestions.hpp>
#include <settings_core/values/value_format.hpp>

#include <foundation/verdixdata/text.hpp>

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

std::string withoutCommas(std::string text)
{
    std::erase(text, ',');
    return text;
}

/// Returns the list that the user may have meant by a text without brackets; empty if there is none.
std::string correctedList(const RejectedText& rejected, const Properties& properties,
                          const Constraint& target)
{
    const std::string text(rejected.text);
    std::vector<std::string> candidates{"[" + text + "]"};
    if (rejected.notation == Notation::script) {
        candidates = {"{" + text + "}", "{\"" + text + "\"}", "[" + text + "]"};
    }
    for (std::string& candidate : candidates) {
        const auto value = parse(candidate, rejected.notation, target);
        if (value && satisfiesAll(properties.valueValidators, *value)) {
            return std::move(candidate);
        }
    }
    return "";
}

/// Returns what to do about the text; empty if that is not obvious, or too long to be shown.
std::string adviceFor(const RejectedText& rejected, const Properties& properties, bool isWellFormed)
{
    const bool isQuotable = rejected.hasPosition || rejected.text.find('\'') == std::string_view::npos;
    if (rejected.text.empty() || rejected.text.size() > shownWidth || !isQuotable) {
        return "";
    }
    const auto shown = [&](const std::string& text) {
        return rejected.hasPosition ? text : "'" + text + "'";
    };
    const Constraint target = constraintOf(properties);
    if (target.size.rows == 1U && target.size.columns == 1U) {
        const std::string number = withoutCommas(std::string(rejected.text));
        const bool hasCommas = number.size() != rejected.text.size();
        return hasCommas && parse(number, rejected.notation, target) ? "write it without commas: " + number
                                                                     : "";
    }
    if (const std::string corrected = correctedList(rejected, properties, target); !corrected.empty()) {
        return "write it as a list: " + shown(corrected);
    }
    if (!target.colour || !isWellFormed) {
        return "";
    }
    const bool isNormalised = target.colour == ::settings::core::SettingValueValidator::Colour::normalised;
    if (rejected.notation == Notation::json) {
        return "red is " + shown(isNormalised ? "[1, 0, 0]" : "[255, 0, 0]");
    }
    return "red is " + shown(isNormalised ? "[1 0 0]" : "[255 0 0]") + " or " + shown("#ff0000");
}

}  // namespace

std::string describeRejection(const Node& setting, const Array& value)
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
    return notAllowed(describeValue(properties, value), properties);
}

std::string describeTextRejection(const Node& setting, const RejectedText& rejected, const ParseError& error)
{
    const Properties& properties = setting.properties();
    if (isSecret(setting.fullName())) {
        return hiddenValue(setting);
    }
    const bool isEmpty = rejected.text.empty();
    const std::string what =
        isEmpty ? "an empty value" : truncate(data::escapeUnprintable(rejected.text), shownWidth);
    const bool isWellFormed = dynamic_cast<const UnsuitableValue*>(&error) != nullptr;
    const std::string advice = adviceFor(rejected, properties, isWellFormed);
    if (!advice.empty() || isEmpty || (isWellFormed && constraintOf(properties).elementClass)) {
        return notAllowed(what, properties) + (advice.empty() ? "" : "; " + advice);
    }
    const std::string place =
        rejected.hasPosition
            ? ""
            : what + ": column " + std::to_string(positionAt(rejected.text, error.offset()).column) + ": ";
    return place + error.what() + "; must be " + describeAllowed(properties);
}

}  // namespace vx::core
