#pragma once

#include <cstdint>
#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "search/ranking.hpp"

namespace vx::tool {

/// How well a word matches a word of a query.
struct WordMatch
{
    std::uint8_t quality = 0;          ///< up to 100; 0 if it does not match
    MatchRank rank = MatchRank::word;  ///< if the word is one of path or title
};

/// A word of a query. All words are in lower case.
class WantedWord
{
public:
    /// `neighbours` are what the word makes with the words before and after it in the query, run together.
    WantedWord(std::string word, std::vector<std::string> neighbours, const Synonyms& synonyms);

    /// Returns how a word matches that is equal, another form, a synonym, or begins with the wanted one.
    [[nodiscard]] WordMatch match(std::string_view word) const;

    /// Returns how a word matches that contains the wanted one or differs from it by one edit.
    [[nodiscard]] WordMatch matchSimilar(std::string_view word) const;

private:
    std::string word_;
    std::string stem_;
    std::vector<std::string> neighbours_;
    std::set<std::string, std::less<>> synonyms_;  // stems
    std::u16string characters_;
};

}  // namespace vx::tool
