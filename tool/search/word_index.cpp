#include "search/word_index.hpp"

#include <review/words.hpp>

#include <algorithm>
#include <iterator>

namespace vx::tool {

namespace {

constexpr std::uint32_t groupWeight = 60;
constexpr std::uint32_t keywordWeight = 60;
constexpr std::uint32_t sentenceWeight = 30;
constexpr std::uint32_t valueWeight = 30;
constexpr std::uint32_t oldPathWeight = 30;

/// Returns the weight of name and title: greater for short titles and short paths.
std::uint32_t nameWeight(std::size_t wordsOfTitle, std::size_t groups)
{
    return static_cast<std::uint32_t>(84 + 20 / std::max<std::size_t>(wordsOfTitle, 1) -
                                      2 * std::min<std::size_t>(groups, 10));
}

/// Calls function(name) for each component of a path after the root.
template <class Function>
void forEachName(std::string_view path, Function function)
{
    for (auto dot = path.find('.'); dot != std::string_view::npos; dot = path.find('.')) {
        path.remove_prefix(dot + 1);
        function(path.substr(0, path.find('.')));
    }
}

}  // namespace

WordIndex::WordIndex(const std::vector<SearchEntry>& entries) : entryCount_(entries.size())
{
    // About what a group or setting of the product has.
    fields_.reserve(4 * entries.size());
    occurrences_.reserve(24 * entries.size());
    numbers_.reserve(3 * entries.size());
    for (std::size_t number = 0; number < entries.size(); ++number) {
        addEntry(entries[number], static_cast<std::uint32_t>(number));
    }
}

std::vector<WordScore> WordIndex::score(const WantedWord& wanted) const
{
    return scoreBy([&wanted](std::string_view word) { return wanted.match(word); });
}

std::vector<WordScore> WordIndex::scoreSimilar(const WantedWord& wanted) const
{
    return scoreBy([&wanted](std::string_view word) { return wanted.matchSimilar(word); });
}

template <class Match>
std::vector<WordScore> WordIndex::scoreBy(Match match) const
{
    std::vector<WordMatch> matches(words_.size());
    std::ranges::transform(words_, matches.begin(), match);

    std::vector<WordScore> scores(entryCount_);
    std::size_t at = 0;
    for (const Field& field : fields_) {
        WordMatch best;
        for (; at < field.end; ++at) {
            if (const WordMatch found = matches[occurrences_[at]]; found.quality > best.quality) {
                best = found;
            }
        }
        const std::uint64_t ofField = std::uint64_t{best.quality} * field.weight;
        WordScore& score = scores[field.entry];
        score.sum += ofField;
        if (ofField > score.best) {
            const bool isOfWord = field.rank == MatchRank::word || best.rank == MatchRank::similar;
            score.best = ofField;
            score.rank = isOfWord ? best.rank : field.rank;
        }
    }
    return scores;
}

void WordIndex::addEntry(const SearchEntry& entry, std::uint32_t number)
{
    const auto endField = [&](std::uint32_t weight, MatchRank rank) {
        const auto end = static_cast<std::uint32_t>(occurrences_.size());
        if (fields_.empty() || fields_.back().end < end) {
            fields_.push_back({number, end, entry.isSecondary ? weight * 9 / 10 : weight, rank});
        }
    };
    const auto addText = [this](std::string_view text) { addWords(text); };

    auto title = entry.titles.begin();
    std::size_t wordsOfTitle = 0;
    forEachName(entry.path, [&](std::string_view component) {
        if (title + 1 == entry.titles.end()) {
            endField(groupWeight, MatchRank::word);
        }
        wordsOfTitle = addName(component);
        if (*title != component) {
            wordsOfTitle = addName(*title);
        }
        ++title;
    });
    endField(nameWeight(wordsOfTitle, entry.titles.size() - 1), MatchRank::word);
    std::ranges::for_each(entry.keywords, addText);
    endField(keywordWeight, MatchRank::keyword);
    addText(entry.sentence);
    endField(sentenceWeight, MatchRank::sentence);
    std::ranges::for_each(entry.values, addText);
    endField(valueWeight, MatchRank::value);
    for (const std::string_view path : entry.oldPaths) {
        forEachName(path, [this](std::string_view component) { addName(component); });
    }
    endField(oldPathWeight, MatchRank::oldPath);
}

std::size_t WordIndex::addName(std::string_view name)
{
    if (const auto known = names_.find(name); known != names_.end()) {
        const auto [begin, end, wordCount] = known->second;
        for (std::size_t at = begin; at < end; ++at) {
            occurrences_.push_back(occurrences_[at]);
        }
        return wordCount;
    }
    const std::size_t begin = occurrences_.size();
    addWords(name);
    const std::size_t wordCount = occurrences_.size() - begin;
    if (wordCount > 1) {
        std::string together;
        for (std::size_t at = begin; at < begin + wordCount; ++at) {
            together += words_[occurrences_[at]];
        }
        addWord(together);
    }
    names_.emplace(name, Name{begin, occurrences_.size(), wordCount});
    return wordCount;
}

void WordIndex::addWords(std::string_view text)
{
    std::size_t offset = 0;
    for (auto word = review::nextWord(text, offset); !word.empty(); word = review::nextWord(text, offset)) {
        addWord(review::lowerCase(word));
    }
}

void WordIndex::addWord(const std::string& word)
{
    auto found = numbers_.find(word);
    if (found == numbers_.end()) {
        const auto number = static_cast<std::uint32_t>(words_.size());
        words_.push_back(word);
        longestWord_ = std::max(longestWord_, word.size());
        found = numbers_.emplace(words_.back(), number).first;
    }
    occurrences_.push_back(found->second);
}

}  // namespace vx::tool
