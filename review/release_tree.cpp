#include "release_tree.hpp"

#include <data/views.hpp>
#include <settings_core/constraints/constraints.hpp>
#include <settings_core/diagnostic.hpp>
#include <settings_core/files/input_file.hpp>
#include <settings_core/files/text_position.hpp>
#include <settings_core/releases/release_history.hpp>
#include <settings_core/values/run_time_default.hpp>

#include <foundation/verdixdata/array_factory.hpp>

#include <algorithm>
#include <iterator>
#include <limits>
#include <optional>
#include <stdexcept>
#include <type_traits>
#include <unordered_map>
#include <utility>
#include <vector>

#include "json_item.hpp"

namespace vx::review {

namespace {

using namespace foundation::verdixdata;
namespace settings_core = ::settings::core;
using core::Node;
using settings_core::ReleaseChangeSet;
using settings_core::ReleaseChangeTable;
using settings_core::SettingsFileChange;

// Values

Array arrayOf(const JsonItem& item);

template <class T>
T elementOf(const JsonItem& item)
{
    if constexpr (std::is_same_v<T, bool>) {
        return item.boolean();
    } else if constexpr (std::is_same_v<T, double>) {
        return item.number();
    } else if constexpr (std::is_integral_v<T>) {
        return item.integer<T>();
    } else if constexpr (std::is_same_v<T, String>) {
        return item.isNull() ? String() : String(item.utf16());
    } else {
        return arrayOf(item);
    }
}

/// An element of a char array that is not a row.
template <>
char16_t elementOf(const JsonItem& item)
{
    const std::u16string character = item.utf16();
    if (character.size() != 1) {
        item.fail("one character");
    }
    return character.front();
}

/// Returns the number of elements; nothing if it overflows.
std::optional<std::size_t> numberOfElements(const ArrayDimensions& dimensions)
{
    if (std::ranges::find(dimensions, 0U) != dimensions.end()) {
        return 0;
    }
    std::size_t product = 1;
    for (const std::size_t size : dimensions) {
        if (product > std::numeric_limits<std::size_t>::max() / size) {
            return std::nullopt;
        }
        product *= size;
    }
    return product;
}

ArrayDimensions dimensionsOf(const JsonItem& value, std::size_t count)
{
    const auto given = value.find("dims");
    if (!given) {
        return {1, count};
    }
    ArrayDimensions dimensions;
    for (const JsonItem& size : given->elements()) {
        dimensions.push_back(size.integer<std::uint32_t>());
    }
    if (dimensions.size() < 2 || numberOfElements(dimensions) != count) {
        given->fail("the dimensions of an array with " + std::to_string(count) + " elements");
    }
    return dimensions;
}

template <class T>
Array arrayOfType(const JsonItem& value)
{
    const auto elements = value.member("data").elements();
    auto array = ArrayFactory().createArray<T>(dimensionsOf(value, elements.size()));
    std::ranges::transform(elements, array.begin(), elementOf<T>);
    return array;
}

Array characterVector(const std::u16string& string)
{
    auto array = ArrayFactory().createArray<char16_t>({1, string.size()});
    std::ranges::copy(string, array.begin());
    return array;
}

/// Takes a value as from valueJson(), or an element of a cell.
Array arrayOf(const JsonItem& item)
{
    if (item.isNull()) {
        return {};
    }
    if (!item.isObject()) {
        return characterVector(item.utf16());
    }
    const JsonItem name = item.member("class");
    const auto type = data::classNamed(name.string());
    if (!type) {
        name.fail("the name of a class");
    }
    const JsonItem data = item.member("data");
    if (type == ArrayType::CHAR && data.isString()) {
        return characterVector(data.utf16());
    }
    return data::visitElementType(*type,
                                  [&item]<class T>(std::type_identity<T>) { return arrayOfType<T>(item); });
}

// Properties

/// Returns the function object for the kinds that Function has in common: script, native, managed.
template <class Function, class Script, class Native, class Managed>
Function functionOf(const JsonItem& item)
{
    const JsonItem kind = item.member("kind");
    const std::string function = item.member("function").string();
    if (kind.string() == "native") {
        return Native(item.member("library").string(), function);
    }
    if (kind.string() == "managed") {
        return Managed(item.member("class").string(), function);
    }
    if (kind.string() == "script") {
        return Script(item.member("qualifier").string(), function);
    }
    kind.fail("\"script\", \"native\" or \"managed\"");
}

settings_core::Validator validatorOf(const JsonItem& item)
{
    using namespace settings_core;
    if (item.member("kind").string() == "callable") {
        return CPPValidator({}, item.member("qualifier").string(), item.member("function").string());
    }
    return functionOf<Validator, MValidator, CValidator, JValidator>(item);
}

core::Parameter parameterOf(const core::JsonMember& member)
{
    const JsonItem item(member.value);
    core::Parameter parameter{member.name, std::optional<std::size_t>()};
    switch (member.value.kind) {
    case core::JsonKind::null:
        break;
    case core::JsonKind::array: {
        std::vector<std::string> strings;
        std::ranges::transform(item.elements(), std::back_inserter(strings), &JsonItem::string);
        parameter.value = std::move(strings);
        break;
    }
    case core::JsonKind::string:
        parameter.value = item.string();
        break;
    default:
        parameter.value = item.number();
    }
    return parameter;
}

void addConstraint(const JsonItem& item, std::vector<core::ValueValidator>& validators)
{
    const std::string kind = item.member("kind").string();
    core::ExportedConstraint constraint{kind, {}};
    std::ranges::transform(item.members(), std::back_inserter(constraint.parameters), parameterOf);
    try {
        core::restoreConstraint(constraint, validators);
    } catch (const std::invalid_argument& error) {
        item.fail("a constraint; " + std::string(error.what()));
    }
}

void ignoreInvalidValue(const std::string& /*name*/, const Array& /*value*/) {}

Node::Properties propertiesOf(const JsonItem& node)
{
    Node::Properties properties(false, false, {}, {}, {}, false, false, {});
    if (const auto visibility = node.find("visibility"); visibility && visibility->string() != "default") {
        properties.visible = visibility->string() == "visible";
    }
    if (const auto readOnly = node.find("readOnly")) {
        properties.readOnly = readOnly->boolean();
    }
    if (const auto value = node.find("value")) {
        properties.factoryValue = arrayOf(*value);
    }
    if (const auto validator = node.find("validator")) {
        properties.validator = validatorOf(*validator);
    }
    if (const auto computed = node.find("runTimeDefault")) {
        using namespace settings_core;
        properties.runTimeDefault =
            functionOf<RunTimeDefault, MRunTimeDefault, CRunTimeDefault, JRunTimeDefault>(*computed);
    }
    if (const auto validators = node.find("valueValidators")) {
        for (const JsonItem& constraint : validators->elements()) {
            addConstraint(constraint, properties.valueValidators);
        }
    }
    if (const auto target = node.find("aliasTarget")) {
        properties.setAliasName(target->string());
    }
    if (const auto handler = node.find("errorHandler"); handler && handler->boolean()) {
        properties.errorHandler = ignoreInvalidValue;
    }
    if (const auto file = node.find("additionalFile")) {
        properties.additionalFile = file->boolean();
    }
    return properties;
}

// Nodes and releases

/// Adds nodes to a tree; each must come after its group.
class NodeAdder
{
public:
    explicit NodeAdder(ReleaseTree& result) : result_(result)
    {
        groups_.emplace(result.tree.root()->fullName(), result.tree.root());
    }

