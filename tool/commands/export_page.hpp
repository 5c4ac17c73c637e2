#pragma once

#include "output.hpp"
#include "session.hpp"

namespace vx::tool {

/// Writes a page for browsers, complete in itself: a table of all settings with values, rules and history,
/// which a script makes searchable. Where settings files were named, their values show beside the factory's.
void exportPage(LazySession& lazy, Output& out);

}  // namespace vx::tool
