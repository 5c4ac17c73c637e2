#include <review/tree_json.hpp>
#include <review/words.hpp>
#include <settings_core/releases/release_history.hpp>
#include <settings_core/tree/path_lookup.hpp>
#include <settings_core/tree/suggestions.hpp>
#include <settings_core/values/value_format.hpp>

#include <boost/algorithm/string/join.hpp>
#include <boost/json/array.hpp>

#include <algorithm>
#include <cstddef>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "cli/arguments.hpp"
#include "cli/command.hpp"
#include "cli/diagnostics.hpp"
#include "render/effective_value.hpp"
#include "render/json_text.hpp"
#include "render/line_layout.hpp"
#include "render/node_labels.hpp"
#include "search/search_entries.hpp"

namespace vx::tool {

namespace {

using core::Node;

constexpr std::size_t anyWidth = std::numeric_limits<std::size_t>::max();
constexpr std::size_t valueWidth = 60;       // in characters
constexpr std::size_t leastValueWidth = 16;  // in columns

struct SearchOptions
{
    std::vector<std::string> words;
    bool showsHidden = false;
    bool onlyHidden = false;
    bool showsFactory = false;
};

/// A node that was found.
struct Result
{
    const Node* node;
    MatchRank rank;
    std::string reason;  ///< what the node is, or what it was called
};

struct Results
{
    std::vector<Result> shown;  ///< the best first
    std::size_t hiddenLeftOut = 0;
};

// Search

std::string reasonOf(const Node& node, const SearchEntry& entry, MatchRank rank, Catalog& catalog)
{
    if (rank == MatchRank::oldPath) {
        const std::vector<std::string> paths(entry.oldPaths.begin(), entry.oldPaths.end());
        return "Formerly " + boost::algorithm::join(paths, ", ") + ".";
    }
    return entry.sentence.empty() ? catalog.titleOf(node) : std::string(entry.sentence);
}

/// Returns the entries that match; if there are none, those with similar paths.
std::vector<SearchMatch> findMatches(const core::SettingsTree& tree, const std::vector<SearchEntry>& entries,
                                     const Catalog& catalog, const std::string& query)
{
    std::vector<SearchMatch> matches = rankEntries(entries, catalog.synonyms(), query);
    if (matches.empty()) {
        for (const std::string_view path : core::suggestPaths(query, tree)) {
            if (const auto entry = std::ranges::find(entries, path, &SearchEntry::path);
                entry != entries.end()) {
                matches.push_back({static_cast<std::size_t>(entry - entries.begin()), MatchRank::similar});
            }
        }
    }
    return matches;
}

/// Removes the hidden nodes from the results unless nothing else matches, and returns their number.
std::size_t leaveOutHidden(std::vector<Result>& results)
{
    const auto isHidden = [](const Result& result) { return result.node->isHidden(); };
    if (std::ranges::all_of(results, isHidden)) {
        printHint("everything that matches is hidden");
        return 0;
    }
    return std::erase_if(results, isHidden);
}

/// Gives a hint if the words are the path of a setting that a release removed, which has no entry.
void hintAtRemoval(const Session& session, const std::vector<std::string>& words)
{
    const std::string path = core::fullPath(session.tree(), words.front());
    if (words.size() > 1 || session.tree().find(path) != nullptr) {
        return;
    }
    const core::ReleaseHistory history(session.releaseChanges());
    if (const auto steps = history.changesFrom(path); !steps.empty() && steps.back().to.empty()) {
        printHint("no such path: " + words.front() + "; " + core::describeSteps(steps));
    }
}

Results find(const Session& session, const SearchOptions& options)
{
    const std::string query = boost::algorithm::join(options.words, " ");
    if (review::splitWords(query).empty()) {
        throw CommandError(ExitCode::usage, "WORDS: needs letters or digits; see vxsettings search --help");
    }
    hintAtRemoval(session, options.words);
    const core::SettingsTree& tree = session.tree();
    Catalog catalog(tree);
    std::vector<SearchEntry> entries = searchEntries(session, catalog);
    if (options.onlyHidden) {
        std::erase_if(entries,
                      [&tree](const SearchEntry& entry) { return !tree.find(entry.path)->isHidden(); });
        for (SearchEntry& entry : entries) {
            entry.isSecondary = tree.find(entry.path)->kind() == core::NodeKind::group;
        }
    }
    Results results;
    for (const auto& [index, rank] : findMatches(tree, entries, catalog, query)) {
        const Node* node = tree.find(entries[index].path);
        results.shown.push_back({node, rank, reasonOf(*node, entries[index], rank, catalog)});
    }
    if (results.shown.empty()) {
        throw CommandError(ExitCode::failed,
                           std::string(options.onlyHidden ? "nothing hidden" : "nothing") + " matches " +
                               query + "; try other words, or list all paths with: vxsettings list");
    }
    results.hiddenLeftOut = options.showsHidden || options.onlyHidden ? 0 : leaveOutHidden(results.shown);
    return results;
}

// Output

void writeDocument(const Results& results, core::Layers& layers, Output& out)
{
    boost::json::array list;
    for (const auto& [node, rank, reason] : results.shown) {
        boost::json::object match{
            {"path", node->fullName()}, {"node", kindLabel(node->kind())}, {"rank", rankName(rank)}};
        if (node->kind() == core::NodeKind::setting) {
            addLayerValue(match, shownEffective(layers, *node));
        }
        list.push_back(std::move(match));
    }
    writeJson({{"matches", std::move(list)}, {"hiddenLeftOut", results.hiddenLeftOut}}, out);
}

void writeText(const Results& results, core::Layers& layers, Output& out)
{
    constexpr std::string_view indent = "    ";
    const std::size_t lineWidth = out.lineWidth().value_or(anyWidth);
    for (const auto& [node, rank, reason] : results.shown) {
        out << out.styled(Style::group, node->fullName());
        if (node->kind() == core::NodeKind::setting) {
            const core::LayerValue value = shownEffective(layers, *node);
            const std::string mark = originMark(value).empty() ? "" : "  " + std::string(originMark(value));
            const std::size_t taken = displayWidth(node->fullName()) + 2 + mark.size();
            const std::size_t room = std::max(lineWidth, taken + leastValueWidth) - taken;
            out << "  "
                << out.styled(Style::value,
                              cutToWidth(valueOnOneLine(value, out.valueWidth(valueWidth)), room))
                << out.styled(Style::note, mark);
        }
        out << '\n';
        for (const std::string& line : breakLine(reason, lineWidth - std::min(lineWidth, indent.size()))) {
            out << indent << line << '\n';
        }
    }
    hintAtHidden(results.hiddenLeftOut, out);
}

ExitCode search(LazySession& lazy, const SearchOptions& options, Output& out)
{
    const Session& session = lazy.get();
    const Results results = find(session, options);
    core::Layers& layers = lazy.layers(options.showsFactory);
    (out.isJson() ? writeDocument : writeText)(results, layers, out);
    hintAtFileProblems(session, layers, out);
    return ExitCode::done;
}

}  // namespace

Action addSearch(CLI::App& command)
{
    setHelp(command, "Search settings and groups by words, as people call them",
            "Words are found in names, titles, descriptions, keywords, values and old paths, also in other "
            "forms, as synonyms, and with a typing error. The best matches come first.\n"
            "Hidden groups and settings are left out, unless nothing else matches.\n"
            "Examples:\n  vxsettings search bigger font\n  vxsettings search stop asking when I quit");
    auto options = std::make_shared<SearchOptions>();
    addPositional(command, "WORDS", options->words, Need::required, "Words in any order and letter case");
    addFlag(command, "--hidden", options->showsHidden, "Also show hidden groups and settings");
    addFlag(command, "--only-hidden", options->onlyHidden, "Only show hidden groups and settings");
    addFactoryFlag(command, options->showsFactory);
    return [options](LazySession& session, Output& out) { return search(session, *options, out); };
}

}  // namespace vx::tool
