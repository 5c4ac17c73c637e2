#include "tree_diff.hpp"

#include <settings_core/constraints/constraints.hpp>
#include <settings_core/files/text_position.hpp>
#include <settings_core/releases/release_history.hpp>
#include <settings_core/values/value_format.hpp>

#include <foundation/verdixdata/text.hpp>

#include <algorithm>
#include <array>
#include <limits>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "json.hpp"
#include "tree_json.hpp"

namespace vx::review {

namespace {

using core::Node;
using core::NodeKind;
using foundation::verdixdata::Array;
using foundation::verdixdata::ArrayType;

constexpr std::array<std::string_view, differenceKindCount> kindLabels = {
    "added",          "moved",         "removed",
    "lost",           "node",          "class",
    "size",           "default",       "constraint",
    "validator",      "error-handler", "run-time-default",
    "computed-value", "visibility",    "effective-visibility",
    "read-only",      "alias-target",  "additional-file",
    "order"};

std::string formatWhole(const Array& value)
{
    return value.isAssigned() ? core::formatValueOnOneLine(value, std::numeric_limits<std::size_t>::max())
                              : "none";
}

/// Returns the beginning of a long value, for people.
std::string shorten(std::string text)
{
    constexpr std::size_t limit = 200;
    const std::size_t length = core::validUtf8PrefixLength(std::string_view(text).substr(0, limit));
    return text.size() <= limit ? std::move(text) : text.substr(0, length) + "…";
}

std::string formatWithClass(const Array& value)
{
    return value.isAssigned() ? shorten(formatWhole(value)) + " (" + core::formatClassAndSize(value) + ")"
                              : "none";
}

// Properties that are compared by their descriptions

std::string describeNode(const Node& node)
{
    return std::string(core::kindLabel(node.kind()));
}

template <auto member>
std::string describeFunction(const Node& node)
{
    std::string text;
    appendJson(text, functionJson(node.properties().*member), JsonStyle::brief);
    return text == "null" ? "none" : text;
}

std::string describeErrorHandler(const Node& node)
{
    return node.properties().errorHandler ? "present" : "none";
}

std::string describeVisibility(const Node& node)
{
    return std::string(core::visibilityLabel(node));
}

std::string describeAccess(const Node& node)
{
    const auto& flag = node.properties().readOnly;
    return flag.isWritten() ? flag.value() ? "true" : "false" : "default";
}

std::string describeTarget(const Node& node)
{
    const std::string& target = node.properties().aliasName();
    return target.empty() ? "none" : target;
}

std::string describeAdditionalFile(const Node& node)
{
    return node.properties().additionalFile ? "true" : "false";
}

struct Property
{
    DifferenceKind kind;
    std::string (*describe)(const Node& node);
};

using Properties = Node::Properties;

constexpr auto properties = std::to_array<Property>({
    {DifferenceKind::node, describeNode},
    {DifferenceKind::validator, describeFunction<&Properties::validator>},
    {DifferenceKind::errorHandler, describeErrorHandler},
    {DifferenceKind::runTimeDefault, describeFunction<&Properties::runTimeDefault>},
    {DifferenceKind::visibility, describeVisibility},
    {DifferenceKind::readOnly, describeAccess},
    {DifferenceKind::aliasTarget, describeTarget},
    {DifferenceKind::additionalFile, describeAdditionalFile},
});

// Constraints

/// Returns the constraints of the value validators in the notation of exported trees, which is exact.
std::string exactConstraints(const Node& node)
{
    std::string text;
    appendJson(text, constraintsJson(node), JsonStyle::brief);
    return text;
}

std::string listMissing(const std::vector<std::u16string_view>& strings,
                        const std::vector<std::u16string_view>& others)
{
    std::string list;
    for (const std::u16string_view string : strings) {
        if (std::ranges::find(others, string) == others.end()) {
            list += (list.empty() ? "" : ", ") + foundation::verdixdata::toUtf8(string);
        }
    }
    return list;
}

/// Returns the allowed strings that were added and removed; empty if that is not what differs.
std::string summariseAllowed(const Node& before, const Node& after)
{
    const core::Constraint old = core::constraintOf(before.properties());
    const core::Constraint current = core::constraintOf(after.properties());
    if (!old.allowedStrings || !current.allowedStrings) {
        return "";
    }
    const std::string added = listMissing(*current.allowedStrings, *old.allowedStrings);
    const std::string removed = listMissing(*old.allowedStrings, *current.allowedStrings);
    std::string summary = added.empty() ? "" : "also allows: " + added;
    if (!removed.empty()) {
        summary += (summary.empty() ? "" : "; ") + ("no longer allows: " + removed);
    }
    return summary;
}

// Order

/// Returns whether each number belongs to a longest increasing subsequence.
std::vector<bool> inLongestIncreasing(const std::vector<std::size_t>& numbers)
{
    std::vector<std::size_t> lengths;
    std::vector<std::size_t> tails;  // the smallest last number of a subsequence, by length - 1
    for (const std::size_t number : numbers) {
        const auto tail = std::ranges::lower_bound(tails, number);
        lengths.push_back(static_cast<std::size_t>(tail - tails.begin()) + 1);
        if (tail == tails.end()) {
            tails.push_back(number);
        } else {
            *tail = number;
        }
    }
    std::vector<bool> belongs(numbers.size());
    std::size_t wanted = tails.size();
    std::size_t upper = std::numeric_limits<std::size_t>::max();
    for (std::size_t i = numbers.size(); i-- > 0;) {
        if (lengths[i] == wanted && numbers[i] < upper) {
            belongs[i] = true;
            upper = numbers[i];
            --wanted;
        }
    }
    return belongs;
}

std::string placeAfter(const Node* sibling)
{
    return sibling == nullptr ? "first in its group" : "after " + std::string(sibling->name());
}

class Comparison
{
public:
    Comparison(const ReleaseTree& older, const ReleaseTree& newer)
        : older_(older), newer_(newer), history_(newer.releaseChanges)
    {}

