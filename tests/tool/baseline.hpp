#pragma once

#include <string>

namespace tests {

/// The tree of the last release.
inline const std::string baseline = VX_SOURCE_DIR "/docs/baseline/R2026a.json";

}  // namespace tests
