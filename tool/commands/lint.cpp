#include <boost/json/array.hpp>

#include <utility>

#include "arguments.hpp"
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

Action addLint(CLI::App& verb)
{
    describe(verb, "Mistakes in the description of the tree, each with the file to edit",
             "Says nothing and ends with 0 when there are none.");
    return [](LazySession& session, Output& out) { return lint(session.get(), out); };
}

}  // namespace vx::tool
