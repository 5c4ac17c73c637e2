#include "tree_json.hpp"

#include <data/views.hpp>
#include <settings_core/values/array_visit.hpp>
#include <settings_core/values/value_format.hpp>

#include <foundation/verdixdata/text.hpp>

#include <boost/json/array.hpp>
#include <boost/json/value_from.hpp>

#include <algorithm>
#include <cmath>
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
using foundation::verdixdata::toUtf16;
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
    if constexpr (std::is_floating_point_v<Number>) {
        if (!std::isfinite(element)) {
            return json::value(core::formatNumber(element));
        }
    }
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

/// Visitor that converts a validator or run-time default.
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

/// Removes a member with this value.
void eraseIf(json::object& object, std::string_view name, const json::value& value)
{
    if (const json::value* const found = object.if_contains(name); found != nullptr && *found == value) {
        object.stable_erase(name);
    }
}

/// Removes the dimensions of a row.
void shortenValue(json::value& value)
{
    if (json::object* const object = value.if_object()) {
        const json::value& data = object->at("data");
        const std::size_t count =
            data.is_array() ? data.get_array().size() : toUtf16(data.get_string()).size();
        eraseIf(*object, "dims", {1, count});
    }
}

/// Removes all members whose values are implied: null and those of a setting without options.
json::object shortened(json::object node)
{
    shortenValue(node.at("value"));
    eraseIf(node, "node", "setting");
    eraseIf(node, "visibility", "default");
    eraseIf(node, "valueValidators", json::array());
    eraseIf(node, "errorHandler", false);
    eraseIf(node, "additionalFile", false);
    json::object remaining;
    for (const auto& [name, value] : node) {
        if (!value.is_null()) {
            remaining.emplace(name, value);
        }
    }
    return remaining;
}

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

json::value functionJson(const settings_core::Validator& validator)
{
    return std::visit(FunctionJson(), validator);
}

json::value functionJson(const settings_core::RunTimeDefault& runTimeDefault)
{
    return std::visit(FunctionJson(), runTimeDefault);
}

json::array constraintsJson(const Node& node)
{
    json::array constraints;
    for (const auto& validator : node.properties().valueValidators) {
        std::ranges::transform(core::exportedConstraints(validator), std::back_inserter(constraints),
                               constraintJson);
    }
    return constraints;
}

json::object nodeJson(const Node& node)
{
    const Node::Properties& properties = node.properties();
    const bool isReadOnlyDeclared = properties.readOnly.isWritten();
    return {
        {"path", node.fullName()},
        {"node", kindLabel(node.kind())},
        {"visibility", visibilityLabel(node)},
        {"readOnly", isReadOnlyDeclared ? json::value(properties.readOnly.value()) : json::value(nullptr)},
        {"value", valueJson(properties.factoryValue)},
        {"validator", functionJson(properties.validator)},
        {"runTimeDefault", functionJson(properties.runTimeDefault)},
        {"valueValidators", constraintsJson(node)},
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

namespace {

json::array releasesJson(const settings_core::ReleaseChangeTable& releases)
{
    json::array list;
    for (const auto& [index, set] : releases) {
        list.push_back(releaseJson(index, set));
    }
    return list;
}

}  // namespace

json::object treeJson(const core::SettingsTree& tree, const settings_core::ReleaseChangeTable& releases,
                      const std::vector<std::string>& settingPathList)
{
    json::array nodes;
    nodes.reserve(tree.nodes().size());
    for (const Node* node : tree.nodes()) {
        nodes.push_back(nodeJson(*node));
    }
    return {{"root", tree.root()->fullName()},
            {"nodes", std::move(nodes)},
            {"releaseChanges", releasesJson(releases)},
            {"settingPathList", json::value_from(settingPathList)}};
}

json::object baselineJson(const ReleaseTree& release)
{
    json::array nodes;
    for (const Node* node : release.tree.nodes()) {
        json::object object = shortened(nodeJson(*node));
        const auto computed = release.computedValues.find(node->fullName());
        if (computed != release.computedValues.end()) {
            json::value value = valueJson(computed->second);
            shortenValue(value);
            object.emplace("computedValue", std::move(value));
        }
        nodes.push_back(std::move(object));
    }
    return {{"root", release.tree.root()->fullName()},
            {"nodes", std::move(nodes)},
            {"releaseChanges", releasesJson(release.releaseChanges)}};
}

}  // namespace vx::review
