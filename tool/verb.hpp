#pragma once

#include <functional>

#include "failure.hpp"
#include "output.hpp"
#include "session.hpp"

namespace CLI {
class App;
}

namespace vx::tool {

/// What the person asked for by a verb, ready to be done.
using Action = std::function<ExitCode(LazySession& session, Output& out)>;

// Each states what its verb takes; the action reads what was given when it runs.
Action addSummary(CLI::App& verb);
Action addTree(CLI::App& verb);
Action addList(CLI::App& verb);
Action addSearch(CLI::App& verb);
Action addDescribe(CLI::App& verb);
Action addGet(CLI::App& verb);
Action addSet(CLI::App& verb);
Action addReset(CLI::App& verb);
Action addCheck(CLI::App& verb);
Action addMigrate(CLI::App& verb);
Action addChanges(CLI::App& verb);
Action addExport(CLI::App& verb);
Action addDiff(CLI::App& verb);
Action addHistory(CLI::App& verb);
Action addLint(CLI::App& verb);
Action addDoctor(CLI::App& verb);
Action addCompletion(CLI::App& verb);
Action addComplete(CLI::App& verb);
Action addManual(CLI::App& verb);

}  // namespace vx::tool