    std::vector<Difference> run() &&
    {
        compareOrder(*older_.tree.root(), *newer_.tree.root());
        for (const Node* node : older_.tree.nodes()) {
            if (const Node* counterpart = newer_.tree.find(node->fullName())) {
                compareNodes(*node, *counterpart);
                compareOrder(*node, *counterpart);
            } else {
                addMissing(*node);
            }
        }
        for (const Node* node : newer_.tree.nodes()) {
            if (older_.tree.find(node->fullName()) == nullptr && !targets_.contains(node)) {
                add(DifferenceKind::added, *node);
            }
        }
        std::ranges::stable_sort(found_, {}, &Difference::kind);
        return std::move(found_);
    }

private:
    void add(DifferenceKind kind, const Node& node, std::string before = {}, std::string after = {},
             std::string summary = {})
    {
        found_.push_back({kind, node.getFullName(), std::move(before), std::move(after), std::move(summary)});
    }

    void addIfDifferent(DifferenceKind kind, const Node& node, std::string before, std::string after)
    {
        if (before != after) {
            add(kind, node, std::move(before), std::move(after));
        }
    }

    /// Adds the difference for an old node whose path does not exist any more.
    void addMissing(const Node& node)
    {
        const auto steps = history_.changesFrom(node.fullName());
        if (steps.empty()) {
            // A group has no value to lose; its settings are compared by themselves.
            add(node.kind() == NodeKind::group ? DifferenceKind::removed : DifferenceKind::lost, node);
            return;
        }
        const std::string_view target = steps.back().to;
        if (target.empty()) {
            add(DifferenceKind::removed, node, {}, std::string(steps.back().release));
        } else if (const Node* arrived = newer_.tree.find(target)) {
            targets_.insert(arrived);
            add(DifferenceKind::moved, *arrived, node.getFullName(), std::string(steps.back().release));
            if (older_.tree.find(target) == nullptr) {
                compareNodes(node, *arrived);
            }
        } else {
            add(DifferenceKind::lost, node, {}, "moved to " + std::string(target) + ", which does not exist");
        }
    }

    void compareNodes(const Node& before, const Node& after)
    {
        for (const auto& [kind, describe] : properties) {
            addIfDifferent(kind, after, describe(before), describe(after));
        }
        compareValues(before, after);
        compareConstraints(before, after);
        addIfDifferent(DifferenceKind::computedValue, after, describeComputed(older_, before),
                       describeComputed(newer_, after));
        compareEffectiveVisibility(before, after);
    }

