#include <CLI/CLI.hpp>

#include "table.hpp"
#include "verb.hpp"

namespace vx::tool {

namespace {

using settings::core::ReleaseChangeSet;

void write(const ReleaseChangeSet& set, Output& out)
{
    const std::size_t count = set.changes.size();
    out << out.painted(Style::heading, set.release)
        << out.painted(Style::note, count == 1 ? "  1 change" : "  " + std::to_string(count) + " changes")
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

}  // namespace

Verb addChanges(CLI::App& app)
{
    CLI::App* parser =
        app.add_subcommand("changes", "Settings that releases moved or removed, oldest release first");
    return {parser, [](LazySession& session, Output& out) {
                for (const auto& [index, set] : session.get().releaseChanges()) {
                    write(set, out);
                }
                return ExitCode::done;
            }};
}

}  // namespace vx::tool
