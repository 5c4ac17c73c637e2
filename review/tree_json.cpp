#include "tree_json.hpp"

#include <data/views.hpp>
#include <settings_core/values/array_visit.hpp>

#include <foundation/verdixdata/text.hpp>

#include <boost/json/array.hpp>
#include <boost/json/value_from.hpp>

#include <algorithm>
#include <iterator>
#include <optional>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>

namespace vx::review {

namespace {

namespace json = boost::json;
namespace settings_core = ::settings::core;
using core::Node;
using foundation::verdixdata::Array;
using foundation::verdixdata::ArrayType;
using foundation::verdixdata::String;
using foundation::verdixdata::toUtf8;

json::value elementJson(const String& element)
{
    return element ? json::value(toUtf8(*element)) : json::value(nullptr);
}

json::value elementJson(char16_t element)
{
    return json::value(toUtf8({&element, 1}));
}

bool isCharacterVector(const Array& array)
{
    return array.getType() == ArrayType::CHAR && data::isRow(array);
}

/// Converts an element of a cell: a string for a character vector, null for an unassigned value, else an
/// object.
json::value elementJson(const Array& element)
{
    return isCharacterVector(element) ? json::value(toUtf8(*data::textOf(element))) : valueJson(element);
}

template <class Number>
json::value elementJson(Number element)
{
    return element;
}

json::value dataJson(const Array& array)
{
    if (isCharacterVector(array)) {
        return json::value(toUtf8(*data::textOf(array)));
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

template <class Function, class... Functions>
constexpr bool isAnyOf = (std::is_same_v<Function, Functions> || ...);

/// Visitor that converts a validator or run-time default; null if there is none.
struct FunctionJson
{
    json::value operator()(std::monostate) const { return nullptr; }

    template <class Function>
    json::value operator()(const Function& function) const
    {
        using namespace settings_core;
        constexpr bool isNative = isAnyOf<Function, CValidator, CRunTimeDefault>;
        constexpr bool isManaged = isAnyOf<Function, JValidator, JRunTimeDefault>;
        constexpr bool isScript = isAnyOf<Function, MValidator, MRunTimeDefault>;
        return json::object{{"kind", isNative    ? "native"
                                     : isManaged ? "managed"
                                     : isScript  ? "script"
                                                 : "callable"},
                            {isNative    ? "library"
                             : isManaged ? "class"
                                         : "qualifier",
                             function.scope()},
                            {"function", function.function()}};
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
    return json::value_from(parameter.value);
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

json::object releaseJson(std::uint64_t index, const settings_core::ReleaseChangeSet& set)
{
    json::array changes;
    for (const auto& change : set.changes) {
        changes.push_back(json::object{{"operation", change.operation()},
                                       {"from", json::value_from(change.from())},
                                       {"to", json::value_from(change.to())}});
    }
    return {{"index", index},
            {"release", set.release},
            {"crossesRootGroups", set.crossesRootGroups},
            {"changes", std::move(changes)}};
}

json::object treeJson(const core::SettingsTree& tree, const settings_core::ReleaseChangeTable& releases,
                      const std::vector<std::string>& settingPathList)
{
    json::array nodes;
    nodes.reserve(tree.nodes().size());
    for (const Node* node : tree.nodes()) {
        nodes.push_back(nodeJson(*node));
    }
    json::array releaseChanges;
    for (const auto& [index, set] : releases) {
        releaseChanges.push_back(releaseJson(index, set));
    }
    return {{"root", tree.root()->fullName()},
            {"nodes", std::move(nodes)},
            {"releaseChanges", std::move(releaseChanges)},
            {"settingPathList", json::value_from(settingPathList)}};
}

}  // namespace vx::review
