#pragma once

// Suggestions for mistyped names.

#include <foundation/export.hpp>

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vx::core {

class SettingsTree;

/// Returns up to three names similar to `wanted`, the closest first; equally close names keep their order.
/// The distance is the number of letters to insert, delete, replace or transpose, ignoring case. It may be at
/// most a third of the longer name, and one and a half times that of the closest, so that a name in another
/// case is the only one.
[[nodiscard]] VX_API std::vector<std::string_view> suggestNames(std::string_view wanted,
                                                                std::span<const std::string_view> names);

/// Returns up to three full paths of the tree similar to `wanted`, which may omit the root. A path is similar
/// also when its last component is, which finds a setting under another group.
[[nodiscard]] VX_API std::vector<std::string_view> suggestPaths(std::string_view wanted,
                                                                const SettingsTree& tree);

/// Suggests paths for many unknown ones. That takes time, so that only the first hundred get suggestions.
class VX_API PathSuggestions
{
public:
    /// The tree must outlive this object.
    explicit PathSuggestions(const SettingsTree& tree) : tree_(tree) {}

    /// Returns suggestPaths() in the tree; nothing after a hundred calls.
    [[nodiscard]] std::vector<std::string_view> suggest(std::string_view wanted);

private:
    const SettingsTree& tree_;
    std::size_t remaining_ = 100;
};

/// Returns the number of letters to insert, delete, replace or transpose, ignoring case, that turn one string
/// into the other; if that exceeds `limit`, any number greater than `limit`.
[[nodiscard]] VX_API std::size_t editDistance(std::string_view left, std::string_view right,
                                              std::size_t limit);

/// Returns "did you mean a, b or c?"; empty without names.
[[nodiscard]] VX_API std::string didYouMean(std::span<const std::string_view> names);

}  // namespace vx::core
