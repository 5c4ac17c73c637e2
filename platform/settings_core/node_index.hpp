#pragma once

#include <settings_core/node.hpp>

#include <boost/unordered/unordered_flat_set.hpp>

#include <cstddef>
#include <functional>
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

/// What the nodes of one tree share: who is found under which path, and in which order they were made.
class NodeIndex
{
public:
    boost::unordered_flat_set<IndexedNode, PathHash, SamePath> byPath;
    /// Without the root.
    std::vector<const Node*> inOrder;

    void reserve(std::size_t nodes)
    {
        byPath.reserve(nodes);
        inOrder.reserve(nodes);
    }
};

}  // namespace vx::core
