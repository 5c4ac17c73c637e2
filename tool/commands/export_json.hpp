#pragma once

#include "output.hpp"
#include "session.hpp"

namespace vx::tool {

/// Writes the tree, the release table and the path list as one JSON document, a node a line. The names and
/// the order of its keys are kept stable; numbers read back as they were.
void exportJson(const Session& session, Output& out);

}  // namespace vx::tool
