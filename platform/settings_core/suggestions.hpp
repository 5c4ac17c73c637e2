#pragma once

// What a person may have meant by a name that does not exist.

#include <foundation/export.hpp>

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vx::core {

class SettingsTree;

/// Up to three names that are close to `wanted`, the closest first, in their own order where equally close.
/// Distance is the number of letters to insert, drop, replace or swap with a neighbour, whatever their case;
/// a third of the letters may differ.
[[nodiscard]] VX_API std::vector<std::string_view> suggestNames(std::string_view wanted,
                                                                std::span<const std::string_view> names);

/// The same over the full paths of a tree, whose root `wanted` may leave out. A path is also close when its
/// last component is: that finds a setting under another group.
[[nodiscard]] VX_API std::vector<std::string_view> suggestPaths(std::string_view wanted,
                                                                const SettingsTree& tree);

/// "did you mean a, b or c?"; empty without names.
[[nodiscard]] VX_API std::string didYouMean(std::span<const std::string_view> names);

}  // namespace vx::core
