#pragma once

#include "output.hpp"
#include "session.hpp"

namespace vx::tool {

/// Writes one row per setting or alias: path, class, shape, value, validator, rules and visibility, for
/// people who review the tree. CSV is that of RFC 4180, with the columns' names in its first line.
void exportCsv(const Session& session, Output& out);
void exportMarkdown(const Session& session, Output& out);

}  // namespace vx::tool
