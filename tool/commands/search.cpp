#include <review/tree_json.hpp>
#include <settings_core/tree/search.hpp>
#include <settings_core/values/value_format.hpp>

#include <boost/algorithm/string/join.hpp>
#include <boost/json/array.hpp>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "cli/arguments.hpp"
#include "cli/command.hpp"
#include "render/json_text.hpp"
#include "render/node_labels.hpp"
#include "render/table.hpp"

namespace vx::tool {

namespace {

constexpr std::size_t valueWidth = 60;

void writeDocument(const std::vector<core::Match>& matches, Output& out)
{
    boost::json::array list;
    for (const auto& [node, rank] : matches) {
        list.push_back(boost::json::object{{"path", node->fullName()},
                                           {"node", kindLabel(node->kind())},
                                           {"rank", core::rankName(rank)},
                                           {"value", review::valueJson(node->properties().factoryValue)}});
    }
    writeJson({{"matches", std::move(list)}}, out);
}

void writeText(const std::vector<core::Match>& matches, Output& out)
{
    Table table;
    for (const auto& [node, rank] : matches) {
        table.add({{std::string(core::rankName(rank)), Style::note},
                   node->fullName(),
                   {core::formatValueOnOneLine(node->properties().factoryValue, valueWidth), Style::value}});
    }
    table.write(out);
}

ExitCode search(const Session& session, const std::vector<std::string>& words, Output& out)
{
    const auto matches = core::search(session.tree(), words);
    if (matches.empty()) {
        throw CommandError(ExitCode::failed, "nothing matches " + boost::algorithm::join(words, " ") +
                                                 "; all words have to match, so try fewer");
    }
    (out.isJson() ? writeDocument : writeText)(matches, out);
    return ExitCode::done;
}

}  // namespace

Action addSearch(CLI::App& command)
{
    setHelp(command, "Search settings and groups by words in their paths, then in their values",
            "Example:\n  vxsettings search color comment");
    auto words = std::make_shared<std::vector<std::string>>();
    addPositional(command, "WORDS", *words, Need::required,
                  "Words that all have to match, in any order and letter case");
    return [words](LazySession& session, Output& out) { return search(session.get(), *words, out); };
}

}  // namespace vx::tool
