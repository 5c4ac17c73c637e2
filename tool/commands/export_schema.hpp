#pragma once

#include "host/session.hpp"
#include "render/output.hpp"

namespace vx::tool {

/// Writes the JSON Schema (2020-12) of settings files of this tree, with one setting per line. It states the
/// constraints that the check command applies; those that JSON Schema cannot express are in the descriptions,
/// and so are the locks on settings.
void exportSchema(const Session& session, core::Layers& layers, Output& out);

}  // namespace vx::tool
