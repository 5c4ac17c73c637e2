#include <settings_core/value_text.hpp>

#include <CLI/CLI.hpp>

#include <memory>
#include <string>
#include <variant>

#include "release_history.hpp"
#include "table.hpp"
#include "verb.hpp"
#include "words.hpp"

namespace vx::tool {

namespace {

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
        return "hidden: its group " + group->fullName() + " is";
    }
    return flag.isWritten() ? "visible: declared so" : "visible: nothing declared";
}

std::string contents(const Node& group)
{
    std::size_t groups = 0;
    for (const auto& child : group.children()) {
        groups += child->kind() == NodeKind::group ? 1 : 0;
    }
    const std::size_t settings = group.children().size() - groups;
    return std::to_string(groups) + (groups == 1 ? " group, " : " groups, ") + std::to_string(settings) +
           (settings == 1 ? " setting" : " settings");
}

std::string accessWords(const core::Node::Properties& properties)
{
    const auto& flag = properties.readOnly;
    return flag.value() ? "read-only" : flag.isWritten() ? "may be changed: declared so" : "may be changed";
}

void addSettingFacts(const Node& node, Facts& facts)
{
    const auto& properties = node.properties();
    facts.add("access", accessWords(properties));
    if (properties.factoryValue.isAssigned()) {
        facts.add("class", core::shapeText(properties.factoryValue));
        facts.add("value", core::shortValueText(properties.factoryValue, valueWidth));
    } else {
        facts.add("value", "no factory value");
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
    for (const ReleaseStep& step : movesTo(table, node.fullName())) {
        facts.add("moved from", std::string(step.from) + " in " + std::string(step.release));
    }
}

void describe(const Session& session, const Node& node, Output& out)
{
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
        addSettingFacts(node, facts);
        break;
    }
    addHistory(session, node, facts);
    out << out.painted(Style::heading, node.fullName()) << '\n';
    facts.write(out);
}

}  // namespace

Verb addDescribe(CLI::App& app)
{
    CLI::App* parser =
        app.add_subcommand("describe", "Everything about one group, setting or alias in words");
    auto path = std::make_shared<std::string>();
    parser->add_option("PATH", *path, "Path, with or without the root")->type_name("")->required();
    parser->footer("Example:\n  vxsettings describe verdix.commandwindow.NumericFormat");
    return {parser, [path](LazySession& lazy, Output& out) {
                const Session& session = lazy.get();
                describe(session, session.node(*path), out);
                return ExitCode::done;
            }};
}

}  // namespace vx::tool
