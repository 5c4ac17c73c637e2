#pragma once

#include "host/session.hpp"
#include "render/output.hpp"

namespace vx::tool {

/// Writes one row per setting or alias, for spreadsheets and reviews: path, class, shape, value, validator,
/// rules, visibility and origin of the value. CSV is that of RFC 4180 with a header line.
void exportCsv(const Session& session, core::Layers& layers, Output& out);
void exportMarkdown(const Session& session, core::Layers& layers, Output& out);

}  // namespace vx::tool
