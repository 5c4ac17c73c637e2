#pragma once

#include <gmock/gmock.h>

#include <string>
#include <sys/types.h>
#include <vector>

namespace tests {

struct ToolRun
{
    int exitCode;  ///< minus the signal's number where a signal ended it
    std::string output;
    std::string errors;
};

/// Runs vxsettings with these arguments. `environment` holds NAME=VALUE entries that are added to the test's
/// own; `tool` is another file to run.
ToolRun runTool(const std::vector<std::string>& arguments, const std::vector<std::string>& environment = {},
                const std::string& tool = VX_TOOL_FILE);

/// Runs vxsettings on a terminal on which `typed` is typed once it shows the prompt, and returns all that the
/// terminal shows as output. Expects that it shows what is typed afterwards.
ToolRun runToolOnTerminal(const std::vector<std::string>& arguments,
                          const std::vector<std::string>& environment, const std::string& typed,
                          const std::string& prompt = "");

/// vxsettings while it runs, and the pipes into which it writes; a `watch` ends when its reader is gone.
struct RunningTool
{
    pid_t process;
    int output;
    int errors;
};

RunningTool startTool(const std::vector<std::string>& arguments);

/// Waits for the next line of a pipe; empty when there is none.
std::string readLine(int descriptor);

/// Sends a signal, unless it is 0, waits for the end, and returns the exit code as ToolRun has it.
int endTool(const RunningTool& tool, int signal);

/// The run ends with this code, writes no output, and one line of errors.
MATCHER_P2(FailsInOneLine, exitCode, message, "")
{
    *result_listener << "ended with " << arg.exitCode << ", wrote " << arg.output << " and " << arg.errors;
    return arg.exitCode == exitCode && arg.output.empty() && arg.errors.find('\n') == arg.errors.size() - 1 &&
           testing::ExplainMatchResult(testing::StartsWith("vxsettings: "), arg.errors, result_listener) &&
           testing::ExplainMatchResult(message, arg.errors, result_listener);
}

}  // namespace tests
