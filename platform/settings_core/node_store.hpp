#pragma once

#include <settings_core/node.hpp>

#include <boost/smart_ptr/enable_shared_from_this.hpp>
#include <boost/unordered/unordered_flat_set.hpp>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <memory_resource>
#include <span>
#include <string_view>
#include <vector>

namespace vx::core {

/// The nodes of one tree: their memory, their order, and who is found under which path. They go together,
/// when the tree and the last handle of any of them are gone.
class NodeStore : public boost::enable_shared_from_this<NodeStore>
{
public:
    /// Makes the root group. Raises std::invalid_argument for a name that no node can have.
    explicit NodeStore(std::string_view rootName);
    NodeStore(const NodeStore&) = delete;
    NodeStore& operator=(const NodeStore&) = delete;
    ~NodeStore();

    /// Makes a node under one of these groups. Raises std::invalid_argument when there is a node of that
    /// path; what fails leaves the tree as it was.
    Node& add(Node& parent, std::string_view name, NodeKind kind, const Node::Properties& properties);

    /// Null for a path that no node has.
    [[nodiscard]] const Node* find(std::string_view path) const noexcept;

    /// In the order in which they were made, the root first.
    [[nodiscard]] std::span<Node* const> nodes() const noexcept { return nodes_; }

private:
    struct Destroy
    {
        void operator()(Node* node) const noexcept { std::destroy_at(node); }
    };
    using NewNode = std::unique_ptr<Node, Destroy>;

    /// Place of a node in nodes(). Half a pointer, and enough for more nodes than memory holds: the smaller
    /// the index, the less of a large one lies outside the processor's caches.
    using Number = std::uint32_t;
    using Hash = std::uint32_t;

    /// A path is found as the number of the node that has it.
    struct PathHash
    {
        using is_transparent = void;

        std::size_t operator()(Number node) const noexcept { return store->hashes_[node]; }
        std::size_t operator()(std::string_view path) const noexcept { return hashOf(path); }

        const NodeStore* store;
    };

    struct SamePath
    {
        using is_transparent = void;

        bool operator()(Number left, Number right) const noexcept
        {
            return store->hashes_[left] == store->hashes_[right] && store->path(left) == store->path(right);
        }
        bool operator()(std::string_view path, Number node) const noexcept
        {
            return path == store->path(node);
        }
        bool operator()(Number node, std::string_view path) const noexcept
        {
            return path == store->path(node);
        }

        const NodeStore* store;
    };

    static Hash hashOf(std::string_view path) noexcept
    {
        return static_cast<Hash>(std::hash<std::string_view>{}(path));
    }
    std::string_view path(Number node) const noexcept { return nodes_[node]->fullName(); }

    NewNode make(const Node* parent, std::string_view name, NodeKind kind,
                 const Node::Properties& properties);
    Node& enter(NewNode node);

    std::pmr::monotonic_buffer_resource memory_;
    std::vector<Node*> nodes_;
    std::vector<Hash> hashes_;  ///< of the paths, so that a growing index need not read them again
    boost::unordered_flat_set<Number, PathHash, SamePath> byPath_;
};

}  // namespace vx::core
