#include <review/tree_json.hpp>

#include <boost/json/array.hpp>

#include <utility>

#include "cli/arguments.hpp"
#include "cli/command.hpp"
#include "render/json_text.hpp"
#include "render/table.hpp"

namespace vx::tool {

namespace {

using settings::core::ReleaseChangeSet;
using settings::core::ReleaseChangeTable;

void writeDocument(const ReleaseChangeTable& table, Output& out)
{
    boost::json::array releases;
    for (const auto& [index, set] : table) {
        releases.push_back(review::releaseJson(index, set));
    }
    writeJson({{"releases", std::move(releases)}}, out);
}

void writeText(const ReleaseChangeSet& set, Output& out)
{
    const std::size_t count = set.changes.size();
    out << out.styled(Style::heading, set.release)
        << out.styled(Style::note, count == 1 ? "  1 change" : "  " + std::to_string(count) + " changes")
        << (set.crossesRootGroups ? ", across root groups" : "") << '\n';
    Table table;
    for (const auto& change : set.changes) {
        const std::string& from = change.from().front();
        if (change.to().empty()) {
            table.add({change.operation(), from});
        } else {
            table.add({change.operation(), from, {"-> " + change.to().front()}});
        }
    }
    table.write(out, "  ");
}

ExitCode changes(const ReleaseChangeTable& table, Output& out)
{
    if (out.isJson()) {
        writeDocument(table, out);
        return ExitCode::done;
    }
    for (const auto& [index, set] : table) {
        writeText(set, out);
    }
    return ExitCode::done;
}

}  // namespace

Action addChanges(CLI::App& command)
{
    setHelp(command, "List the settings that each release moved or removed, oldest release first");
    return [](LazySession& session, Output& out) { return changes(session.get().releaseChanges(), out); };
}

}  // namespace vx::tool
