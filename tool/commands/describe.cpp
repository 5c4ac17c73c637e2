#include <review/tree_json.hpp>
#include <settings_core/constraints/constraints.hpp>
#include <settings_core/files/layers.hpp>
#include <settings_core/releases/release_history.hpp>
#include <settings_core/values/value_format.hpp>

#include <boost/json/array.hpp>
#include <boost/json/value_from.hpp>

#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "catalog/catalog.hpp"
#include "cli/arguments.hpp"
#include "cli/command.hpp"
#include "cli/diagnostics.hpp"
#include "render/effective_value.hpp"
#include "render/json_text.hpp"
#include "render/node_labels.hpp"
#include "render/table.hpp"

namespace vx::tool {

namespace {

namespace json = boost::json;
using core::Node;
using core::NodeKind;

struct DescribeOptions
{
    std::string path;
    bool showsFactory = false;
};

/// Rows of property and description.
class PropertyTable
{
public:
    explicit PropertyTable(Output& out) : out_(out) {}

    /// Returns the number of characters at which to cut values in the table.
    [[nodiscard]] std::size_t valueWidth() const noexcept { return out_.valueWidth(200); }

    void add(const char* name, std::string_view description)
    {
        table_.add({{name, Style::note}, description});
    }

    void write() const { table_.write(out_, "  "); }

private:
    Output& out_;
    Table table_;
};

const Node* innermostHiddenGroup(const Node& node)
{
    const Node* group = node.parent();
    while (group != nullptr && !group->isHiddenItself()) {
        group = group->parent();
    }
    return group;
}

std::string visibility(const Node& node)
{
    const auto& flag = node.properties().visible;
    if (flag.isWritten() && !flag.value()) {
        return "hidden: declared";
    }
    if (const Node* group = innermostHiddenGroup(node)) {
        return "hidden: its group " + group->getFullName() + " is hidden";
    }
    return flag.isWritten() ? "visible: declared" : "visible: default";
}

std::string contents(const Node& group)
{
    std::size_t groups = 0;
    std::size_t settings = 0;
    for (const Node& child : group.children()) {
        ++(child.kind() == NodeKind::group ? groups : settings);
    }
    return std::to_string(groups) + (groups == 1 ? " group, " : " groups, ") + std::to_string(settings) +
           (settings == 1 ? " setting" : " settings");
}

std::string describeAccess(const core::Node::Properties& properties)
{
    const auto& flag = properties.readOnly;
    return flag.value() ? "read-only" : flag.isWritten() ? "writable: declared" : "writable";
}

void addValue(const Node& setting, PropertyTable& table)
{
    const auto& properties = setting.properties();
    const std::string function = qualifiedName(properties.runTimeDefault);
    if (properties.factoryValue.isAssigned()) {
        table.add("class", core::formatClassAndSize(properties.factoryValue));
        table.add("value", core::formatValueOnOneLine(properties.factoryValue, table.valueWidth()));
    } else {
        table.add("value", function.empty() ? "no factory value" : "computed on request");
    }
    if (!function.empty()) {
        table.add("computed by", function);
    }
}

void addConstraints(const Node& setting, PropertyTable& table)
{
    const auto& properties = setting.properties();
    if (const std::string function = qualifiedName(properties.validator); !function.empty()) {
        table.add("validator", function + ": " + core::describeValidator(properties.validator));
    }
    for (const auto& validator : properties.valueValidators) {
        table.add("constraint", core::describeValueValidator(validator, properties.factoryValue));
    }
    table.add("accepts", core::describeConstraint(properties));
    if (properties.errorHandler) {
        table.add("errors", "worded by a custom error handler");
    }
}

std::string describeLayer(const core::LayerValue& value, std::size_t valueWidth)
{
    std::string text = value.value.isAssigned() ? core::formatValueOnOneLine(value.value, valueWidth) : "";
    for (const core::Diagnostic& diagnostic : value.diagnostics) {
        text += (text.empty() ? "" : "; ") + formatDiagnostic(diagnostic);
    }
    return text + (value.isValid() ? ", in " + value.file.string() : "; ignored");
}

/// Adds the values in settings files, the effective value, and the lock.
void addLayers(core::Layers& layers, const Node& setting, PropertyTable& table)
{
    for (const core::LayerValue& value : layers.valuesOf(setting)) {
        if (value.origin != core::Origin::factory) {
            table.add(core::originName(value.origin).data(),
                      describeLayer(core::shownValue(setting, value), table.valueWidth()));
        }
    }
    const core::LayerValue effective = shownEffective(layers, setting);
    table.add("effective", valueOnOneLine(effective, table.valueWidth()) + ", the " +
                               std::string(core::originName(effective.origin)) + " value");
    if (const auto lock = layers.lockOf(setting)) {
        table.add("locked", lock->path + " is locked by " + lock->file.string());
    }
}

void addSettingProperties(core::Layers& layers, const Node& node, PropertyTable& table)
{
    table.add("access", describeAccess(node.properties()));
    addValue(node, table);
    addLayers(layers, node, table);
    addConstraints(node, table);
    if (node.properties().additionalFile) {
        table.add("stored in", "an additional file");
    }
}

void addAliasProperties(const Session& session, const Node& node, PropertyTable& table)
{
    const std::string& target = node.properties().aliasName();
    const Node* found = session.tree().find(target);
    table.add("alias of", target + (found == nullptr ? ", which is not in this tree: unresolved" : ""));
}

void addTexts(Catalog& catalog, const Node& node, PropertyTable& table)
{
    table.add("title", catalog.titleOf(node));
    if (const std::string& sentence = catalog.entryOf(node).sentence; !sentence.empty()) {
        table.add("meaning", sentence);
    }
}

void addPhrases(Catalog& catalog, const Node& node, PropertyTable& table)
{
    for (const auto& [value, phrase] : catalog.entryOf(node).values) {
        table.add("allowed", std::string("\"").append(value).append("\": ").append(phrase));
    }
}

void addHistory(const Session& session, const Node& node, PropertyTable& table)
{
    const auto& releases = session.releaseChanges();
    for (const core::ReleaseStep& step : core::ReleaseHistory(releases).movesTo(node.fullName())) {
        table.add("moved from", std::string(step.from) + " in " + std::string(step.release));
    }
}

void writeText(const Session& session, core::Layers& layers, const Node& node, Output& out)
{
    Catalog catalog(session.tree());
    PropertyTable table(out);
    addTexts(catalog, node, table);
    table.add("kind", std::string(kindLabel(node.kind())));
    table.add("visibility", visibility(node));
    switch (node.kind()) {
    case NodeKind::group:
        table.add("contents", contents(node));
        break;
    case NodeKind::alias:
        addAliasProperties(session, node, table);
        break;
    case NodeKind::setting:
        addSettingProperties(layers, node, table);
        addPhrases(catalog, node, table);
        break;
    }
    addHistory(session, node, table);
    out << out.styled(Style::heading, node.fullName()) << '\n';
    table.write();
}

json::array layersJson(core::Layers& layersOver, const Node& setting)
{
    json::array layers;
    for (const core::LayerValue& held : layersOver.valuesOf(setting)) {
        const core::LayerValue value = core::shownValue(setting, held);
        json::array diagnostics;
        for (const core::Diagnostic& diagnostic : value.diagnostics) {
            diagnostics.emplace_back(formatDiagnostic(diagnostic));
        }
        json::object& layer = layers.emplace_back(json::object()).as_object();
        addLayerValue(layer, value);
        layer.emplace("isValid", value.isValid());
        layer.emplace("diagnostics", std::move(diagnostics));
    }
    return layers;
}

json::array historyJson(const Session& session, const Node& node)
{
    const auto& releases = session.releaseChanges();
    json::array history;
    for (const core::ReleaseStep& step : core::ReleaseHistory(releases).movesTo(node.fullName())) {
        history.push_back(json::object{{"from", step.from}, {"release", step.release}});
    }
    return history;
}

void addTexts(Catalog& catalog, const Node& node, json::object& document)
{
    const review::CatalogEntry& entry = catalog.entryOf(node);
    document.emplace("title", catalog.titleOf(node));
    document.emplace("sentence", entry.sentence.empty() ? json::value() : json::value(entry.sentence));
    document.emplace("keywords", json::value_from(entry.keywords));
    json::object values;
    for (const auto& [value, phrase] : entry.values) {
        values.emplace(value, phrase);
    }
    document.emplace("values", std::move(values));
}

/// Writes the node as in an exported tree, and the members that the export lacks.
void writeDocument(const Session& session, core::Layers& layers, const Node& node, Output& out)
{
    json::object document = review::nodeJson(node);
    Catalog catalog(session.tree());
    addTexts(catalog, node, document);
    document.emplace("isHidden", node.isHidden());
    if (node.kind() == NodeKind::setting) {
        document.emplace("accepts", core::describeConstraint(node.properties()));
        document.emplace("layers", layersJson(layers, node));
        json::object effective;
        addLayerValue(effective, shownEffective(layers, node));
        document.emplace("effective", std::move(effective));
        addLock(document, layers.lockOf(node));
    }
    document.emplace("movedFrom", historyJson(session, node));
    writeJson(document, out);
}

}  // namespace

Action addDescribe(CLI::App& command)
{
    setHelp(command, "Describe one group, setting or alias in full",
            "Example:\n  vxsettings describe verdix.commandwindow.NumericFormat");
    auto options = std::make_shared<DescribeOptions>();
    addPositional(command, "PATH", options->path, Need::required, "Path, with or without the root");
    addFactoryFlag(command, options->showsFactory);
    return [options](LazySession& lazy, Output& out) {
        const Session& session = lazy.get();
        const Node& node = session.node(options->path);
        core::Layers& layers = lazy.layers(options->showsFactory);
        (out.isJson() ? writeDocument : writeText)(session, layers, node, out);
        hintAtFileProblems(session, layers, out);
        return ExitCode::done;
    };
}

}  // namespace vx::tool
