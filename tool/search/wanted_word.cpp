#include "search/wanted_word.hpp"

#include <review/words.hpp>
#include <settings_core/values/value_format.hpp>

#include <foundation/verdixdata/text.hpp>

#include <algorithm>
#include <iterator>
#include <utility>

namespace vx::tool {

namespace {

constexpr WordMatch equal{100, MatchRank::word};
constexpr WordMatch inflected{90, MatchRank::word};
constexpr WordMatch synonymous{75, MatchRank::word};
constexpr WordMatch containing{50, MatchRank::substring};
constexpr WordMatch oneEditApart{50, MatchRank::similar};

/// Shorter words are not compared for similarity.
constexpr std::size_t shortestSimilar = 4;  // in UTF-16 code units

WordMatch prefix(std::string_view prefix, std::string_view word)
{
    const std::size_t share = 40 * core::characterCount(prefix) / core::characterCount(word);
    return {static_cast<std::uint8_t>(30 + share), MatchRank::prefix};
}

/// Whether inserting, deleting or replacing one letter, or exchanging two neighbours, makes two words equal
/// that are not equal.
bool areOneEditApart(std::u16string_view left, std::u16string_view right)
{
    if (left.size() > right.size()) {
        std::swap(left, right);
    }
    const auto same = static_cast<std::size_t>(std::ranges::mismatch(left, right).in1 - left.begin());
    left.remove_prefix(same);
    right.remove_prefix(same);
    if (left.size() + 1 == right.size()) {
        return left == right.substr(1);
    }
    const bool isExchanged =
        left.size() > 1 && right.size() > 1 && left[0] == right[1] && left[1] == right[0];
    return left.size() == right.size() && !left.empty() &&
           (left.substr(1) == right.substr(1) || (isExchanged && left.substr(2) == right.substr(2)));
}

}  // namespace

WantedWord::WantedWord(std::string word, std::vector<std::string> neighbours, const Synonyms& synonyms)
    : word_(std::move(word)),
      stem_(review::stemOf(word_)),
      neighbours_(std::move(neighbours)),
      characters_(foundation::verdixdata::toUtf16(word_))
{
    const auto hasStem = [this](std::string_view other) { return review::stemOf(other) == stem_; };
    for (const std::vector<std::string>& list : synonyms) {
        if (std::ranges::any_of(list, hasStem)) {
            std::ranges::transform(list, std::inserter(synonyms_, synonyms_.end()), review::stemOf);
        }
    }
}

WordMatch WantedWord::match(std::string_view word) const
{
    if (word == word_) {
        return equal;
    }
    if (std::ranges::find(neighbours_, word) != neighbours_.end()) {
        return inflected;
    }
    if (word.front() != word_.front() && synonyms_.empty()) {  // as stems begin as their words do
        return {};
    }
    const std::string stem = review::stemOf(word);
    if (stem == stem_) {
        return inflected;
    }
    if (synonyms_.contains(stem)) {
        return synonymous;
    }
    return word.starts_with(word_) ? prefix(word_, word) : WordMatch();
}

WordMatch WantedWord::matchSimilar(std::string_view word) const
{
    if (characters_.size() < shortestSimilar) {
        return {};
    }
    if (word.find(word_) != std::string_view::npos) {
        return containing;
    }
    // One edit leaves the beginning or the end of so long a word, so that most words can be told by them.
    const bool sharesEnd = word.front() == word_.front() || word.back() == word_.back();
    return sharesEnd && areOneEditApart(characters_, foundation::verdixdata::toUtf16(word)) ? oneEditApart
                                                                                            : WordMatch();
}

}  // namespace vx::tool
