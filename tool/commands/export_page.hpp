#pragma once

#include "host/session.hpp"
#include "render/output.hpp"

namespace vx::tool {

/// Writes a self-contained HTML page: a searchable table of all settings with effective values, constraints
/// and history.
void exportPage(const Session& session, core::Layers& layers, Output& out);

}  // namespace vx::tool
