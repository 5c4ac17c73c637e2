#include <settings_core/tree/node_store.hpp>

#include <algorithm>
#include <stdexcept>

namespace vx::core {

namespace {

void requireValidName(const Node* parent, std::string_view name)
{
    if (name.empty() || name.find('.') != std::string_view::npos) {
        throw std::invalid_argument("\"" + std::string(name) + "\" " +
                                    (parent == nullptr ? "as the root" : "under " + parent->getFullName()) +
                                    " is not the name of a node: give one component of a path, not empty and "
                                    "without dots.");
    }
}

/// Initial capacity in nodes: more than the provider of a whole environment creates, so that nothing is
/// reallocated while its tree is built.
constexpr std::size_t initialCapacity = 1536;

/// Factor by which the hash index grows. Rehashing is expensive and the index takes only a few bytes per
/// node, so it may be larger than needed.
constexpr std::size_t indexGrowthFactor = 8;

/// Bytes of the arena's first block. Each further block is 1.5 times as large, so that the tree of a whole
/// environment takes three.
constexpr std::size_t firstBlockSize = 72 << 10;

}  // namespace

NodeStore::NodeStore(std::string_view rootName)
    : arena_(firstBlockSize), byPath_(initialCapacity, PathHash{this}, SamePath{this})
{
    nodes_.reserve(initialCapacity);
    hashes_.reserve(initialCapacity);
    insert(create(nullptr, rootName, NodeKind::group, {false, false, {}, {}, {}, false, false, {}}));
}

NodeStore::~NodeStore()
{
    std::for_each(nodes_.rbegin(), nodes_.rend(), Destroy());
}

Node& NodeStore::add(Node& parent, std::string_view name, NodeKind kind, const Node::Properties& properties)
{
    Node& node = insert(create(&parent, name, kind, properties));
    parent.children_.push_back(node);
    return node;
}

/// Appends a node and indexes it by its path. On an exception the store is unchanged.
Node& NodeStore::insert(NewNode node)
{
    // Nothing after the first push_back allocates memory, so std::bad_alloc leaves the store unchanged.
    const std::size_t count = nodes_.size();
    if (count == nodes_.capacity()) {
        nodes_.reserve(2 * count);
    }
    if (count == byPath_.max_load()) {
        byPath_.reserve(indexGrowthFactor * count);
    }
    hashes_.push_back(hashOf(node->fullName()));
    nodes_.push_back(node.get());
    if (!byPath_.insert(static_cast<NodeIndex>(count)).second) {
        nodes_.pop_back();
        hashes_.pop_back();
        throw std::invalid_argument(node->getFullName() +
                                    " exists already: names are unique within a group, so rename this node "
                                    "or remove the other.");
    }
    return *node.release();
}

const Node* NodeStore::find(std::string_view path) const noexcept
{
    const auto found = byPath_.find(path);
    return found == byPath_.end() ? nullptr : nodes_[*found];
}

/// Creates a node in the arena, with the characters of its path directly after it.
NodeStore::NewNode NodeStore::create(const Node* parent, std::string_view name, NodeKind kind,
                                     const Node::Properties& properties)
{
    requireValidName(parent, name);
    const std::size_t prefix = parent == nullptr ? 0 : parent->fullName().size() + 1;
    void* const place = arena_.allocate(sizeof(Node) + prefix + name.size(), alignof(Node));
    char* const path = static_cast<char*>(place) + sizeof(Node);
    if (parent != nullptr) {
        *std::copy_n(parent->fullName().data(), prefix - 1, path) = '.';
    }
    std::copy_n(name.data(), name.size(), path + prefix);
    return NewNode(new (place) Node(*this, parent, {path, prefix + name.size()}, kind, properties));
}

}  // namespace vx::core
