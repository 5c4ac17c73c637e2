#pragma once

#include "host/session.hpp"
#include "render/output.hpp"

namespace vx::tool {

/// Writes a self-contained HTML page: a searchable table of all settings with values, constraints and
/// history. If settings files were given on the command line, it also shows the values in them.
void exportPage(LazySession& lazy, Output& out);

}  // namespace vx::tool
