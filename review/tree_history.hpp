#pragma once

#include <set>
#include <string>
#include <vector>

#include "tree_document.hpp"

namespace vx::review {

/// Paths of the settings whose default may differ from the last release.
using ChangedDefaults = std::set<std::string, std::less<>>;

/// Reads a file with one path per line; empty lines and everything after a "#" are ignored. Throws
/// std::runtime_error.
[[nodiscard]] ChangedDefaults readChangedDefaults(const std::string& file);

/// Compares the tree with that of the last release and returns one line per incompatibility, with the path or
/// release change and the file to edit:
/// - a setting of the baseline is missing, and no later release change moves or removes it;
/// - a release change moves a setting to a path that does not exist and that no later change moves on;
/// - a release change after the baseline names a path that never existed;
/// - the changes of a published release differ from those in the baseline;
/// - a default differs without being listed, or is listed without differing.
[[nodiscard]] std::vector<std::string> checkHistory(const TreeDocument& baseline, const TreeDocument& live,
                                                    const ChangedDefaults& changedDefaults);

}  // namespace vx::review