    void compareValues(const Node& before, const Node& after)
    {
        const Array& old = before.properties().factoryValue;
        const Array& current = after.properties().factoryValue;
        if (old.getType() != current.getType()) {
            add(DifferenceKind::valueClass, after, formatWithClass(old), formatWithClass(current));
        } else if (hasFixedSize(old) && old.getDimensions() != current.getDimensions()) {
            add(DifferenceKind::size, after, formatWithClass(old), formatWithClass(current));
        } else {
            std::string oldText = formatWhole(old);
            std::string text = formatWhole(current);
            if (oldText != text) {
                add(DifferenceKind::defaultValue, after, shorten(std::move(oldText)),
                    shorten(std::move(text)));
            }
        }
    }

    /// Whether the size of a factory value restricts other values.
    static bool hasFixedSize(const Array& value)
    {
        return value.isAssigned() && value.getType() != ArrayType::CHAR && value.getType() != ArrayType::CELL;
    }

    void compareConstraints(const Node& before, const Node& after)
    {
        std::string old = exactConstraints(before);
        std::string current = exactConstraints(after);
        if (old == current) {
            return;
        }
        std::string oldWords = core::describeConstraint(before.properties());
        std::string words = core::describeConstraint(after.properties());
        if (oldWords != words) {
            old = std::move(oldWords);
            current = std::move(words);
        }
        add(DifferenceKind::constraint, after, std::move(old), std::move(current),
            summariseAllowed(before, after));
    }

    static std::string describeComputed(const ReleaseTree& release, const Node& node)
    {
        const auto computed = release.computedValues.find(node.fullName());
        return computed == release.computedValues.end() ? "none" : formatWithClass(computed->second);
    }

    void compareEffectiveVisibility(const Node& before, const Node& after)
    {
        const bool isInherited = before.fullName() == after.fullName() &&
                                 before.parent()->isHidden() != after.parent()->isHidden();
        if (!isInherited && core::visibilityLabel(before) == core::visibilityLabel(after)) {
            const auto label = [](const Node& node) { return node.isHidden() ? "hidden" : "visible"; };
            addIfDifferent(DifferenceKind::effectiveVisibility, after, label(before), label(after));
        }
    }

    /// Compares the order of the children that both groups have.
    void compareOrder(const Node& before, const Node& after)
    {
        std::unordered_map<std::string_view, std::pair<std::size_t, const Node*>> formerPlaces;
        for (const Node* previous = nullptr; const Node& child : before.children()) {
            formerPlaces.emplace(child.name(), std::pair(formerPlaces.size(), previous));
            previous = &child;
        }
        std::vector<std::size_t> formerIndices;
        std::vector<std::pair<const Node*, const Node*>> common;  // with the previous sibling
        for (const Node* previous = nullptr; const Node& child : after.children()) {
            if (const auto former = formerPlaces.find(child.name()); former != formerPlaces.end()) {
                formerIndices.push_back(former->second.first);
                common.emplace_back(&child, previous);
            }
            previous = &child;
        }
        const std::vector<bool> isInOrder = inLongestIncreasing(formerIndices);
        for (std::size_t i = 0; i < common.size(); ++i) {
            if (!isInOrder[i]) {
                const auto& [child, previous] = common[i];
                add(DifferenceKind::order, *child, placeAfter(formerPlaces.at(child->name()).second),
                    placeAfter(previous));
            }
        }
    }

    const ReleaseTree& older_;
    const ReleaseTree& newer_;
    const core::ReleaseHistory history_;  // of the newer
    std::unordered_set<const Node*> targets_;
    std::vector<Difference> found_;
};

}  // namespace

std::string_view kindLabel(DifferenceKind kind) noexcept
{
    return kindLabels[static_cast<std::size_t>(kind)];
}

std::optional<DifferenceKind> differenceKindNamed(std::string_view label) noexcept
{
    const auto found = std::ranges::find(kindLabels, label);
    return found == kindLabels.end() ? std::nullopt
                                     : std::optional(static_cast<DifferenceKind>(found - kindLabels.begin()));
}

std::string describeDifference(const Difference& difference)
{
    if (!difference.summary.empty()) {
        return difference.summary;
    }
    switch (difference.kind) {
    case DifferenceKind::added:
        return "";
    case DifferenceKind::moved:
        return "from " + difference.before + " in " + difference.after;
    case DifferenceKind::removed:
        return difference.after.empty() ? "" : "in " + difference.after;
    case DifferenceKind::lost:
        return difference.after.empty() ? "no release change mentions it" : difference.after;
    default:
        return difference.before + " -> " + difference.after;
    }
}

std::vector<Difference> compareTrees(const ReleaseTree& older, const ReleaseTree& newer)
{
    return Comparison(older, newer).run();
}

}  // namespace vx::review
