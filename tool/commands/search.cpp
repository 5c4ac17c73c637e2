#include <review/tree_json.hpp>
#include <settings_core/tree/search.hpp>
#include <settings_core/values/value_format.hpp>

#include <boost/algorithm/string/join.hpp>
#include <boost/json/array.hpp>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
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

struct SearchOptions
{
    std::vector<std::string> words;
    bool showsHidden = false;
    bool onlyHidden = false;
    bool showsFactory = false;
};

void writeDocument(const std::vector<core::Match>& matches, core::Layers& layers, std::size_t hiddenLeftOut,
                   Output& out)
{
    boost::json::array list;
    for (const auto& [node, rank] : matches) {
        boost::json::object match{
            {"path", node->fullName()}, {"node", kindLabel(node->kind())}, {"rank", core::rankName(rank)}};
        if (node->kind() == core::NodeKind::setting) {
            addLayerValue(match, shownEffective(layers, *node));
        }
        list.push_back(std::move(match));
    }
    writeJson({{"matches", std::move(list)}, {"hiddenLeftOut", hiddenLeftOut}}, out);
}

void writeText(const std::vector<core::Match>& matches, core::Layers& layers, std::size_t hiddenLeftOut,
               Output& out)
{
    Table table;
    for (const auto& [node, rank] : matches) {
        Table::Row row{{std::string(core::rankName(rank)), Style::note}, node->fullName()};
        if (node->kind() == core::NodeKind::setting) {
            addValueCells(row, shownEffective(layers, *node));
        }
        table.add(std::move(row));
    }
    table.write(out);
    hintAtHidden(hiddenLeftOut, out);
}

bool isHidden(const core::Match& match)
{
    return match.node->isHidden();
}

/// Removes the hidden nodes from the matches unless nothing else matches, and returns their number.
std::size_t leaveOutHidden(std::vector<core::Match>& matches)
{
    if (std::ranges::all_of(matches, isHidden)) {
        printHint("everything that matches is hidden");
        return 0;
    }
    return std::erase_if(matches, isHidden);
}

ExitCode search(LazySession& lazy, const SearchOptions& options, Output& out)
{
    const Session& session = lazy.get();
    auto matches = core::search(session.tree(), options.words);
    if (options.onlyHidden) {
        std::erase_if(matches, std::not_fn(isHidden));
    }
    if (matches.empty()) {
        throw CommandError(ExitCode::failed, std::string(options.onlyHidden ? "nothing hidden" : "nothing") +
                                                 " matches " + boost::algorithm::join(options.words, " ") +
                                                 "; all words have to match, so try fewer");
    }
    const bool withHidden = options.showsHidden || options.onlyHidden;
    const std::size_t hiddenLeftOut = withHidden ? 0 : leaveOutHidden(matches);
    core::Layers& layers = lazy.layers(options.showsFactory);
    (out.isJson() ? writeDocument : writeText)(matches, layers, hiddenLeftOut, out);
    hintAtFileProblems(session, layers, out);
    return ExitCode::done;
}

}  // namespace

Action addSearch(CLI::App& command)
{
    setHelp(command, "Search settings and groups by words in their paths, then in their values",
            "Hidden groups and settings are left out, unless nothing else matches.\n"
            "Example:\n  vxsettings search color comment");
    auto options = std::make_shared<SearchOptions>();
    addPositional(command, "WORDS", options->words, Need::required,
                  "Words that all have to match, in any order and letter case");
    addFlag(command, "--hidden", options->showsHidden, "Also show hidden groups and settings");
    addFlag(command, "--only-hidden", options->onlyHidden, "Only show hidden groups and settings");
    addFactoryFlag(command, options->showsFactory);
    return [options](LazySession& session, Output& out) { return search(session, *options, out); };
}

}  // namespace vx::tool
