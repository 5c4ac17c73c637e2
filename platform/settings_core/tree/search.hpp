#pragma once

// Search for settings by words of their paths and values.

#include <settings_core/tree/settings_tree.hpp>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vx::core {

/// How well a node matches, best first.
enum class MatchRank : std::uint8_t
{
    exactPath,  ///< the full path, with or without the root, or the last component
    prefix,     ///< the beginning of the path or of a component
    word,       ///< a whole word of a camel-case component: "tips" in ShowTips
    substring,  ///< any other part of the path
    value,      ///< part of the factory value or of an allowed value
    similar     ///< the path is merely similar
};

/// Returns "exact", "prefix", "word", "substring", "value", "spelled alike".
[[nodiscard]] VX_API std::string_view rankName(MatchRank rank) noexcept;

/// A node that was found.
struct Match
{
    const Node* node;  ///< in the tree that was searched
    MatchRank rank;    ///< rank of the word that matches worst
};

/// Returns every node that matches all the words, ignoring case: best rank first, in creation order within a
/// rank. If no path matches, similar paths are appended.
[[nodiscard]] VX_API std::vector<Match> search(const SettingsTree& tree,
                                               const std::vector<std::string>& words);

}  // namespace vx::core
