#pragma once

// The ranking that docs/search.md describes. tool/page/search.js does the same for the page.

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vx::tool {

/// Lists of words of the same meaning, in lower case.
using Synonyms = std::vector<std::vector<std::string>>;

/// What a setting or group is found by. A name may stand for a title that is made from it.
struct SearchEntry
{
    std::string_view path;
    std::vector<std::string_view> titles = {};  ///< one for each component of the path after the root
    std::string_view sentence = {};
    std::span<const std::string> keywords = {};
    std::vector<std::string> values = {};  ///< allowed values, what they do, and the factory value
    std::vector<std::string_view> oldPaths = {};
    bool isSecondary = false;  ///< a group, or hidden: rarely what people look for
};

/// Where the word of a query that counts most matches, and how.
enum class MatchRank : std::uint8_t
{
    exact,      ///< the whole query is path, name or title
    word,       ///< a word of path or title
    prefix,     ///< the beginning of such a word
    substring,  ///< another part of such a word
    keyword,
    sentence,
    value,
    oldPath,  ///< a path that was moved to this one
    similar   ///< a similar word
};

/// Returns "exact", "word", "prefix", "substring", "keyword", "sentence", "value", "old path", "spelled
/// alike".
[[nodiscard]] std::string_view rankName(MatchRank rank) noexcept;

/// An entry that matches a query.
struct SearchMatch
{
    std::size_t entry;  ///< its index
    MatchRank rank;
};

/// Returns the entries that match the query, the best first, without those that match much worse than the
/// best.
[[nodiscard]] std::vector<SearchMatch> rankEntries(const std::vector<SearchEntry>& entries,
                                                   const Synonyms& synonyms, std::string_view query);

}  // namespace vx::tool