    void add(const JsonItem& node)
    {
        const JsonItem pathItem = node.member("path");
        const std::string path = pathItem.string();
        const std::size_t dot = std::min(path.rfind('.'), path.size() - 1);
        const auto group = groups_.find(path.substr(0, dot));
        if (group == groups_.end()) {
            pathItem.fail("a path in a group that precedes it");
        }
        const auto kind = node.find("node");
        const bool isGroup = kind && kind->string() == "group";
        try {
            auto created =
                group->second->createFactorySetting(path.substr(dot + 1), !isGroup, propertiesOf(node));
            if (isGroup) {
                groups_.emplace(path, std::move(created));
            }
        } catch (const std::invalid_argument& error) {
            pathItem.fail("another path: " + std::string(error.what()));
        }
        if (const auto computed = node.find("computedValue")) {
            result_.computedValues.emplace(path, arrayOf(*computed));
        }
    }

private:
    ReleaseTree& result_;
    std::unordered_map<std::string, boost::shared_ptr<settings_core::MSettings>> groups_;
};

std::vector<std::string> pathsOf(const JsonItem& list)
{
    std::vector<std::string> paths;
    std::ranges::transform(list.elements(), std::back_inserter(paths), &JsonItem::string);
    return paths;
}

SettingsFileChange changeOf(const JsonItem& change)
{
    SettingsFileChange result(change.member("operation").string(), pathsOf(change.member("from")),
                              pathsOf(change.member("to")));
    if (const std::string message = core::describeMalformed(result); !message.empty()) {
        change.fail("a move or removal of one path; " + message);
    }
    return result;
}

ReleaseChangeSet releaseOf(const JsonItem& release)
{
    ReleaseChangeSet set{release.member("release").string(), false, {}};
    std::ranges::transform(release.member("changes").elements(), std::back_inserter(set.changes), changeOf);
    return set;
}

ReleaseTree releaseTreeOf(const JsonItem& document)
{
    ReleaseTree result{core::SettingsTree(document.member("root").string()), {}, {}};
    NodeAdder adder(result);
    for (const JsonItem& node : document.member("nodes").elements()) {
        adder.add(node);
    }
    for (const JsonItem& release : document.member("releaseChanges").elements()) {
        result.releaseChanges.emplace(result.releaseChanges.size(), releaseOf(release));
    }
    return result;
}

}  // namespace

ReleaseTree makeReleaseTree(const core::SettingsTree& tree, const ReleaseChangeTable& releases)
{
    ReleaseTree result{tree, releases, {}};
    for (const Node* node : tree.nodes()) {
        if (std::holds_alternative<std::monostate>(node->properties().runTimeDefault)) {
            continue;
        }
        try {
            result.computedValues.emplace(node->fullName(), core::defaultValue(*node).value);
        } catch (const std::runtime_error&) {
            continue;  // unavailable
        }
    }
    return result;
}

ReleaseTree parseReleaseTree(std::string_view text, const std::string& file)
{
    try {
        const core::JsonValue document = core::readJson(text);
        return releaseTreeOf(JsonItem(document));
    } catch (const core::ParseError& error) {
        throw std::runtime_error(
            core::formatDiagnostic({"",
                                    std::string("not an exported tree: ") + error.what() +
                                        "; create one with: vxsettings export --format json -o FILE",
                                    core::positionAt(text, error.offset(), core::inputName(file))}));
    }
}

ReleaseTree readReleaseTree(const std::string& file)
{
    return parseReleaseTree(contentOf(file), file);
}

std::string contentOf(const std::string& file)
{
    return core::readInput(file, core::maximumTreeFileSize);
}

}  // namespace vx::review
