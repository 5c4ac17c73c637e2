#pragma once

#include <cstdlib>
#include <string_view>

namespace tests {

/// Whether the tests shall run in their long form: VX_SOAK=full in the environment.
inline bool runsInFull()
{
    const char* soak = std::getenv("VX_SOAK");
    return soak != nullptr && std::string_view(soak) == "full";
}

}  // namespace tests
