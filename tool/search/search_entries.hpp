#pragma once

#include <vector>

#include "catalog/catalog.hpp"
#include "host/session.hpp"
#include "search/ranking.hpp"

namespace vx::tool {

/// Returns an entry for each node of the session's tree, in creation order. Session and catalog must outlive
/// them.
[[nodiscard]] std::vector<SearchEntry> searchEntries(const Session& session, Catalog& catalog);

}  // namespace vx::tool
