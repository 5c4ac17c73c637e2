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
#include <span>
#include <string>
#include <tuple>
#include <unordered_set>
#include <utility>

#include "search/wanted_word.hpp"

namespace vx::tool {

namespace {

constexpr std::size_t groupWeight = 60;
constexpr std::size_t keywordWeight = 60;
constexpr std::size_t sentenceWeight = 30;
constexpr std::size_t valueWeight = 30;
constexpr std::size_t oldPathWeight = 30;

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

// Entries

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

/// Calls function(name) for each component of a path after the root.
template <class Function>
void forEachName(std::string_view path, Function function)
{
    while (path.find('.') != std::string_view::npos) {
        path = withoutRoot(path);
        function(rootOf(path));
    }
}

/// Returns the weight of name and title: greater for short titles and short paths.
std::size_t nameWeight(const SearchEntry& entry)
{
    const std::size_t words = std::max<std::size_t>(review::splitWords(entry.titles.back()).size(), 1);
    const std::size_t groups = std::min<std::size_t>(entry.titles.size() - 1, 10);
    return 84 + 20 / words - 2 * groups;
}

/// Calls function(word) for each word of a text, in lower case.
template <class Function>
void forEachWord(std::string_view text, Function function)
{
    const std::string lower = review::lowerCase(text);
    std::size_t offset = 0;
    for (auto word = review::nextWord(text, offset); !word.empty(); word = review::nextWord(text, offset)) {
        function(std::string_view(lower).substr(offset - word.size(), word.size()));
    }
}

/// Calls function(word) for each word of a name, and for all of them run together.
template <class Function>
void forEachWordOfName(std::string_view name, Function function)
{
    std::string together;
    std::size_t count = 0;
    forEachWord(name, [&](std::string_view word) {
        function(word);
        together += word;
        ++count;
    });
    if (count > 1) {
        function(std::string_view(together));
    }
}

/// Calls visitor.word(word) for each word of each field of an entry, and visitor.endField(weight, rank) after
/// it.
template <class Visitor>
void visitFields(const SearchEntry& entry, Visitor& visitor)
{
    const auto word = [&visitor](std::string_view found) { visitor.word(found); };
    const auto name = [&word](std::string_view found) { forEachWordOfName(found, word); };
    const auto text = [&word](std::string_view found) { forEachWord(found, word); };

    auto title = entry.titles.begin();
    forEachName(entry.path, [&](std::string_view component) {
        if (title + 1 == entry.titles.end()) {
            visitor.endField(groupWeight, MatchRank::word);
        }
        name(component);
        if (*title != component) {
            name(*title);
        }
        ++title;
    });
    visitor.endField(nameWeight(entry), MatchRank::word);
    std::ranges::for_each(entry.keywords, text);
    visitor.endField(keywordWeight, MatchRank::keyword);
    text(entry.sentence);
    visitor.endField(sentenceWeight, MatchRank::sentence);
    std::ranges::for_each(entry.values, text);
    visitor.endField(valueWeight, MatchRank::value);
    for (const std::string_view path : entry.oldPaths) {
        forEachName(path, name);
    }
    visitor.endField(oldPathWeight, MatchRank::oldPath);
}

/// The words of entries with which some words begin or end.
class Parts
{
public:
    explicit Parts(std::vector<std::string> wholes) : wholes_(std::move(wholes)) {}

    void word(std::string_view word)
    {
        if (std::ranges::any_of(wholes_, [word](const std::string& whole) {
                return whole.starts_with(word) || whole.ends_with(word);
            }))
        {
            words_.emplace(word);
        }
    }

    /// Returns two words of which one of the wholes consists; else the whole.
    std::vector<std::string> split(const std::string& whole) const
    {
        for (std::size_t end = whole.size(); end > 0; --end) {
            std::string first = whole.substr(0, end);
            std::string second = whole.substr(end);
            const std::size_t shortest = std::min(core::characterCount(first), core::characterCount(second));
            if (shortest >= shortestPart && words_.contains(first) && words_.contains(second)) {
                return {std::move(first), std::move(second)};
            }
        }
        return {whole};
    }

private:
    std::vector<std::string> wholes_;
    std::unordered_set<std::string> words_;
};

// Scores

/// What one word of a query contributes to an entry.
struct WordScore
{
    std::uint64_t best = 0;  ///< of a field
    std::uint64_t sum = 0;   ///< over all fields
    MatchRank rank = MatchRank::exact;
};

/// Scores an entry for each of some words.
class EntryScorer
{
public:
    using Match = WordMatch (WantedWord::*)(std::string_view) const;

    /// `parts`, if not null, are shown all words of the entries.
    EntryScorer(std::span<const WantedWord> words, Match match, Parts* parts)
        : words_(words), match_(match), parts_(parts), best_(words.size())
    {}

    /// Returns a score for each word; valid until the next call.
    const std::vector<WordScore>& score(const SearchEntry& entry)
    {
        isSecondary_ = entry.isSecondary;
        scores_.assign(words_.size(), {});
        visitFields(entry, *this);
        return scores_;
    }

    void word(std::string_view word)
    {
        if (parts_ != nullptr) {
            parts_->word(word);
        }
        for (std::size_t index = 0; index < words_.size(); ++index) {
            const WordMatch match = (words_[index].*match_)(word);
            if (match.quality > best_[index].quality) {
                best_[index] = match;
            }
        }
    }

