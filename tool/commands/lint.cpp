#include <review/tree_lint.hpp>

#include <boost/json/array.hpp>

#include <utility>

#include "cli/arguments.hpp"
#include "cli/command.hpp"
#include "render/json_text.hpp"

namespace vx::tool {

namespace {

void writeDocument(const std::vector<core::Diagnostic>& diagnostics, Output& out)
{
    boost::json::array list;
    for (const auto& [path, message, position] : diagnostics) {
        list.push_back(boost::json::object{{"file", position.file}, {"path", path}, {"message", message}});
    }
    writeJson({{"faults", std::move(list)}}, out);
}

void writeText(const std::vector<core::Diagnostic>& diagnostics, Output& out)
{
    for (const auto& [path, message, position] : diagnostics) {
        out << position.file << ": " << out.styled(Style::heading, path) << ": " << message << '\n';
    }
}

ExitCode lint(const Session& session, Output& out)
{
    const auto diagnostics = review::lintTree(session.tree(), session.releaseChanges());
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
