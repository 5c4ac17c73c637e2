#include "tree_diff.hpp"

#include <settings_core/releases/release_history.hpp>

#include <algorithm>
#include <initializer_list>
#include <unordered_set>
#include <utility>

#include "json.hpp"

namespace vx::review {

namespace {

namespace json = boost::json;

/// The properties whose differences form one kind of difference.
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

std::string briefJson(const json::value& value)
{
    std::string text;
    appendJson(text, value, JsonStyle::brief);
    return text;
}

/// Whether two values are written alike: a whole number may be an integer in one and a double in the other.
bool isSame(const json::value& left, const json::value& right)
{
    return left == right || briefJson(left) == briefJson(right);
}

void appendProperty(std::string& text, std::string_view key, const json::value& value)
{
    text.append(text.empty() ? "" : ", ").append(key).append(" ").append(briefJson(value));
}

class Comparison
{
public:
    Comparison(const TreeDocument& older, const TreeDocument& newer) : older_(older), newer_(newer) {}

    std::vector<Difference> run() &&
    {
        for (const DocumentNode& node : older_.nodes()) {
            if (const DocumentNode* counterpart = newer_.find(node.path)) {
                compareProperties(node, *counterpart);
            } else {
                addMissing(node);
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

    /// Adds the difference for an old node whose path does not exist any more.
    void addMissing(const DocumentNode& node)
    {
        const auto steps = core::changesFrom(newer_.releaseChanges(), node.path);
        if (steps.empty()) {
            // A group has no value to lose; its settings are compared by themselves.
            add(node.isGroup() ? DifferenceKind::removed : DifferenceKind::lost, node);
            return;
        }
        const std::string_view target = steps.back().to;
        if (target.empty()) {
            add(DifferenceKind::removed, node, {}, std::string(steps.back().release));
        } else if (const DocumentNode* arrived = newer_.find(target)) {
            targets_.insert(target);
            add(DifferenceKind::moved, *arrived, node.path, std::string(steps.back().release));
            compareProperties(node, *arrived);
        } else {
            add(DifferenceKind::lost, node, {}, "moved to " + std::string(target) + ", which does not exist");
        }
    }

    void compareProperties(const DocumentNode& before, const DocumentNode& after)
    {
        for (const Aspect& aspect : aspects) {
            std::string old;
            std::string current;
            for (const std::string_view key : aspect.keys) {
                const json::value& was = before.properties.at(key);
                const json::value& is = after.properties.at(key);
                if (!isSame(was, is)) {
                    appendProperty(old, key, was);
                    appendProperty(current, key, is);
                }
            }
            if (!old.empty()) {
                add(aspect.kind, after, std::move(old), std::move(current));
            }
        }
    }

    const TreeDocument& older_;
    const TreeDocument& newer_;
    std::unordered_set<std::string_view> targets_;
    std::vector<Difference> found_;
};

}  // namespace

std::string_view kindLabel(DifferenceKind kind) noexcept
{
    static constexpr std::string_view labels[] = {"added",   "moved",     "removed",   "lost",
                                                  "default", "validator", "visibility"};
    return labels[static_cast<std::size_t>(kind)];
}

std::vector<Difference> compareTrees(const TreeDocument& older, const TreeDocument& newer)
{
    return Comparison(older, newer).run();
}

}  // namespace vx::review
