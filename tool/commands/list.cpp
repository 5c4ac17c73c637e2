#include <settings_core/values/value_format.hpp>

#include <boost/algorithm/string/join.hpp>
#include <boost/json/array.hpp>

#include <algorithm>
#include <cstddef>
#include <fnmatch.h>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "cli/arguments.hpp"
#include "cli/command.hpp"
#include "cli/diagnostics.hpp"
#include "render/effective_value.hpp"
#include "render/json_text.hpp"
#include "render/node_labels.hpp"
#include "render/table.hpp"

namespace vx::tool {

namespace {

using core::Node;
using core::NodeKind;

struct ListOptions
{
    std::vector<std::string> patterns;
    std::string kind;
    std::string validator;
    bool showsHidden = false;
    bool onlyHidden = false;
    bool onlyReadOnly = false;
    bool onlyModified = false;
    bool onlySet = false;
    bool onlyLocked = false;
    bool withValues = false;
    bool showsFactory = false;
    std::string origin;
};

bool showsValues(const ListOptions& options)
{
    return options.withValues || options.onlyModified || options.onlySet || options.onlyLocked;
}

/// Whether a glob matches a string, or its end from `offset`.
bool matches(const std::string& pattern, const std::string& string, std::size_t offset = 0)
{
    return ::fnmatch(pattern.c_str(), string.c_str() + offset, 0) == 0;
}

/// Returns the nodes whose path, with or without the root, matches any of the patterns; all nodes if there is
/// no pattern. Throws CommandError if a pattern matches no path.
std::vector<const Node*> matchingNodes(const Session& session, const std::vector<std::string>& patterns)
{
    const auto& all = session.tree().nodes();
    if (patterns.empty()) {
        return {all.begin(), all.end()};
    }
    const std::size_t prefixLength = session.tree().root()->fullName().size() + 1;  // with the dot
    std::vector<bool> isMatched(patterns.size());
    std::vector<const Node*> nodes;
    for (const Node* node : all) {
        const std::string path = node->getFullName();
        bool isMatch = false;
        for (std::size_t index = 0; index < patterns.size(); ++index) {
            if (matches(patterns[index], path) || matches(patterns[index], path, prefixLength)) {
                isMatch = isMatched[index] = true;
            }
        }
        if (isMatch) {
            nodes.push_back(node);
        }
    }
    if (const auto unmatched = std::ranges::find(isMatched, false); unmatched != isMatched.end()) {
        throw CommandError(ExitCode::failed,
                           "no path matches " +
                               patterns[static_cast<std::size_t>(unmatched - isMatched.begin())] +
                               "; * matches any characters, including dots");
    }
    return nodes;
}

/// Whether one of the patterns is the node's path, with or without the root.
bool isNamed(const Node& node, const std::vector<std::string>& patterns)
{
    const std::string_view path = node.fullName();
    return std::ranges::any_of(patterns, [path](const std::string& pattern) {
        return pattern == path || pattern == path.substr(path.find('.') + 1);
    });
}

/// Throws CommandError if the pattern matches the name of no constraint of any setting.
void requireKnownConstraint(const Session& session, const std::string& pattern)
{
    const std::set<std::string> names = constraintNames(session.tree());
    if (std::ranges::none_of(names, [&](const auto& name) { return matches(pattern, name); })) {
        throw CommandError(ExitCode::failed, "no validator or constraint matches " + pattern +
                                                 "; available: " + boost::algorithm::join(names, ", "));
    }
}

bool isConstrainedBy(const Node& node, const std::string& pattern)
{
    return node.kind() == NodeKind::setting &&
           std::ranges::any_of(constraintNames(node),
                               [&](const std::string& name) { return matches(pattern, name); });
}

/// Returns what a settings file states, valid or not: the last one, or that of the origin asked for.
std::optional<core::LayerValue> statedValue(core::Layers& layers, const Node& node, const std::string& origin)
{
    std::optional<core::LayerValue> stated;
    if (node.kind() != NodeKind::setting || !layers.hasOverride(node)) {
        return stated;
    }
    for (core::LayerValue& value : layers.valuesOf(node)) {
        if (value.origin != core::Origin::factory &&
            (origin.empty() || core::originName(value.origin) == origin)) {
            stated = core::shownValue(node, std::move(value));
        }
    }
    return stated;
}

bool passesFilters(core::Layers& layers, const ListOptions& options, const Node& node)
{
    return (options.kind.empty() || kindLabel(node.kind()) == options.kind) &&
           (options.validator.empty() || isConstrainedBy(node, options.validator)) &&
           (!options.onlyHidden || node.isHidden()) &&
           (!options.onlyReadOnly || node.properties().readOnly.value()) &&
           (!options.onlyModified || (node.kind() == NodeKind::setting && modifiedValue(layers, node))) &&
           (!options.onlySet || statedValue(layers, node, options.origin)) &&
           (!options.onlyLocked || layers.lockOf(node)) &&
           (!showsValues(options) || node.kind() == NodeKind::setting);
}

/// Returns the value to list: what a file states with --set, else the effective value.
core::LayerValue listedValue(core::Layers& layers, const Node& setting, const ListOptions& options)
{
    return options.onlySet ? *statedValue(layers, setting, options.origin) : shownEffective(layers, setting);
}

struct Listing
{
    std::vector<const Node*> nodes;
    std::size_t hiddenLeftOut;
};

Listing makeListing(const Session& session, core::Layers& layers, const ListOptions& options)
{
    auto nodes = matchingNodes(session, options.patterns);
    std::erase_if(nodes, [&](const Node* node) { return !passesFilters(layers, options, *node); });
    const bool withHidden = options.showsHidden || options.onlyHidden;
    const std::size_t leftOut = std::erase_if(nodes, [&](const Node* node) {
        return !withHidden && node->isHidden() && !isNamed(*node, options.patterns);
    });
    return {std::move(nodes), leftOut};
}

/// Writes one path per line, optionally with value, origin and the file that locks the setting.
void writeText(core::Layers& layers, const Listing& listing, const ListOptions& options, Output& out)
{
    Table table;
    for (const Node* node : listing.nodes) {
        Table::Row row{node->fullName()};
        if (showsValues(options)) {
            const core::LayerValue value = listedValue(layers, *node, options);
            addValueCells(row, value, out);
            row.emplace_back(options.onlySet && !value.isValid() ? "ignored" : "", Style::note);
        }
        if (options.onlyLocked) {
            row.emplace_back("locked by " + layers.lockOf(*node)->file.string(), Style::note);
        }
        table.add(std::move(row));
    }
    table.write(out);
    hintAtHidden(listing.hiddenLeftOut, out);
}

void writeDocument(core::Layers& layers, const Listing& listing, const ListOptions& options, Output& out)
{
    boost::json::array list;
    for (const Node* node : listing.nodes) {
        boost::json::object entry{{"path", node->fullName()}, {"node", kindLabel(node->kind())}};
        if (showsValues(options)) {
            const core::LayerValue value = listedValue(layers, *node, options);
            addLayerValue(entry, value);
            if (options.onlySet) {
                entry.emplace("isValid", value.isValid());
            }
            addLock(entry, layers.lockOf(*node));
        }
        list.push_back(std::move(entry));
    }
    writeJson({{"nodes", std::move(list)}, {"hiddenLeftOut", listing.hiddenLeftOut}}, out);
}

ExitCode list(LazySession& lazy, const ListOptions& options, Output& out)
{
    if (!options.validator.empty()) {
        requireKnownConstraint(lazy.get(), options.validator);
    }
    if (!options.origin.empty() && !options.onlySet) {
        throw CommandError(ExitCode::usage, "--origin needs --set; see vxsettings list --help");
    }
    const Session& session = lazy.get();
    core::Layers& layers = lazy.layers(options.showsFactory);
    const Listing listing = makeListing(session, layers, options);
    (out.isJson() ? writeDocument : writeText)(layers, listing, options, out);
    if (showsValues(options)) {
        hintAtFileProblems(session, layers, out);
    }
    return ExitCode::done;
}

}  // namespace

Action addList(CLI::App& command)
{
    setHelp(command, "List the paths that pass all filters, one per line, in tree order",
            "Hidden nodes are left out, unless a pattern is the path of one.\n"
            "Examples:\n  vxsettings list '*.suggestions.*'\n"
            "  vxsettings list --validator range --hidden\n  vxsettings list --modified");
    auto options = std::make_shared<ListOptions>();
    addPositional(command, "PATTERN", options->patterns, Need::optional,
                  "Globs for full paths, with or without the root, such as '*.suggestions.*'");
    addChoice(command, "--kind", options->kind, {"group", "setting", "alias"},
              "Only list nodes of this kind");
    addOption(command, "--validator", options->validator, "VALIDATOR",
              "Only list settings with a validator or constraint whose name matches this glob; \"none\" "
              "matches settings without any");
    addFlag(command, "--hidden", options->showsHidden,
            "Also list nodes that are hidden, themselves or with their group");
    addFlag(command, "--only-hidden", options->onlyHidden, "Only list hidden nodes");
    addFlag(command, "--read-only", options->onlyReadOnly, "Only list read-only nodes");
    addFlag(command, "--values", options->withValues, "List settings, with effective value and origin");
    addFlag(command, "--modified", options->onlyModified,
            "Only list settings whose effective value differs from the factory value, with value and origin");
    addFlag(command, "--set", options->onlySet,
            "Only list settings that a settings file states, with the value in that file and its origin");
    addChoice(command, "--origin", options->origin, {"personal", "installation"},
              "With --set, only list what files of this origin state");
    addFlag(
        command, "--locked", options->onlyLocked,
        "Only list settings that the installation locks, with value, origin and the file that locks them");
    addFactoryFlag(command, options->showsFactory);
    return [options](LazySession& session, Output& out) { return list(session, *options, out); };
}

}  // namespace vx::tool
