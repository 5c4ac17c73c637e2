#pragma once

#include <settings_core/diagnostic.hpp>

#include <vector>

#include "baselines.hpp"
#include "changed_settings.hpp"

namespace vx::review {

/// Checks that the tree continues the published releases. Returns a diagnostic, with the file to edit, for
/// - each file or checksum of the baselines that is wrong, which is then all that is reported;
/// - each step from one baseline to the next, and from the last to the tree, that loses a setting or rewrites
///   changes that were published;
/// - each wrong release change since the last baseline, and a release that is out of turn;
/// - each difference from the last baseline that the list of intended changes does not have, and vice versa.
[[nodiscard]] std::vector<core::Diagnostic> checkHistory(const Baselines& baselines, const ReleaseTree& live,
                                                         const ChangedSettings& changedSettings);

}  // namespace vx::review
