#pragma once

#include <boost/unordered/unordered_flat_map.hpp>

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "search/ranking.hpp"
#include "search/wanted_word.hpp"

namespace vx::tool {

/// What one word of a query contributes to an entry.
struct WordScore
{
    std::uint64_t best = 0;  ///< of a field
    std::uint64_t sum = 0;   ///< over all fields
    MatchRank rank = MatchRank::exact;
};

/// The words of entries, which must outlive it. Each different word is kept once, so that a word of a query
/// is compared with it once.
class WordIndex
{
public:
    explicit WordIndex(const std::vector<SearchEntry>& entries);

    /// Whether an entry has a word, in lower case.
    [[nodiscard]] bool contains(std::string_view word) const { return numbers_.contains(word); }

    /// Returns the length of the longest word, in bytes.
    [[nodiscard]] std::size_t longestWord() const noexcept { return longestWord_; }

    /// Returns for each entry what a word of a query contributes to it.
    [[nodiscard]] std::vector<WordScore> score(const WantedWord& wanted) const;

    /// As score, for a word that may be misspelt.
    [[nodiscard]] std::vector<WordScore> scoreSimilar(const WantedWord& wanted) const;

private:
    struct Field
    {
        std::uint32_t entry;
        std::uint32_t end;  ///< of its words in occurrences_; they begin where those of the field before end
        std::uint32_t weight;
        MatchRank rank;
    };

    /// Where in occurrences_ a name has its words, and after several of them all of them run together.
    struct Name
    {
        std::size_t begin;
        std::size_t end;
        std::size_t wordCount;  ///< without those run together
    };

    void addEntry(const SearchEntry& entry, std::uint32_t number);

    /// Adds the words of a name, and all of them run together. Returns the number of words.
    std::size_t addName(std::string_view name);
    void addWords(std::string_view text);
    void addWord(const std::string& word);

    template <class Match>
    std::vector<WordScore> scoreBy(Match match) const;

    std::size_t entryCount_;
    std::size_t longestWord_ = 0;
    std::deque<std::string> words_;                                       // where numbers_ refers to them
    boost::unordered_flat_map<std::string_view, std::uint32_t> numbers_;  // of words
    std::vector<std::uint32_t> occurrences_;                              // numbers of words, field by field
    std::vector<Field> fields_;
    boost::unordered_flat_map<std::string_view, Name> names_;  // as those of groups appear many times
};

}  // namespace vx::tool
