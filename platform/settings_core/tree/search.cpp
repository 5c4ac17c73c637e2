#include <settings_core/tree/search.hpp>
#include <settings_core/tree/suggestions.hpp>
#include <settings_core/values/value_format.hpp>

#include <foundation/verdixdata/text.hpp>

#include <boost/algorithm/string/case_conv.hpp>
#include <boost/algorithm/string/join.hpp>

#include <algorithm>
#include <array>
#include <locale>
#include <optional>

namespace vx::core {

namespace {

std::string lowered(std::string_view text)
{
    return boost::algorithm::to_lower_copy(std::string(text), std::locale::classic());
}

bool isUpper(char letter)
{
    return letter >= 'A' && letter <= 'Z';
}

bool isLetterOrDigit(char letter)
{
    return isUpper(letter) || (letter >= 'a' && letter <= 'z') || (letter >= '0' && letter <= '9');
}

/// Whether a word begins at this offset of a camel-case name. The last capital of a run begins the next word:
/// LabelURLToHyperlink consists of Label, URL, To and Hyperlink.
bool beginsWord(std::string_view text, std::size_t at)
{
    if (at == 0 || !isLetterOrDigit(text[at - 1])) {
        return true;
    }
    const bool endsRun = at + 1 < text.size() && text[at + 1] >= 'a' && text[at + 1] <= 'z';
    return isUpper(text[at]) && (!isUpper(text[at - 1]) || endsRun);
}

/// Ranks search words against one node.
class NodeMatcher
{
public:
    NodeMatcher(const Node& node, std::size_t rootLength)
        : path_(std::string_view(node.fullName()).substr(rootLength + 1)),
          lowerPath_(lowered(path_)),
          node_(node)
    {}

    std::optional<MatchRank> rank(std::string_view word) const
    {
        if (const auto inPath = rankInPath(word)) {
            return inPath;
        }
        return isInValues(word) ? std::optional(MatchRank::value) : std::nullopt;
    }

private:
    std::optional<MatchRank> rankInPath(std::string_view word) const
    {
        if (lowerPath_ == word || lowered(node_.fullName()) == word || lowered(node_.name()) == word) {
            return MatchRank::exactPath;
        }
        std::optional<MatchRank> best;
        for (std::size_t at = lowerPath_.find(word); at != std::string::npos;
             at = lowerPath_.find(word, at + 1)) {
            best = std::min(best.value_or(MatchRank::substring), rankAt(at, word.size()));
        }
        return best;
    }

    MatchRank rankAt(std::size_t at, std::size_t length) const
    {
        if (at == 0 || path_[at - 1] == '.') {
            return MatchRank::prefix;
        }
        const std::size_t end = at + length;
        const bool endsWord = end == path_.size() || beginsWord(path_, end) || !isLetterOrDigit(path_[end]);
        return beginsWord(path_, at) && endsWord ? MatchRank::word : MatchRank::substring;
    }

    bool isInValues(std::string_view word) const
    {
        const auto& properties = node_.properties();
        if (lowered(formatValue(properties.factoryValue)).find(word) != std::string::npos) {
            return true;
        }
        return std::ranges::any_of(properties.valueValidators, [&](const auto& validator) {
            return std::ranges::any_of(validator.allowedValues, [&](const std::u16string& allowed) {
                return lowered(foundation::verdixdata::toUtf8(allowed)).find(word) != std::string::npos;
            });
        });
    }

    std::string_view path_;
    std::string lowerPath_;
    const Node& node_;
};

std::optional<MatchRank> worstRank(const NodeMatcher& node, const std::vector<std::string>& words)
{
    std::optional<MatchRank> worst;
    for (const std::string& word : words) {
        const auto rank = node.rank(word);
        if (!rank) {
            return std::nullopt;
        }
        worst = std::max(worst.value_or(*rank), *rank);
    }
    return worst;
}

}  // namespace

std::string_view rankName(MatchRank rank) noexcept
{
    static constexpr std::array<std::string_view, 6> names = {"exact",     "prefix", "word",
                                                              "substring", "value",  "spelled alike"};
    return names[static_cast<std::size_t>(rank)];
}

std::vector<Match> search(const SettingsTree& tree, const std::vector<std::string>& words)
{
    std::vector<std::string> wanted;
    std::ranges::transform(words, std::back_inserter(wanted), lowered);

    std::vector<Match> matches;
    const std::size_t rootLength = tree.root()->fullName().size();
    for (const Node* node : tree.nodes()) {
        if (const auto rank = worstRank(NodeMatcher(*node, rootLength), wanted)) {
            matches.push_back({node, *rank});
        }
    }
    std::ranges::stable_sort(matches, {}, &Match::rank);

    const bool noPathMatches = matches.empty() || matches.front().rank == MatchRank::value;
    if (noPathMatches) {
        for (const std::string_view path : suggestPaths(boost::algorithm::join(words, "."), tree)) {
            matches.push_back({tree.find(path), MatchRank::similar});
        }
    }
    return matches;
}

}  // namespace vx::core
