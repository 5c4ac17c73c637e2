#include <settings_core/node_store.hpp>

#include <algorithm>
#include <stdexcept>

namespace vx::core {

namespace {

void requireName(const Node* parent, std::string_view name)
{
    if (name.empty() || name.find('.') != std::string_view::npos) {
        throw std::invalid_argument("\"" + std::string(name) + "\" " +
                                    (parent == nullptr ? "as the root" : "under " + parent->getFullName()) +
                                    " is not the name of a node: give one component of a path, not empty and "
                                    "without dots.");
    }
}

/// More than a provider of a whole environment makes, so that nothing needs to grow for it on the way.
constexpr std::size_t usualNumberOfNodes = 1536;

/// The index takes a few bytes of each node's hundreds, and to move its entries is dear: it may be too large
/// for a while.
constexpr std::size_t growthOfIndex = 8;

/// Bytes of the first block of nodes and paths; each block after it is half as large again, so that a usual
/// tree takes three.
constexpr std::size_t firstBlock = 72 << 10;

}  // namespace

NodeStore::NodeStore(std::string_view rootName)
    : memory_(firstBlock), byPath_(usualNumberOfNodes, PathHash{this}, SamePath{this})
{
    nodes_.reserve(usualNumberOfNodes);
    hashes_.reserve(usualNumberOfNodes);
    enter(make(nullptr, rootName, NodeKind::group, {false, false, {}, {}, {}, false, false, {}}));
}

NodeStore::~NodeStore()
{
    std::for_each(nodes_.rbegin(), nodes_.rend(), Destroy());
}

Node& NodeStore::add(Node& parent, std::string_view name, NodeKind kind, const Node::Properties& properties)
{
    Node& node = enter(make(&parent, name, kind, properties));
    parent.children_.push_back(node);
    return node;
}

/// Numbers a node and has it found by its path, or leaves everything as it was.
Node& NodeStore::enter(NewNode node)
{
    // Memory can run out up to the first change, and not after it.
    const std::size_t count = nodes_.size();
    if (count == nodes_.capacity()) {
        nodes_.reserve(2 * count);
    }
    if (count == byPath_.max_load()) {
        byPath_.reserve(growthOfIndex * count);
    }
    hashes_.push_back(hashOf(node->fullName()));
    nodes_.push_back(node.get());
    if (!byPath_.insert(static_cast<Number>(count)).second) {
        nodes_.pop_back();
        hashes_.pop_back();
        throw std::invalid_argument(node->getFullName() +
                                    " exists already: a name can be used once under one group, so rename "
                                    "this node or remove the other.");
    }
    return *node.release();
}

const Node* NodeStore::find(std::string_view path) const noexcept
{
    const auto found = byPath_.find(path);
    return found == byPath_.end() ? nullptr : nodes_[*found];
}

/// A node and behind it, in the same piece of memory, its path.
NodeStore::NewNode NodeStore::make(const Node* parent, std::string_view name, NodeKind kind,
                                   const Node::Properties& properties)
{
    requireName(parent, name);
    const std::size_t above = parent == nullptr ? 0 : parent->fullName().size() + 1;
    void* const place = memory_.allocate(sizeof(Node) + above + name.size(), alignof(Node));
    char* const path = static_cast<char*>(place) + sizeof(Node);
    if (parent != nullptr) {
        *std::copy_n(parent->fullName().data(), above - 1, path) = '.';
    }
    std::copy_n(name.data(), name.size(), path + above);
    return NewNode(new (place) Node(*this, parent, {path, above + name.size()}, kind, properties));
}

}  // namespace vx::core
