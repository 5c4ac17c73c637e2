#include "tree_diff.hpp"

#include <settings_core/release_history.hpp>

#include <algorithm>
#include <array>
#include <initializer_list>
#include <unordered_set>
#include <utility>

namespace vx::tool {

namespace {

/// The facts of a node that one kind of change is about.
struct Aspect
{
    DifferenceKind kind;
    std::initializer_list<std::string_view> keys;
};

const Aspect aspects[] = {
    {DifferenceKind::changedDefault, {"node", "value", "runTimeDefault", "aliasTarget"}},
    {DifferenceKind::changedValidator, {"validator", "valueValidators", "errorHandler"}},
    {DifferenceKind::changedVisibility, {"visibility", "readOnly"}},
};

class Comparison
{
public:
    Comparison(const TreeDocument& older, const TreeDocument& newer) : older_(older), newer_(newer) {}

    std::vector<Difference> run() &&
    {
        for (const DocumentNode& node : older_.nodes()) {
            if (const DocumentNode* counterpart = newer_.find(node.path)) {
                compareFacts(node, *counterpart);
            } else {
                follow(node);
            }
        }
        for (const DocumentNode& node : newer_.nodes()) {
            if (older_.find(node.path) == nullptr && !targets_.contains(node.path)) {
                add(DifferenceKind::added, node);
            }
        }
        std::ranges::stable_sort(found_, {}, &Difference::kind);
        return std::move(found_);
    }

private:
    void add(DifferenceKind kind, const DocumentNode& node, std::string before = {}, std::string after = {})
    {
        found_.push_back({kind, node.path, std::move(before), std::move(after)});
    }

    /// Says what became of a node that is not at its path any more.
    void follow(const DocumentNode& node)
    {
        const auto steps = core::changesFrom(newer_.releaseChanges(), node.path);
        if (steps.empty()) {
            // Groups hold no values: nothing is lost with an empty one, and its settings speak for
            // themselves.
            add(node.isGroup() ? DifferenceKind::removed : DifferenceKind::lost, node);
            return;
        }
        const std::string_view target = steps.back().to;
        if (target.empty()) {
            add(DifferenceKind::removed, node, {}, std::string(steps.back().release));
        } else if (const DocumentNode* arrived = newer_.find(target)) {
            targets_.insert(target);
            add(DifferenceKind::moved, *arrived, node.path, std::string(steps.back().release));
            compareFacts(node, *arrived);
        } else {
            add(DifferenceKind::lost, node, {}, "moved to " + std::string(target) + ", which does not exist");
        }
    }

    void compareFacts(const DocumentNode& before, const DocumentNode& after)
    {
        for (const Aspect& aspect : aspects) {
            std::string old;
            std::string current;
            for (const std::string_view key : aspect.keys) {
                const std::string& was = before.facts.find(key)->second;
                const std::string& is = after.facts.find(key)->second;
                if (was != is) {
                    appendFact(old, key, was);
                    appendFact(current, key, is);
                }
            }
            if (!old.empty()) {
                add(aspect.kind, after, std::move(old), std::move(current));
            }
        }
    }

    static void appendFact(std::string& text, std::string_view key, std::string_view value)
    {
        text.append(text.empty() ? "" : ", ").append(key).append(" ").append(value);
    }

    const TreeDocument& older_;
    const TreeDocument& newer_;
    std::unordered_set<std::string_view> targets_;
    std::vector<Difference> found_;
};

}  // namespace

std::string_view kindWord(DifferenceKind kind) noexcept
{
    static constexpr std::array<std::string_view, 7> words = {"added",   "moved",     "removed",   "lost",
                                                              "default", "validator", "visibility"};
    return words[static_cast<std::size_t>(kind)];
}

std::vector<Difference> compareTrees(const TreeDocument& older, const TreeDocument& newer)
{
    return Comparison(older, newer).run();
}

}  // namespace vx::tool
