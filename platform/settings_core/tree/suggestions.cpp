#include <settings_core/tree/settings_tree.hpp>
#include <settings_core/tree/suggestions.hpp>

#include <algorithm>
#include <cstddef>
#include <iterator>
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
    explicit EditDistance(std::string_view from) : from_(inLowerCase(from)) {}

    [[nodiscard]] std::size_t allowed() const { return std::max<std::size_t>(1, from_.size() / 3); }

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

private:
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
    std::vector<std::size_t> beforePrevious_, previous_, current_;
};

struct Candidate
{
    std::size_t distance;
    std::string_view name;
};

/// Returns the names of the closest candidates.
std::vector<std::string_view> closest(std::vector<Candidate> candidates)
{
    std::ranges::stable_sort(candidates, {}, &Candidate::distance);
    candidates.resize(std::min(candidates.size(), suggestionLimit));
    std::vector<std::string_view> names;
    std::ranges::transform(candidates, std::back_inserter(names), &Candidate::name);
    return names;
}

}  // namespace

std::vector<std::string_view> suggestNames(std::string_view wanted, std::span<const std::string_view> names)
{
    std::vector<Candidate> candidates;
    if (wanted.size() <= maxNameLength) {
        EditDistance distance(wanted);
        for (const std::string_view name : names) {
            const std::size_t letters = distance.to(name, distance.allowed());
            if (letters <= distance.allowed()) {
                candidates.push_back({letters, name});
            }
        }
    }
    return closest(std::move(candidates));
}

std::vector<std::string_view> suggestPaths(std::string_view wanted, const SettingsTree& tree)
{
    if (wanted.empty() || wanted.size() > maxNameLength) {
        return {};
    }
    const std::string prefix = tree.root()->getFullName() + ".";
    EditDistance ofPath(wanted.substr(wanted.starts_with(prefix) ? prefix.size() : 0));
    EditDistance ofLast(lastComponent(wanted));
    std::vector<Candidate> candidates;
    for (const Node* node : tree.nodes()) {
        const std::string_view path = node->fullName();
        const std::size_t whole = ofPath.to(path.substr(prefix.size()), ofPath.allowed());
        const std::size_t last = ofLast.to(node->name(), ofLast.allowed());
        // A match of the last component alone ranks behind a whole path at the same distance.
        const bool wholeIsSimilar = whole <= ofPath.allowed();
        if (wholeIsSimilar || last <= ofLast.allowed()) {
            candidates.push_back({wholeIsSimilar ? std::min(whole, last + 1) : last + 1, path});
        }
    }
    return closest(std::move(candidates));
}

std::size_t editDistance(std::string_view left, std::string_view right)
{
    return EditDistance(left).to(right, std::max(left.size(), right.size()));
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
