#pragma once

#include <string>
#include <vector>

namespace tests {

struct ToolRun
{
    int exitCode;  ///< minus the signal's number where a signal ended it
    std::string output;
    std::string errors;
};

/// Where the tool's standard output goes.
enum class OutputTo
{
    capture,
    fullDevice,
    closedPipe,
    nowhere  ///< the descriptor is closed
};

/// Runs vxsettings with these arguments. `environment` holds NAME=VALUE entries that are added to the test's
/// own.
ToolRun runTool(const std::vector<std::string>& arguments, const std::vector<std::string>& environment = {},
                OutputTo outputTo = OutputTo::capture);

}  // namespace tests
