#include <settings_core/value_format.hpp>

#include <boost/algorithm/string/join.hpp>
#include <boost/json/array.hpp>

#include <algorithm>
#include <fnmatch.h>
#include <iterator>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "arguments.hpp"
#include "json_text.hpp"
#include "node_json.hpp"
#include "table.hpp"
#include "verb.hpp"
#include "words.hpp"

namespace vx::tool {

namespace {

using core::Node;
using core::NodeKind;

constexpr std::size_t valueWidth = 60;

struct ListOptions
{
    std::vector<std::string> patterns;
    std::string kind;
    std::string validator;
    bool onlyHidden = false;
    bool onlyReadOnly = false;
    bool onlyModified = false;
};

bool matches(const std::string& pattern, const std::string& text, std::size_t from = 0)
{
    return ::fnmatch(pattern.c_str(), text.c_str() + from, 0) == 0;
}

/// The nodes that any of the patterns matches, with or without the root. A pattern that matches none is a
/// mistake.
std::vector<const Node*> nodesOf(const Session& session, const std::vector<std::string>& patterns)
{
    const auto& all = session.tree().nodes();
    if (patterns.empty()) {
        return {all.begin(), all.end()};
    }
    const std::size_t behindRoot = session.tree().root()->fullName().size() + 1;
    std::vector<bool> isUsed(patterns.size());
    std::vector<const Node*> nodes;
    for (const Node* node : all) {
        const std::string path = node->getFullName();
        bool isMatch = false;
        for (std::size_t index = 0; index < patterns.size(); ++index) {
            if (matches(patterns[index], path) || matches(patterns[index], path, behindRoot)) {
                isMatch = isUsed[index] = true;
            }
        }
        if (isMatch) {
            nodes.push_back(node);
        }
    }
    if (const auto unused = std::ranges::find(isUsed, false); unused != isUsed.end()) {
        throw Failure(ExitCode::failed, "no path matches " +
                                            patterns[static_cast<std::size_t>(unused - isUsed.begin())] +
                                            "; * stands for any text, also for dots");
    }
    return nodes;
}

/// A name that no setting of the tree has is a mistake.
void refuseUnknownValidator(const Session& session, const std::string& validator)
{
    std::set<std::string> names;
    for (const Node* node : session.tree().nodes()) {
        std::ranges::move(checkNames(*node), std::inserter(names, names.end()));
    }
    if (std::ranges::none_of(names, [&](const auto& name) { return matches(validator, name); })) {
        throw Failure(ExitCode::failed, "no setting has a validator " + validator + "; there are " +
                                            boost::algorithm::join(names, ", "));
    }
}

bool isChecked(const Node& node, const std::string& validator)
{
    return node.kind() == NodeKind::setting &&
           std::ranges::any_of(checkNames(node),
                               [&](const std::string& name) { return matches(validator, name); });
}

bool isModified(core::Layers& layers, const Node& node)
{
    if (node.kind() != NodeKind::setting || !layers.hasOverride(node)) {
        return false;
    }
    const core::LayerValue held = layers.effective(node);
    return held.layer != core::Layer::factory && !(held.value == node.properties().factoryValue);
}

bool isChosen(LazySession& lazy, const ListOptions& options, const Node& node)
{
    return (options.kind.empty() || kindWord(node.kind()) == options.kind) &&
           (options.validator.empty() || isChecked(node, options.validator)) &&
           (!options.onlyHidden || node.isHidden()) &&
           (!options.onlyReadOnly || node.properties().readOnly.value()) &&
           (!options.onlyModified || isModified(lazy.layers(), node));
}

/// Paths; of modified settings also value and origin.
void writeText(LazySession& lazy, const std::vector<const Node*>& nodes, bool withValues, Output& out)
{
    Table table;
    for (const Node* node : nodes) {
        Table::Row row{node->fullName()};
        if (withValues) {
            const core::LayerValue held = lazy.layers().effective(*node);
            row.emplace_back(core::formatValueOnOneLine(held.value, valueWidth), Style::value);
            row.emplace_back(std::string(core::layerName(held.layer)), Style::note);
        }
        table.add(std::move(row));
    }
    table.write(out);
}

void writeDocument(LazySession& lazy, const std::vector<const Node*>& nodes, bool withValues, Output& out)
{
    boost::json::array list;
    for (const Node* node : nodes) {
        boost::json::object entry{{"path", node->fullName()}, {"node", kindWord(node->kind())}};
        if (withValues) {
            const core::LayerValue held = lazy.layers().effective(*node);
            entry.emplace("value", valueJson(held.value));
            entry.emplace("layer", core::layerName(held.layer));
        }
        list.push_back(std::move(entry));
    }
    writeJson({{"nodes", std::move(list)}}, out);
}

ExitCode list(LazySession& lazy, const ListOptions& options, Output& out)
{
    const Session& session = lazy.get();
    if (!options.validator.empty()) {
        refuseUnknownValidator(session, options.validator);
    }
    auto nodes = nodesOf(session, options.patterns);
    std::erase_if(nodes, [&](const Node* node) { return !isChosen(lazy, options, *node); });
    (out.isJson() ? writeDocument : writeText)(lazy, nodes, options.onlyModified, out);
    return ExitCode::done;
}

}  // namespace

Action addList(CLI::App& verb)
{
    describe(verb, "Paths that pass all filters, one a line, in the order of the tree",
             "Examples:\n  vxsettings list '*.suggestions.*'\n"
             "  vxsettings list --validator range --hidden\n  vxsettings list --modified");
    auto options = std::make_shared<ListOptions>();
    addOperand(verb, "PATTERN", options->patterns, Need::optional,
               "Globs over full paths, with or without the root, such as '*.suggestions.*'");
    addChoice(verb, "--kind", options->kind, {"group", "setting", "alias"}, "Only nodes of this kind");
    addOption(
        verb, "--validator", options->validator, "VALIDATOR",
        "Only settings checked by this function or rule, which may be a glob; \"none\" for settings without");
    addFlag(verb, "--hidden", options->onlyHidden, "Only what is hidden, by itself or with its group");
    addFlag(verb, "--read-only", options->onlyReadOnly, "Only what cannot be changed");
    addFlag(verb, "--modified", options->onlyModified,
            "Only settings that differ from the factory, with value and origin");
    return [options](LazySession& session, Output& out) { return list(session, *options, out); };
}

}  // namespace vx::tool
