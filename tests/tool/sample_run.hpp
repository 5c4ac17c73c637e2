#pragma once

#include <tests/tool/process.hpp>

namespace tests {

/// As runTool, over the tree and the release changes of SampleSettings.
inline ToolRun runOnSample(std::vector<std::string> arguments,
                           const std::vector<std::string>& environment = {})
{
    arguments.insert(arguments.begin(), {"--bundle", VX_SAMPLE_BUNDLE});
    return runTool(arguments, environment);
}

}  // namespace tests
