#pragma once

#include <boost/json/object.hpp>

#include "host/session.hpp"
#include "render/output.hpp"

namespace vx::tool {

/// Returns tree, release changes and path list as one JSON document. The names and the order of its members
/// are stable.
[[nodiscard]] boost::json::object treeJson(const Session& session);

/// Writes that document with one node per line.
void exportJson(const Session& session, Output& out);

}  // namespace vx::tool
