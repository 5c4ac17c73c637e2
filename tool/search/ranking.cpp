#include "search/ranking.hpp"

#include <review/words.hpp>
#include <settings_core/values/value_format.hpp>

#include <boost/algorithm/string/join.hpp>

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <optional>
#include <set>
#include <string>
#include <tuple>
#include <utility>

#include "search/wanted_word.hpp"
#include "search/word_index.hpp"

namespace vx::tool {

namespace {

/// Of a query; keeps scores below 2^53, up to which numbers are exact in JavaScript.
constexpr std::size_t maximumWords = 32;

/// Of a word that is split, in characters.
constexpr std::size_t shortestPart = 3;

/// Words that count only if a query has no others.
constexpr auto fillers = std::to_array<std::string_view>(
    {"a",        "activate", "adjust", "all",    "also",  "an",       "and",     "any",       "are",
     "as",       "at",       "be",     "by",     "can",   "change",   "choose",  "configure", "deactivate",
     "decrease", "disable",  "do",     "does",   "don",   "enable",   "for",     "from",      "get",
     "give",     "how",      "i",      "if",     "in",    "increase", "is",      "it",        "its",
     "let",      "make",     "me",     "modify", "my",    "need",     "of",      "off",       "on",
     "or",       "please",   "really", "reduce", "see",   "set",      "setting", "settings",  "should",
     "so",       "t",        "that",   "the",    "their", "them",     "there",   "these",     "this",
     "those",    "to",       "too",    "turn",   "use",   "very",     "want",    "was",       "what",
     "when",     "where",    "which",  "who",    "why",   "will",     "with",    "without",   "you",
     "your"});

// Paths

std::string_view rootOf(std::string_view path)
{
    return path.substr(0, path.find('.'));
}

std::string_view withoutRoot(std::string_view path)
{
    return path.substr(path.find('.') + 1);
}

std::string_view nameOf(std::string_view path)
{
    return path.substr(path.rfind('.') + 1);
}

// Queries

/// Finds the entries for a query.
class Query
{
public:
    Query(const std::vector<SearchEntry>& entries, const Synonyms& synonyms, std::string_view query)
        : entries_(entries),
          synonyms_(synonyms),
          index_(entries),
          all_(review::lowerWords(query)),
          together_(boost::algorithm::join(all_, ""))
    {}

    std::vector<SearchMatch> run() const
    {
        std::vector<std::string> words = meantWords();
        std::vector<Scores> scores = scoresOf(words);
        if (splitUnmatched(words, scores)) {
            scores = scoresOf(words);
        }
        for (std::size_t at = 0; at < words.size(); ++at) {
            if (matchesIn(scores[at]) == 0) {
                scores[at] = index_.scoreSimilar(WantedWord(words[at], {}, {}));
            }
        }
        return matchesOf(scores);
    }

private:
    using Scores = std::vector<WordScore>;  // by entry

    struct Candidate
    {
        SearchMatch match;
        int exactness = 0;  ///< 2 if the query is the path; 1 for name, title or an old path
        std::uint64_t score = 0;
    };

    /// Returns the words of the query without fillers and duplicates.
    std::vector<std::string> meantWords() const
    {
        std::set<std::string, std::less<>> ignored(fillers.begin(), fillers.end());
        if (!entries_.empty()) {
            ignored.insert(review::lowerCase(rootOf(entries_.front().path)));
        }
        const auto isIgnored = [&ignored](const std::string& word) { return ignored.contains(word); };
        const bool hasOthers = !std::ranges::all_of(all_, isIgnored);
        std::vector<std::string> words;
        for (const std::string& word : all_) {
            const bool isNew = std::ranges::find(words, word) == words.end();
            if (isNew && words.size() < maximumWords && !(hasOthers && isIgnored(word))) {
                words.push_back(word);
            }
        }
        return words;
    }

    /// Returns the scores of each word of the query. It may also match together with a neighbour.
    std::vector<Scores> scoresOf(const std::vector<std::string>& words) const
    {
        std::vector<Scores> scores;
        for (std::size_t at = 0; at < words.size(); ++at) {
            std::vector<std::string> neighbours;
            if (at > 0) {
                neighbours.push_back(words[at - 1] + words[at]);
            }
            if (at + 1 < words.size()) {
                neighbours.push_back(words[at] + words[at + 1]);
            }
            scores.push_back(index_.score(WantedWord(words[at], std::move(neighbours), synonyms_)));
        }
        return scores;
    }

    /// Replaces the words that match at most groups and hidden settings, and consist of two words of the
    /// entries. Returns whether there are any.
    bool splitUnmatched(std::vector<std::string>& words, const std::vector<Scores>& scores) const
    {
        std::vector<std::string> result;
        for (std::size_t at = 0; at < words.size(); ++at) {
            std::ranges::move(matchesPrimary(scores[at]) ? std::vector{words[at]} : split(words[at]),
                              std::back_inserter(result));
        }
        words.swap(result);
        return words.size() > result.size();
    }

