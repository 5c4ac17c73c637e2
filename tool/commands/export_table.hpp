#pragma once

#include "host/session.hpp"
#include "render/output.hpp"

namespace vx::tool {

/// Writes one row per setting or alias, for spreadsheets and reviews: path, class, shape, value, validator,
/// rules and visibility. CSV is that of RFC 4180 with a header line.
void exportCsv(const Session& session, Output& out);
void exportMarkdown(const Session& session, Output& out);

}  // namespace vx::tool
