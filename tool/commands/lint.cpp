#include <review/tree_lint.hpp>

#include "cli/arguments.hpp"
#include "cli/command.hpp"
#include "cli/diagnostics.hpp"

namespace vx::tool {

Action addLint(CLI::App& command)
{
    setHelp(command, "Check the definition of the tree; report each error with the file to edit",
            "Prints nothing and exits with 0 if there are no errors.");
    return [](LazySession& session, Output& out) {
        return reportDefinitionErrors(review::lintTree(session.get().tree(), session.get().releaseChanges()),
                                      out);
    };
}

}  // namespace vx::tool
