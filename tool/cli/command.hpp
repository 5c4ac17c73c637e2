#pragma once

#include <functional>

#include "cli/command_error.hpp"
#include "host/session.hpp"
#include "render/output.hpp"

namespace CLI {
class App;
}

namespace vx::tool {

/// A parsed command, ready to run.
using Action = std::function<ExitCode(LazySession& session, Output& out)>;

// Each function declares the help and the arguments of one command. The action that it returns reads the
// arguments when it runs, so after the command line is parsed.
Action addSummary(CLI::App& command);
Action addTree(CLI::App& command);
Action addList(CLI::App& command);
Action addSearch(CLI::App& command);
Action addDescribe(CLI::App& command);
Action addGet(CLI::App& command);
Action addWatch(CLI::App& command);
Action addSet(CLI::App& command);
Action addReset(CLI::App& command);
Action addImport(CLI::App& command);
Action addEdit(CLI::App& command);
Action addUndo(CLI::App& command);
Action addCheck(CLI::App& command);
Action addMigrate(CLI::App& command);
Action addChanges(CLI::App& command);
Action addExport(CLI::App& command);
Action addDiff(CLI::App& command);
Action addHistory(CLI::App& command);
Action addLint(CLI::App& command);
Action addDoctor(CLI::App& command);
Action addHelp(CLI::App& command);
Action addCompletion(CLI::App& command);
Action addComplete(CLI::App& command);
Action addManual(CLI::App& command);

}  // namespace vx::tool
