#include "node_json.hpp"

#include <data/views.hpp>
#include <settings_core/array_visit.hpp>

#include <foundation/verdixdata/text.hpp>

#include <optional>
#include <string_view>
#include <utility>
#include <variant>

#include "words.hpp"

namespace vx::tool {

namespace {

namespace json = boost::json;
namespace settings_core = ::settings::core;
using core::Node;
using foundation::verdixdata::Array;
using foundation::verdixdata::ArrayType;
using foundation::verdixdata::String;
using foundation::verdixdata::toUtf8;
using foundation::verdixdata::TypedArray;
using settings_core::SettingValueValidator;

json::array texts(const std::vector<std::u16string>& values)
{
    json::array result;
    result.reserve(values.size());
    for (const std::u16string& value : values) {
        result.emplace_back(toUtf8(value));
    }
    return result;
}

std::string characters(const Array& array)
{
    const TypedArray<char16_t> view(array);
    return toUtf8({std::as_const(view).begin(), view.getNumberOfElements()});
}

json::value elementJson(const String& element)
{
    return element ? json::value(toUtf8(*element)) : json::value(nullptr);
}

json::value elementJson(char16_t element)
{
    return json::value(toUtf8({&element, 1}));
}

/// A text where a cell holds a character row, null where it holds nothing, else a value of its own.
json::value elementJson(const Array& element)
{
    const bool isText = element.isAssigned() && element.getType() == ArrayType::CHAR;
    return isText ? json::value(characters(element)) : valueJson(element);
}

template <class Number>
json::value elementJson(Number element)
{
    return element;
}

json::value dataJson(const Array& array)
{
    if (array.getType() == ArrayType::CHAR && data::isRow(array)) {
        return json::value(characters(array));
    }
    return core::visitArray(array, [](const auto& elements) {
        json::array data;
        data.reserve(elements.getNumberOfElements());
        for (const auto& element : elements) {
            data.push_back(elementJson(element));
        }
        return json::value(std::move(data));
    });
}

/// Words for a kind of function and for what its scope is.
struct FunctionKind
{
    std::string_view kind;
    std::string_view scope;
};

template <class Function>
inline constexpr FunctionKind functionKind{"callable", "qualifier"};
template <>
inline constexpr FunctionKind functionKind<settings_core::MValidator>{"script", "qualifier"};
template <>
inline constexpr FunctionKind functionKind<settings_core::CValidator>{"native", "library"};
template <>
inline constexpr FunctionKind functionKind<settings_core::JValidator>{"managed", "class"};
template <>
inline constexpr FunctionKind functionKind<settings_core::MRunTimeDefault>{"script", "qualifier"};
template <>
inline constexpr FunctionKind functionKind<settings_core::CRunTimeDefault>{"native", "library"};
template <>
inline constexpr FunctionKind functionKind<settings_core::JRunTimeDefault>{"managed", "class"};

/// A validator or run-time default; null where there is none.
struct FunctionJson
{
    json::value operator()(std::monostate) const { return nullptr; }

    template <class Function>
    json::value operator()(const Function& function) const
    {
        constexpr FunctionKind words = functionKind<Function>;
        return json::object{
            {"kind", words.kind}, {words.scope, function.scope()}, {"function", function.function()}};
    }
};

std::string_view colourForm(SettingValueValidator::Colour colour)
{
    return colour == SettingValueValidator::Colour::wholeNumbers ? "wholeNumbers" : "normalised";
}

/// Null where the size leaves the rows or the columns open.
json::value countOrNull(const std::optional<std::size_t>& count)
{
    return count ? json::value(*count) : json::value(nullptr);
}

/// Appends one entry per rule of the record. Words beside a colour belong to the colour.
void appendRules(json::array& rules, const SettingValueValidator::ConfigData& record)
{
    if (record.size) {
        rules.push_back(json::object{{"kind", "size"},
                                     {"rows", countOrNull(record.size->rows)},
                                     {"columns", countOrNull(record.size->columns)}});
    }
    if (record.elementClass) {
        rules.push_back(json::object{{"kind", "elementClass"}, {"class", className(*record.elementClass)}});
    }
    if (record.range) {
        // An open bound is infinite, and so written as null.
        rules.push_back(
            json::object{{"kind", "range"}, {"lower", record.range->lower}, {"upper", record.range->upper}});
    }
    if (!record.allowedValues.empty() && !record.colour) {
        rules.push_back(json::object{{"kind", "allowedValues"}, {"values", texts(record.allowedValues)}});
    }
    if (record.maximumLength) {
        rules.push_back(json::object{{"kind", "maximumLength"}, {"length", *record.maximumLength}});
    }
    if (record.colour) {
        json::object rule{{"kind", "colour"}, {"form", colourForm(*record.colour)}};
        if (!record.allowedValues.empty()) {
            rule.emplace("words", texts(record.allowedValues));
        }
        rules.push_back(std::move(rule));
    }
}

}  // namespace

json::value textOrNull(std::string_view text)
{
    return text.empty() ? json::value(nullptr) : json::value(text);
}

json::value valueJson(const Array& array)
{
    if (!array.isAssigned()) {
        return nullptr;
    }
    json::array dims;
    for (const std::size_t size : array.getDimensions()) {
        dims.emplace_back(size);
    }
    return json::object{
        {"class", className(array.getType())}, {"dims", std::move(dims)}, {"data", dataJson(array)}};
}

json::object nodeJson(const Node& node)
{
    const Node::Properties& properties = node.properties();
    json::array rules;
    for (const auto& record : properties.valueValidators) {
        appendRules(rules, record);
    }
    const bool isReadOnlyGiven = properties.readOnly.isWritten();
    return {{"path", node.fullName()},
            {"node", kindWord(node.kind())},
            {"visibility", visibilityWord(node)},
            {"readOnly", isReadOnlyGiven ? json::value(properties.readOnly.value()) : json::value(nullptr)},
            {"value", valueJson(properties.factoryValue)},
            {"validator", std::visit(FunctionJson(), properties.validator)},
            {"runTimeDefault", std::visit(FunctionJson(), properties.runTimeDefault)},
            {"valueValidators", std::move(rules)},
            {"aliasTarget", textOrNull(properties.aliasName())},
            {"errorHandler", static_cast<bool>(properties.errorHandler)},
            {"additionalFile", properties.additionalFile}};
}

json::array textsJson(const std::vector<std::string>& texts)
{
    return json::array(texts.begin(), texts.end());
}

json::object releaseJson(std::uint64_t index, const settings_core::ReleaseChangeSet& set)
{
    json::array changes;
    for (const auto& change : set.changes) {
        changes.push_back(json::object{{"operation", change.operation()},
                                       {"from", textsJson(change.from())},
                                       {"to", textsJson(change.to())}});
    }
    return {{"index", index},
            {"release", set.release},
            {"crossesRootGroups", set.crossesRootGroups},
            {"changes", std::move(changes)}};
}

}  // namespace vx::tool
