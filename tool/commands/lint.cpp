#include <CLI/CLI.hpp>
#include <boost/json/array.hpp>

#include <utility>

#include "json_text.hpp"
#include "tree_lint.hpp"
#include "verb.hpp"

namespace vx::tool {

namespace {

void writeDocument(const std::vector<LintFault>& faults, Output& out)
{
    boost::json::array list;
    for (const auto& [file, path, message] : faults) {
        list.push_back(boost::json::object{{"file", file}, {"path", path}, {"message", message}});
    }
    writeJson({{"faults", std::move(list)}}, out);
}

void writeText(const std::vector<LintFault>& faults, Output& out)
{
    for (const auto& [file, path, message] : faults) {
        out << file << ": " << out.painted(Style::heading, path) << ": " << message << '\n';
    }
}

ExitCode lint(const Session& session, Output& out)
{
    const auto releases = session.releaseChanges();
    const auto faults = lintTree(session.tree(), releases);
    (out.isJson() ? writeDocument : writeText)(faults, out);
    return faults.empty() ? ExitCode::done : ExitCode::failed;
}

}  // namespace

Verb addLint(CLI::App& app)
{
    CLI::App* parser =
        app.add_subcommand("lint", "Mistakes in the description of the tree, each with the file to edit");
    parser->footer("Says nothing and ends with 0 when there are none.");
    return {parser, [](LazySession& session, Output& out) { return lint(session.get(), out); }};
}

}  // namespace vx::tool
