#pragma once

#include <settings_core/tree/node.hpp>

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

/// Owns the nodes of one tree, in an arena, and indexes them by path. Reference-counted: it lives as long as
/// the tree or a shared pointer to any of its nodes.
class NodeStore : public boost::enable_shared_from_this<NodeStore>
{
public:
    /// Creates the root group. Throws std::invalid_argument for an invalid name.
    explicit NodeStore(std::string_view rootName);
    NodeStore(const NodeStore&) = delete;
    NodeStore& operator=(const NodeStore&) = delete;
    ~NodeStore();

    /// Creates a node under `parent`, a group of this store, and returns it. Throws std::invalid_argument for
    /// an invalid name or a path that exists. On any exception the tree is unchanged.
    Node& add(Node& parent, std::string_view name, NodeKind kind, const Node::Properties& properties);

    /// Returns the node at a full path, or null.
    [[nodiscard]] const Node* find(std::string_view path) const noexcept;

    /// Returns all nodes in creation order, the root first.
    [[nodiscard]] std::span<Node* const> nodes() const noexcept { return nodes_; }

private:
    struct Destroy
    {
        void operator()(Node* node) const noexcept { std::destroy_at(node); }
    };
    using NewNode = std::unique_ptr<Node, Destroy>;

    /// Index of a node in nodes(). Four bytes are enough for any tree that fits into memory, and keep the
    /// hash index small: more of it fits into the processor's caches.
    using NodeIndex = std::uint32_t;
    using Hash = std::uint32_t;

    /// Hash and equality of nodes by path; transparent, so that a path can be looked up without a node.
    struct PathHash
    {
        using is_transparent = void;

        std::size_t operator()(NodeIndex node) const noexcept { return store->hashes_[node]; }
        std::size_t operator()(std::string_view path) const noexcept { return hashOf(path); }

        const NodeStore* store;
    };

    struct SamePath
    {
        using is_transparent = void;

        bool operator()(NodeIndex left, NodeIndex right) const noexcept
        {
            return store->hashes_[left] == store->hashes_[right] && store->path(left) == store->path(right);
        }
        bool operator()(std::string_view path, NodeIndex node) const noexcept
        {
            return path == store->path(node);
        }
        bool operator()(NodeIndex node, std::string_view path) const noexcept
        {
            return path == store->path(node);
        }

        const NodeStore* store;
    };

    static Hash hashOf(std::string_view path) noexcept
    {
        return static_cast<Hash>(std::hash<std::string_view>{}(path));
    }
    std::string_view path(NodeIndex node) const noexcept { return nodes_[node]->fullName(); }

    NewNode create(const Node* parent, std::string_view name, NodeKind kind,
                   const Node::Properties& properties);
    Node& insert(NewNode node);

    std::pmr::monotonic_buffer_resource arena_;
    std::vector<Node*> nodes_;
    std::vector<Hash> hashes_;  ///< of the paths; rehashing byPath_ then need not read the paths
    boost::unordered_flat_set<NodeIndex, PathHash, SamePath> byPath_;
};

}  // namespace vx::core
