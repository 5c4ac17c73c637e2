#pragma once

#include <set>
#include <string>
#include <vector>

#include "tree_document.hpp"

namespace vx::tool {

/// Settings whose default may differ from the last release.
using ChangedDefaults = std::set<std::string, std::less<>>;

/// Reads a list of paths, one a line; blank lines and what follows a "#" are comment. Raises Failure.
[[nodiscard]] ChangedDefaults readChangedDefaults(const std::string& file);

/// What a release must not do to the settings of the one before it, each fault in one line with the path or
/// record and the file to edit:
/// - a setting of the baseline is gone, and no record of a later release moves or removes it;
/// - a record leads to a setting that does not exist and that no later record carries on;
/// - a record names a setting that never was; the baseline's own records are taken as they are, but they have
///   to stay as they are, too;
/// - a default differs without being listed, or is listed without differing.
[[nodiscard]] std::vector<std::string> findHistoryFaults(const TreeDocument& baseline,
                                                         const TreeDocument& live,
                                                         const ChangedDefaults& changedDefaults);

}  // namespace vx::tool
