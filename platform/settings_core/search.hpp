#pragma once

// Finds settings by what a person remembers of them.

#include <settings_core/settings_tree.hpp>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vx::core {

/// How well a node matches, the best first.
enum class MatchRank : std::uint8_t
{
    exactPath,  ///< the full path, whose root may be left out, or the last component
    prefix,     ///< the path or one of its components begins so
    word,       ///< one of the words of a component: "tips" of ShowTips
    substring,  ///< anywhere in the path
    value,      ///< in the factory value or an allowed word
    similar     ///< only spelled alike
};

/// "exact", "prefix", "word", "substring", "value", "spelled alike".
[[nodiscard]] VX_API std::string_view rankName(MatchRank rank) noexcept;

/// A node that was found, and how well.
struct Match
{
    const Node* node;  ///< of the tree that was searched
    MatchRank rank;    ///< that of the word which matches it worst
};

/// Every node that matches all the words, whatever their case, best rank first and in the tree's order within
/// one. A node ranks by the word that matches it worst. Paths that are merely spelled alike are offered when
/// no path matches.
[[nodiscard]] VX_API std::vector<Match> search(const SettingsTree& tree,
                                               const std::vector<std::string>& words);

}  // namespace vx::core
