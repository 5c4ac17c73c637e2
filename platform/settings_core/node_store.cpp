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

/// What a provider of a whole environment makes, so that the index of its tree need not grow on the way.
constexpr std::size_t usualNumberOfNodes = 1536;

/// Bytes of the first block of nodes and paths; each block after it is larger.
constexpr std::size_t firstBlock = 64 << 10;

/// Makes the next push_back one that cannot fail.
template <class Elements>
void reserveOneMore(Elements& elements)
{
    constexpr std::size_t smallest = 4;
    if (elements.size() == elements.capacity()) {
        elements.reserve(std::max(smallest, 2 * elements.size()));
    }
}

}  // namespace

NodeStore::NodeStore(std::string_view rootName) : memory_(firstBlock)
{
    byPath_.reserve(usualNumberOfNodes);
    nodes_.reserve(usualNumberOfNodes);
    NewNode root = make(nullptr, rootName, NodeKind::group, {false, false, {}, {}, {}, false, false, {}});
    byPath_.insert(IndexedNode(*root));
    nodes_.push_back(root.release());
}

NodeStore::~NodeStore()
{
    std::for_each(nodes_.rbegin(), nodes_.rend(), Destroy());
}

Node& NodeStore::add(Node& parent, std::string_view name, NodeKind kind, const Node::Properties& properties)
{
    // Everything that can fail comes before the first change.
    NewNode node = make(&parent, name, kind, properties);
    reserveOneMore(parent.children_);
    reserveOneMore(nodes_);
    if (!byPath_.insert(IndexedNode(*node)).second) {
        throw std::invalid_argument(node->getFullName() +
                                    " exists already: a name can be used once under one group, so rename "
                                    "this node or remove the other.");
    }
    parent.children_.push_back(node.get());
    return *nodes_.emplace_back(node.release());
}

const Node* NodeStore::find(std::string_view path) const noexcept
{
    const auto found = byPath_.find(path);
    return found == byPath_.end() ? nullptr : found->node;
}

NodeStore::NewNode NodeStore::make(const Node* parent, std::string_view name, NodeKind kind,
                                   const Node::Properties& properties)
{
    requireName(parent, name);
    const std::string_view path = joinPath(parent, name);
    void* const place = memory_.allocate(sizeof(Node), alignof(Node));
    return NewNode(new (place) Node(*this, memory_, parent, path, kind, properties));
}

/// The text lives as long as the nodes do.
std::string_view NodeStore::joinPath(const Node* parent, std::string_view name)
{
    const std::string_view above = parent == nullptr ? std::string_view() : parent->fullName();
    const std::size_t start = parent == nullptr ? 0 : above.size() + 1;
    const std::size_t size = start + name.size();
    auto* const text = static_cast<char*>(memory_.allocate(size, 1));
    if (parent != nullptr) {
        *std::copy(above.begin(), above.end(), text) = '.';
    }
    std::copy(name.begin(), name.end(), text + start);
    return {text, size};
}

}  // namespace vx::core