    bool matchesPrimary(const Scores& ofWord) const
    {
        for (std::size_t entry = 0; entry < entries_.size(); ++entry) {
            if (ofWord[entry].sum > 0 && !entries_[entry].isSecondary) {
                return true;
            }
        }
        return false;
    }

    /// Returns two words of the entries of which a word consists; else the word.
    std::vector<std::string> split(const std::string& whole) const
    {
        const std::size_t longest = index_.longestWord();
        for (std::size_t end = std::min(whole.size(), longest); end > 0 && whole.size() - end <= longest;
             --end) {
            const std::string first = whole.substr(0, end);
            const std::string second = whole.substr(end);
            const std::size_t shortest = std::min(core::characterCount(first), core::characterCount(second));
            if (shortest >= shortestPart && index_.contains(first) && index_.contains(second)) {
                return {first, second};
            }
        }
        return {whole};
    }

    static std::size_t matchesIn(const Scores& scores)
    {
        return static_cast<std::size_t>(
            std::ranges::count_if(scores, [](const auto& score) { return score.sum > 0; }));
    }

    /// Returns how rare the matches of a word are: 100 ln(1 + entries / matches), 0 without matches.
    std::uint64_t rarityOf(const Scores& ofWord) const
    {
        const std::size_t matches = matchesIn(ofWord);
        const double share = static_cast<double>(entries_.size()) / static_cast<double>(matches);
        return matches == 0 ? 0 : static_cast<std::uint64_t>(std::floor(100 * std::log(1 + share) + 0.5));
    }

    /// Returns the score of an entry that matches any of the words.
    std::optional<Candidate> candidateOf(std::size_t entry, const std::vector<Scores>& scores,
                                         const std::vector<std::uint64_t>& rarities) const
    {
        Candidate candidate{{entry, MatchRank::exact}};
        std::uint64_t share = 0;  // of the query
        std::uint64_t most = 0;   // contribution of a word
        for (std::size_t word = 0; word < scores.size(); ++word) {
            const WordScore& score = scores[word][entry];
            const std::uint64_t added = rarities[word] * (2 * score.best + score.sum);
            candidate.score += added;
            share += score.sum > 0 ? rarities[word] : 0;
            candidate.match.rank = added > most ? score.rank : candidate.match.rank;
            most = std::max(most, added);
        }
        if (share == 0) {
            return std::nullopt;
        }
        candidate.score *= share;
        markExact(candidate);
        return candidate;
    }

    /// Returns the matches, the best first, without weak ones.
    std::vector<SearchMatch> matchesOf(const std::vector<Scores>& scores) const
    {
        std::vector<std::uint64_t> rarities;
        std::ranges::transform(scores, std::back_inserter(rarities),
                               [this](const Scores& ofWord) { return rarityOf(ofWord); });
        std::vector<Candidate> candidates;
        std::uint64_t best = 0;
        for (std::size_t entry = 0; entry < entries_.size(); ++entry) {
            if (const auto candidate = candidateOf(entry, scores, rarities)) {
                best = std::max(best, candidate->score);
                candidates.push_back(*candidate);
            }
        }
        std::erase_if(candidates, [best](const Candidate& candidate) {
            return candidate.exactness == 0 && 3 * candidate.score < best;
        });
        std::ranges::stable_sort(candidates, [](const Candidate& left, const Candidate& right) {
            return std::tie(left.exactness, left.score) > std::tie(right.exactness, right.score);
        });
        std::vector<SearchMatch> matches;
        std::ranges::transform(candidates, std::back_inserter(matches), &Candidate::match);
        return matches;
    }

    /// Sets rank and exactness of an entry that the whole query names.
    void markExact(Candidate& candidate) const
    {
        const SearchEntry& entry = entries_[candidate.match.entry];
        const auto isQuery = [this](std::string_view text) { return review::areTogether(text, together_); };
        const auto isPath = [&isQuery](std::string_view path) {
            return isQuery(path) || isQuery(withoutRoot(path));
        };
        if (isPath(entry.path)) {
            candidate.match.rank = MatchRank::exact;
            candidate.exactness = 2;
        } else if (isQuery(nameOf(entry.path)) || isQuery(entry.titles.back())) {
            candidate.match.rank = MatchRank::exact;
            candidate.exactness = 1;
        } else if (std::ranges::any_of(entry.oldPaths, isPath)) {
            candidate.match.rank = MatchRank::oldPath;
            candidate.exactness = 1;
        }
    }

    const std::vector<SearchEntry>& entries_;
    const Synonyms& synonyms_;
    const WordIndex index_;
    const std::vector<std::string> all_;
    const std::string together_;
};

}  // namespace

std::string_view rankName(MatchRank rank) noexcept
{
    static constexpr std::array<std::string_view, 9> names = {
        "exact", "word", "prefix", "substring", "keyword", "sentence", "value", "old path", "spelled alike"};
    return names[static_cast<std::size_t>(rank)];
}

std::vector<SearchMatch> rankEntries(const std::vector<SearchEntry>& entries, const Synonyms& synonyms,
                                     std::string_view query)
{
    return Query(entries, synonyms, query).run();
}

}  // namespace vx::tool
