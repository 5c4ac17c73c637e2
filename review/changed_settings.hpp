#pragma once

#include <settings_core/diagnostic.hpp>

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tree_diff.hpp"

namespace vx::review {

/// A line of the list of intended changes: a setting, the kinds of differences, and why they are wanted.
struct ChangedSetting
{
    std::size_t line;  ///< from 1
    std::string path;
    std::vector<std::string> kinds;  ///< labels, as the file has them
    std::string reason;              ///< for the release notes
};

/// The settings that were changed on purpose since the last release.
struct ChangedSettings
{
    std::string file;
    std::vector<ChangedSetting> entries;
};

/// Finds why differences are wanted. Look-ups take no longer in a long list.
class ChangeReasons
{
public:
    /// The list must outlive this object and its results.
    explicit ChangeReasons(const ChangedSettings& changedSettings);

    /// Returns the reason for a difference; an empty string if it is not listed.
    [[nodiscard]] std::string_view of(const Difference& difference) const;

private:
    using PathAndKind = std::pair<std::string_view, std::string_view>;

    std::map<PathAndKind, std::string_view> reasons_;
};

/// Reads a file with lines of the form "path  kind,kind  reason"; empty lines and lines that begin with "#"
/// are ignored. Throws std::runtime_error if the file cannot be read.
[[nodiscard]] ChangedSettings readChangedSettings(const std::string& file);

/// Compares the list with the differences that need a reason. Returns a diagnostic for each difference that
/// is not listed, and for each line without a reason, with an unknown path or kind, or for something that did
/// not change. `live` is the tree with these differences.
[[nodiscard]] std::vector<core::Diagnostic> checkChangedSettings(const ChangedSettings& changedSettings,
                                                                 const std::vector<Difference>& differences,
                                                                 const ReleaseTree& live);

}  // namespace vx::review
