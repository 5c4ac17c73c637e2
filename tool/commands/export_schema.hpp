#pragma once

#include "output.hpp"
#include "session.hpp"

namespace vx::tool {

/// Writes the JSON Schema (2020-12) of settings files of this tree, a setting a line: it accepts what the
/// check of settings files does, for all rules that JSON Schema can state, and says the others in words.
void exportSchema(const Session& session, Output& out);

}  // namespace vx::tool
