#pragma once

#include <settings_core/node.hpp>

#include <boost/smart_ptr/enable_shared_from_this.hpp>
#include <boost/unordered/unordered_flat_set.hpp>

#include <cstddef>
#include <functional>
#include <memory>
#include <memory_resource>
#include <span>
#include <string_view>
#include <vector>

namespace vx::core {

/// A node beside the hash of its path, so that a growing index need not read the paths again.
struct IndexedNode
{
    explicit IndexedNode(const Node& indexed) noexcept
        : hash(std::hash<std::string_view>{}(indexed.fullName())), node(&indexed)
    {}

    std::size_t hash;
    const Node* node;
};

/// A path is found as the node that has it.
struct PathHash
{
    using is_transparent = void;

    std::size_t operator()(const IndexedNode& indexed) const noexcept { return indexed.hash; }
    std::size_t operator()(std::string_view path) const noexcept
    {
        return std::hash<std::string_view>{}(path);
    }
};

struct SamePath
{
    using is_transparent = void;

    bool operator()(const IndexedNode& left, const IndexedNode& right) const noexcept
    {
        return left.hash == right.hash && left.node->fullName() == right.node->fullName();
    }
    bool operator()(std::string_view path, const IndexedNode& indexed) const noexcept
    {
        return path == indexed.node->fullName();
    }
    bool operator()(const IndexedNode& indexed, std::string_view path) const noexcept
    {
        return path == indexed.node->fullName();
    }
};

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

    NewNode make(const Node* parent, std::string_view name, NodeKind kind,
                 const Node::Properties& properties);
    std::string_view joinPath(const Node* parent, std::string_view name);

    std::pmr::monotonic_buffer_resource memory_;
    boost::unordered_flat_set<IndexedNode, PathHash, SamePath> byPath_;
    std::vector<Node*> nodes_;
};

}  // namespace vx::core