    void endField(std::size_t weight, MatchRank rank)
    {
        const std::size_t ofEntry = isSecondary_ ? weight * 9 / 10 : weight;
        for (std::size_t index = 0; index < words_.size(); ++index) {
            const WordMatch match = std::exchange(best_[index], {});
            const std::uint64_t ofField = match.quality * ofEntry;
            WordScore& score = scores_[index];
            score.sum += ofField;
            if (ofField > score.best) {
                const bool isOfWord = rank == MatchRank::word || match.rank == MatchRank::similar;
                score.best = ofField;
                score.rank = isOfWord ? match.rank : rank;
            }
        }
    }

private:
    std::span<const WantedWord> words_;
    Match match_;
    Parts* parts_;
    std::vector<WordMatch> best_;  // in the field, by word
    std::vector<WordScore> scores_;
    bool isSecondary_ = false;
};

// Queries

/// Finds the entries for a query.
class Query
{
public:
    Query(const std::vector<SearchEntry>& entries, const Synonyms& synonyms, std::string_view query)
        : entries_(entries),
          synonyms_(synonyms),
          all_(review::lowerWords(query)),
          together_(boost::algorithm::join(all_, ""))
    {}

    std::vector<SearchMatch> run()
    {
        std::vector<std::string> words = meantWords();
        auto scores = scoresOf(words);
        const std::vector<std::string> unmatched = unmatchedOf(words, scores);
        if (!unmatched.empty()) {
            Parts parts(unmatched);
            const auto similar = similarScoresOf(unmatched, &parts);
            if (split(words, unmatched, parts)) {
                scores = scoresOf(words);
            }
            for (const std::string& word : unmatchedOf(words, scores)) {
                const auto known = std::ranges::find(unmatched, word);
                scores[indexOf(words, word)] = known == unmatched.end() ? similarScoresOf({word}).front()
                                                                        : similar[indexOf(unmatched, word)];
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

    static std::size_t indexOf(const std::vector<std::string>& words, const std::string& word)
    {
        return static_cast<std::size_t>(std::ranges::find(words, word) - words.begin());
    }

    /// Returns the scores of the entries for each of some words, and shows all words of the entries to the
    /// parts.
    std::vector<Scores> score(const std::vector<WantedWord>& words, EntryScorer::Match match,
                              Parts* parts = nullptr) const
    {
        std::vector<Scores> scores(words.size(), Scores(entries_.size()));
        EntryScorer scorer(words, match, parts);
        for (std::size_t entry = 0; entry < entries_.size(); ++entry) {
            const std::vector<WordScore>& ofEntry = scorer.score(entries_[entry]);
            for (std::size_t index = 0; index < words.size(); ++index) {
                scores[index][entry] = ofEntry[index];
            }
        }
        return scores;
    }

    /// Returns the scores of the entries for words that may be misspelt.
    std::vector<Scores> similarScoresOf(const std::vector<std::string>& words, Parts* parts = nullptr) const
    {
        std::vector<WantedWord> wanted;
        wanted.reserve(words.size());
        for (const std::string& word : words) {
            wanted.emplace_back(word, std::vector<std::string>(), Synonyms());
        }
        return score(wanted, &WantedWord::matchSimilar, parts);
    }

    /// Returns the scores of the entries for the words of a query.
    std::vector<Scores> scoresOf(const std::vector<std::string>& words) const
    {
        std::vector<WantedWord> wanted;
        for (std::size_t index = 0; index < words.size(); ++index) {
            std::vector<std::string> neighbours;
            if (index > 0) {
                neighbours.push_back(words[index - 1] + words[index]);
            }
            if (index + 1 < words.size()) {
                neighbours.push_back(words[index] + words[index + 1]);
            }
            wanted.emplace_back(words[index], std::move(neighbours), synonyms_);
        }
        return score(wanted, &WantedWord::match);
    }

    static std::size_t matchesIn(const Scores& scores)
    {
        return static_cast<std::size_t>(
            std::ranges::count_if(scores, [](const auto& score) { return score.sum > 0; }));
    }

    static bool isUnmatched(const Scores& scores) { return matchesIn(scores) == 0; }

    static std::vector<std::string> unmatchedOf(const std::vector<std::string>& words,
                                                const std::vector<Scores>& scores)
    {
        std::vector<std::string> unmatched;
        for (std::size_t index = 0; index < words.size(); ++index) {
            if (isUnmatched(scores[index])) {
                unmatched.push_back(words[index]);
            }
        }
        return unmatched;
    }

    /// Replaces unmatched words of the query that consist of two words of the entries. Returns whether there
    /// are any.
    static bool split(std::vector<std::string>& words, const std::vector<std::string>& unmatched,
                      const Parts& parts)
    {
        std::vector<std::string> result;
        for (const std::string& word : words) {
            const bool hasMatch = std::ranges::find(unmatched, word) == unmatched.end();
            std::ranges::move(hasMatch ? std::vector{word} : parts.split(word), std::back_inserter(result));
        }
        words.swap(result);
        return words.size() > result.size();
    }

    /// Returns how rare the matches of a word are: 100 ln(1 + entries / matches), 0 without matches.
    std::uint64_t rarityOf(const Scores& ofWord) const
    {
        const double share = static_cast<double>(entries_.size()) / static_cast<double>(matchesIn(ofWord));
        return isUnmatched(ofWord) ? 0
                                   : static_cast<std::uint64_t>(std::floor(100 * std::log(1 + share) + 0.5));
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
        candidate.score *= share;
        markExact(candidate);
        return candidate.score > 0 ? std::optional(candidate) : std::nullopt;
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
