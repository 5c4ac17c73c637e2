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

struct Verb
{
    CLI::App* parser;
    Action action;
};

// Each adds its verb to the command line; the action reads the verb's options when it runs.
Verb addSummary(CLI::App& app);
Verb addTree(CLI::App& app);
Verb addList(CLI::App& app);
Verb addSearch(CLI::App& app);
Verb addDescribe(CLI::App& app);
Verb addGet(CLI::App& app);
Verb addSet(CLI::App& app);
Verb addReset(CLI::App& app);
Verb addCheck(CLI::App& app);
Verb addMigrate(CLI::App& app);
Verb addChanges(CLI::App& app);
Verb addExport(CLI::App& app);
Verb addDiff(CLI::App& app);
Verb addHistory(CLI::App& app);
Verb addLint(CLI::App& app);
Verb addDoctor(CLI::App& app);
Verb addCompletion(CLI::App& app);
Verb addComplete(CLI::App& app);
Verb addManual(CLI::App& app);

}  // namespace vx::tool
