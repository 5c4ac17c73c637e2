#include <settings_core/constraints.hpp>
#include <settings_core/layers.hpp>
#include <settings_core/release_history.hpp>
#include <settings_core/value_format.hpp>

#include <boost/json/array.hpp>

#include <memory>
#include <string>
#include <utility>

#include "arguments.hpp"
#include "json_text.hpp"
#include "node_json.hpp"
#include "table.hpp"
#include "verb.hpp"
#include "words.hpp"

namespace vx::tool {

namespace {

namespace json = boost::json;
using core::Node;
using core::NodeKind;

constexpr std::size_t valueWidth = 200;

/// Lines of a fact and what is to say about it.
class Facts
{
public:
    void add(const char* fact, std::string text) { table_.add({{fact, Style::note}, std::move(text)}); }

    void write(Output& out) const { table_.write(out, "  "); }

private:
    Table table_;
};

const Node* nearestHiddenGroup(const Node& node)
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
        return "hidden: declared so";
    }
    if (const Node* group = nearestHiddenGroup(node)) {
        return "hidden: its group " + group->getFullName() + " is";
    }
    return flag.isWritten() ? "visible: declared so" : "visible: nothing declared";
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

std::string accessWords(const core::Node::Properties& properties)
{
    const auto& flag = properties.readOnly;
    return flag.value() ? "read-only" : flag.isWritten() ? "may be changed: declared so" : "may be changed";
}

void addValue(const Node& setting, Facts& facts)
{
    const auto& properties = setting.properties();
    const std::string function = qualifiedName(properties.runTimeDefault);
    if (properties.factoryValue.isAssigned()) {
        facts.add("class", core::formatClassAndSize(properties.factoryValue));
        facts.add("value", core::formatValueOnOneLine(properties.factoryValue, valueWidth));
    } else {
        facts.add("value", function.empty() ? "no factory value" : "computed when it is asked for");
    }
    if (!function.empty()) {
        facts.add("computed by", function);
    }
}

void addChecks(const Node& setting, Facts& facts)
{
    const auto& properties = setting.properties();
    if (const std::string function = qualifiedName(properties.validator); !function.empty()) {
        facts.add("validator", function + ": " + core::describeValidator(properties.validator));
    }
    for (const auto& record : properties.valueValidators) {
        facts.add("rule", core::describeValueValidator(record, properties.factoryValue));
    }
    facts.add("accepts", core::describeConstraint(properties));
    if (properties.errorHandler) {
        facts.add("refusals", "worded by an error handler of its own");
    }
}

std::string layerText(const core::LayerValue& value)
{
    std::string text = value.value.isAssigned() ? core::formatValueOnOneLine(value.value, valueWidth) : "";
    for (const std::string& fault : value.diagnostics) {
        text += (text.empty() ? "" : "; ") + fault;
    }
    return text + (value.isValid() ? ", in " + value.source : "; does not count");
}

/// What the files say, and who has the last word.
void addLayers(core::Layers& layers, const Node& setting, Facts& facts)
{
    core::Layer holding = core::Layer::factory;
    for (const core::LayerValue& value : layers.valuesOf(setting)) {
        if (value.layer != core::Layer::factory) {
            facts.add(core::layerName(value.layer).data(), layerText(value));
        }
        holding = value.isValid() ? value.layer : holding;
    }
    facts.add("in force", "the " + std::string(core::layerName(holding)) + " value");
}

void addSettingFacts(core::Layers& layers, const Node& node, Facts& facts)
{
    facts.add("access", accessWords(node.properties()));
    addValue(node, facts);
    addLayers(layers, node, facts);
    addChecks(node, facts);
    if (node.properties().additionalFile) {
        facts.add("stored in", "an additional file");
    }
}

void addAliasFacts(const Session& session, const Node& node, Facts& facts)
{
    const std::string& target = node.properties().aliasName();
    const Node* found = session.tree().find(target);
    facts.add("alias of", target + (found == nullptr ? ", which is not in this tree: unresolved" : ""));
}

void addHistory(const Session& session, const Node& node, Facts& facts)
{
    const auto table = session.releaseChanges();
    for (const core::ReleaseStep& step : core::movesTo(table, node.fullName())) {
        facts.add("moved from", std::string(step.from) + " in " + std::string(step.release));
    }
}

void writeText(LazySession& lazy, const Node& node, Output& out)
{
    const Session& session = lazy.get();
    Facts facts;
    facts.add("kind", std::string(kindWord(node.kind())));
    facts.add("visibility", visibility(node));
    switch (node.kind()) {
    case NodeKind::group:
        facts.add("contents", contents(node));
        break;
    case NodeKind::alias:
        addAliasFacts(session, node, facts);
        break;
    case NodeKind::setting:
        addSettingFacts(lazy.layers(), node, facts);
        break;
    }
    addHistory(session, node, facts);
    out << out.painted(Style::heading, node.fullName()) << '\n';
    facts.write(out);
}

json::array layersJson(const std::vector<core::LayerValue>& values)
{
    json::array layers;
    for (const core::LayerValue& value : values) {
        layers.push_back(json::object{{"layer", core::layerName(value.layer)},
                                      {"value", valueJson(value.value)},
                                      {"source", value.source},
                                      {"counts", value.isValid()},
                                      {"faults", textsJson(value.diagnostics)}});
    }
    return layers;
}

json::array historyJson(const Session& session, const Node& node)
{
    const auto table = session.releaseChanges();
    json::array history;
    for (const core::ReleaseStep& step : core::movesTo(table, node.fullName())) {
        history.push_back(json::object{{"from", step.from}, {"release", step.release}});
    }
    return history;
}

/// The node as it is exported, with what the export does not tell.
void writeDocument(LazySession& lazy, const Node& node, Output& out)
{
    json::object document = nodeJson(node);
    document.emplace("isHidden", node.isHidden());
    if (node.kind() == NodeKind::setting) {
        document.emplace("accepts", core::describeConstraint(node.properties()));
        document.emplace("layers", layersJson(lazy.layers().valuesOf(node)));
    }
    document.emplace("movedFrom", historyJson(lazy.get(), node));
    writeJson(document, out);
}

}  // namespace

Action addDescribe(CLI::App& verb)
{
    describe(verb, "Everything about one group, setting or alias in words",
             "Example:\n  vxsettings describe verdix.commandwindow.NumericFormat");
    auto path = std::make_shared<std::string>();
    addOperand(verb, "PATH", *path, Need::required, "Path, with or without the root");
    return [path](LazySession& lazy, Output& out) {
        const Node& node = lazy.get().node(*path);
        (out.isJson() ? writeDocument : writeText)(lazy, node, out);
        return ExitCode::done;
    };
}

}  // namespace vx::tool
