#include <boost/json/array.hpp>

#include <review/tree_lint.hpp>
#include <utility>

#include "cli/arguments.hpp"
#include "cli/command.hpp"
#include "render/json_text.hpp"

namespace vx::tool {

namespace {

void writeDocument(const std::vector<LintDiagnostic>& diagnostics, Output& out)
{
    boost::json::array list;
    for (const auto& [file, path, message] : diagnostics) {
        list.push_back(boost::json::object{{"file", file}, {"path", path}, {"message", message}});
    }
    writeJson({{"faults", std::move(list)}}, out);
}

void writeText(const std::vector<LintDiagnostic>& diagnostics, Output& out)
{
    for (const auto& [file, path, message] : diagnostics) {
        out << file << ": " << out.styled(Style::heading, path) << ": " << message << '\n';
    }
}

ExitCode lint(const Session& session, Output& out)
{
    const auto releases = session.releaseChanges();
    const auto diagnostics = lintTree(session.tree(), releases);
    (out.isJson() ? writeDocument : writeText)(diagnostics, out);
    return diagnostics.empty() ? ExitCode::done : ExitCode::failed;
}

}  // namespace

Action addLint(CLI::App& command)
{
    setHelp(command, "Check the definition of the tree; report each error with the file to edit",
            "Prints nothing and exits with 0 if there are no errors.");
    return [](LazySession& session, Output& out) { return lint(session.get(), out); };
}

}  // namespace vx::tool
