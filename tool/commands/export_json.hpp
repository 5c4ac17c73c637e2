#pragma once

#include <boost/json/object.hpp>

#include "output.hpp"
#include "session.hpp"

namespace vx::tool {

/// The tree, the release table and the path list as one JSON document. The names and the order of its keys
/// are kept stable.
[[nodiscard]] boost::json::object treeJson(const Session& session);

/// Writes that document, a node a line; numbers read back as they were.
void exportJson(const Session& session, Output& out);

}  // namespace vx::tool
