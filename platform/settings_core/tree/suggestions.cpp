#include <settings_core/tree/settings_tree.hpp>
#include <settings_core/tree/suggestions.hpp>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdlib>
#include <iterator>
#include <optional>
#include <string>
#include <utility>

namespace vx::core {

namespace {

constexpr std::size_t suggestionLimit = 3;

/// Longer strings are not mistyped names, and comparing them would be slow.
constexpr std::size_t maxNameLength = 200;

std::string inLowerCase(std::string_view name)
{
    std::string lower(name);
    std::ranges::transform(lower, lower.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    return lower;
}

/// Returns what follows the last "."; the whole path without one.
std::string_view lastComponent(std::string_view path)
{
    return path.substr(path.rfind('.') + 1);
}

/// Computes edit distances (optimal string alignment) from one string; reuses its rows between calls.
class EditDistance
{
public:
    explicit EditDistance(std::string_view from) : from_(inLowerCase(from)) { count(letters_, from_, 1); }

    /// Returns the greatest distance at which `name` is similar: a third of the longer of both, but one
    /// letter of two or three.
    [[nodiscard]] std::size_t allowedTo(std::string_view name) const
    {
        const std::size_t longer = std::max(from_.size(), name.size());
        return longer < 2 ? 0 : std::max<std::size_t>(1, longer / 3);
    }

    /// Returns the distance to `name`; nothing if it is greater than `limit`.
    [[nodiscard]] std::optional<std::size_t> within(std::string_view name, std::size_t limit)
    {
        const std::size_t distance = minimumTo(name) > limit ? limit + 1 : to(name, limit);
        return distance > limit ? std::nullopt : std::optional(distance);
    }

private:
    /// The number of each letter; characters may share a place, which only lowers the minimum.
    using Letters = std::array<int, 32>;

    /// Returns the distance to `name`; if that exceeds `limit`, any number greater than `limit`.
    [[nodiscard]] std::size_t to(std::string_view name, std::size_t limit)
    {
        const std::size_t lengthGap =
            std::max(from_.size(), name.size()) - std::min(from_.size(), name.size());
        if (lengthGap > limit) {
            return limit + 1;
        }
        const std::string other = inLowerCase(name);
        current_.resize(other.size() + 1);
        for (std::size_t column = 0; column <= other.size(); ++column) {
            current_[column] = column;
        }
        previous_.assign(current_.size(), 0);
        for (std::size_t row = 1; row <= from_.size(); ++row) {
            beforePrevious_.swap(previous_);
            previous_.swap(current_);
            current_.resize(previous_.size());
            if (fillRow(row, other) > limit) {
                return limit + 1;
            }
        }
        return current_.back();
    }

    static void count(Letters& letters, std::string_view name, int step)
    {
        for (const char c : name) {
            // Equal for both cases of a letter.
            letters[static_cast<unsigned char>(c) % letters.size()] += step;
        }
    }

    /// Returns a distance that the one to `name` is not less than, which is quickly found.
    [[nodiscard]] std::size_t minimumTo(std::string_view name) const
    {
        Letters surplus = letters_;
        count(surplus, name, -1);
        int deleted = 0;
        int inserted = 0;
        for (const int number : surplus) {
            (number > 0 ? deleted : inserted) += std::abs(number);
        }
        return static_cast<std::size_t>(std::max(deleted, inserted));
    }

    /// Returns the smallest distance in the row.
    std::size_t fillRow(std::size_t row, std::string_view other)
    {
        current_[0] = row;
        std::size_t smallest = row;
        for (std::size_t column = 1; column <= other.size(); ++column) {
            const bool same = from_[row - 1] == other[column - 1];
            std::size_t best = std::min(
                {previous_[column] + 1, current_[column - 1] + 1, previous_[column - 1] + (same ? 0U : 1U)});
            const bool swapped = row > 1 && column > 1 && from_[row - 1] == other[column - 2] &&
                                 from_[row - 2] == other[column - 1];
            if (swapped) {
                best = std::min(best, beforePrevious_[column - 2] + 1);
            }
            current_[column] = best;
            smallest = std::min(smallest, best);
        }
        return smallest;
    }

    std::string from_;
    Letters letters_ = {};
    std::vector<std::size_t> beforePrevious_, previous_, current_;
};

/// The closest candidates so far; of equally close ones, the first.
class Closest
{
public:
    /// Returns the distance from the wanted name, with `added`; nothing if it is more than `allowed`, or not
    /// among the closest.
    [[nodiscard]] std::optional<std::size_t> distance(EditDistance& wanted, std::string_view name,
                                                      std::size_t allowed, std::size_t added = 0) const
    {
        const std::size_t limit = std::min(allowed + added, limit_);
        const auto letters = limit < added ? std::nullopt : wanted.within(name, limit - added);
        return letters ? std::optional(*letters + added) : std::nullopt;
    }

    /// Adds a candidate, and removes those that it shuts out.
    void add(std::size_t distance, std::string_view name)
    {
        const auto place = std::ranges::upper_bound(candidates_, distance, {}, &Candidate::distance);
        candidates_.insert(place, {distance, name});
        limit_ = candidates_.front().distance * 3 / 2;
        std::erase_if(candidates_, [this](const Candidate& other) { return other.distance > limit_; });
        candidates_.resize(std::min(candidates_.size(), suggestionLimit));
    }

    [[nodiscard]] std::vector<std::string_view> names() const
    {
        std::vector<std::string_view> names;
        std::ranges::transform(candidates_, std::back_inserter(names), &Candidate::name);
        return names;
    }

private:
    struct Candidate
    {
        std::size_t distance;
        std::string_view name;
    };

    std::vector<Candidate> candidates_;  // by distance
    std::size_t limit_ = maxNameLength;  // of the distance
};

}  // namespace

std::vector<std::string_view> suggestNames(std::string_view wanted, std::span<const std::string_view> names)
{
    Closest closest;
    if (wanted.size() <= maxNameLength) {
        EditDistance ofName(wanted);
        for (const std::string_view name : names) {
            if (const auto distance = closest.distance(ofName, name, ofName.allowedTo(name))) {
                closest.add(*distance, name);
            }
        }
    }
    return closest.names();
}

std::vector<std::string_view> suggestPaths(std::string_view wanted, const SettingsTree& tree)
{
    if (wanted.empty() || wanted.size() > maxNameLength) {
        return {};
    }
    const std::string prefix = tree.root()->getFullName() + ".";
    EditDistance ofPath(wanted.substr(wanted.starts_with(prefix) ? prefix.size() : 0));
    EditDistance ofLast(lastComponent(wanted));
    Closest closest;
    for (const Node* node : tree.nodes()) {
        const std::string_view path = node->fullName();
        // Letters that the groups have in common make no names similar, hence one limit for both distances.
        const std::size_t allowed = ofLast.allowedTo(node->name());
        // A match of the last component alone ranks behind a whole path at the same distance.
        const auto whole = closest.distance(ofPath, path.substr(prefix.size()), allowed);
        const auto last = closest.distance(ofLast, node->name(), allowed, 1);
        if (whole || last) {
            closest.add(whole && last ? std::min(*whole, *last) : whole ? *whole : *last, path);
        }
    }
    return closest.names();
}

std::vector<std::string_view> PathSuggestions::suggest(std::string_view wanted)
{
    if (remaining_ == 0) {
        return {};
    }
    --remaining_;
    return suggestPaths(wanted, tree_);
}

std::size_t editDistance(std::string_view left, std::string_view right, std::size_t limit)
{
    return EditDistance(left).within(right, limit).value_or(limit + 1);
}

std::string didYouMean(std::span<const std::string_view> names)
{
    std::string text;
    for (const std::string_view& name : names) {
        const bool isLast = &name == &names.back();
        text += text.empty() ? "did you mean " : isLast ? " or " : ", ";
        text += name;
    }
    return text.empty() ? text : text + "?";
}

}  // namespace vx::core
