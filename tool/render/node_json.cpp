#include "render/node_json.hpp"

#include <data/views.hpp>
#include <settings_core/values/array_visit.hpp>

#include <foundation/verdixdata/text.hpp>

#include <algorithm>
#include <iterator>
#include <optional>
#include <string_view>
#include <utility>
#include <variant>

#include "render/node_labels.hpp"

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

/// Returns a cell element: a string for a character vector, null for an unassigned value, else an object.
json::value elementJson(const Array& element)
{
    const bool isCharacterVector = element.isAssigned() && element.getType() == ArrayType::CHAR;
    return isCharacterVector ? json::value(characters(element)) : valueJson(element);
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

/// JSON value of the member "kind", and name of the member that holds the scope.
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

/// Returns a validator or run-time default as JSON; null if there is none.
struct FunctionJson
{
    json::value operator()(std::monostate) const { return nullptr; }

    template <class Function>
    json::value operator()(const Function& function) const
    {
        constexpr FunctionKind kind = functionKind<Function>;
        return json::object{
            {"kind", kind.kind}, {kind.scope, function.scope()}, {"function", function.function()}};
    }
};

json::object constraintJson(const core::ExportedConstraint& constraint)
{
    json::object object{{"kind", constraint.kind}};
    for (const core::Parameter& parameter : constraint.parameters) {
        object.emplace(parameter.name, parameterJson(parameter));
    }
    return object;
}

}  // namespace

json::value stringOrNull(std::string_view string)
{
    return string.empty() ? json::value(nullptr) : json::value(string);
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

json::value parameterJson(const core::Parameter& parameter)
{
    if (const auto* count = std::get_if<std::optional<std::size_t>>(&parameter.value)) {
        return *count ? json::value(**count) : json::value(nullptr);
    }
    if (const auto* strings = std::get_if<std::vector<std::string>>(&parameter.value)) {
        return stringsJson(*strings);
    }
    const auto* string = std::get_if<std::string>(&parameter.value);
    return string != nullptr ? json::value(*string) : json::value(std::get<double>(parameter.value));
}

json::object nodeJson(const Node& node)
{
    const Node::Properties& properties = node.properties();
    json::array constraints;
    for (const auto& validator : properties.valueValidators) {
        std::ranges::transform(core::exportedConstraints(validator), std::back_inserter(constraints),
                               constraintJson);
    }
    const bool isReadOnlyDeclared = properties.readOnly.isWritten();
    return {
        {"path", node.fullName()},
        {"node", kindLabel(node.kind())},
        {"visibility", visibilityLabel(node)},
        {"readOnly", isReadOnlyDeclared ? json::value(properties.readOnly.value()) : json::value(nullptr)},
        {"value", valueJson(properties.factoryValue)},
        {"validator", std::visit(FunctionJson(), properties.validator)},
        {"runTimeDefault", std::visit(FunctionJson(), properties.runTimeDefault)},
        {"valueValidators", std::move(constraints)},
        {"aliasTarget", stringOrNull(properties.aliasName())},
        {"errorHandler", static_cast<bool>(properties.errorHandler)},
        {"additionalFile", properties.additionalFile}};
}

json::array stringsJson(const std::vector<std::string>& strings)
{
    return json::array(strings.begin(), strings.end());
}

json::object releaseJson(std::uint64_t index, const settings_core::ReleaseChangeSet& set)
{
    json::array changes;
    for (const auto& change : set.changes) {
        changes.push_back(json::object{{"operation", change.operation()},
                                       {"from", stringsJson(change.from())},
                                       {"to", stringsJson(change.to())}});
    }
    return {{"index", index},
            {"release", set.release},
            {"crossesRootGroups", set.crossesRootGroups},
            {"changes", std::move(changes)}};
}

}  // namespace vx::tool
