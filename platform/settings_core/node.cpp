#include <settings_core/node_index.hpp>
#include <settings_core/settings_tree.hpp>

#include <boost/smart_ptr/make_shared.hpp>

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace vx::core {

namespace {

std::string joinPath(std::string_view parent, std::string_view name)
{
    std::string path;
    path.reserve(parent.size() + 1 + name.size());
    return path.append(parent).append(1, '.').append(name);
}

NodeKind kindOf(bool isSetting, const Node::Properties& properties)
{
    if (!isSetting) {
        return NodeKind::group;
    }
    return properties.aliasName().empty() ? NodeKind::setting : NodeKind::alias;
}

/// `where` are texts that follow the name in the message.
void requireName(std::string_view name, std::string_view where, std::string_view parent = {})
{
    if (name.empty() || name.find('.') != std::string_view::npos) {
        throw std::invalid_argument("\"" + std::string(name) + "\" " + std::string(where) +
                                    std::string(parent) +
                                    " is not the name of a node: give one component of a path, not empty and "
                                    "without dots.");
    }
}

/// What a provider of a whole environment makes, so that the index of its tree need not grow on the way.
constexpr std::size_t usualNumberOfNodes = 1536;

/// Makes the next push_back one that cannot fail.
template <class T>
void reserveOneMore(std::vector<T>& elements)
{
    constexpr std::size_t smallest = 4;
    if (elements.size() == elements.capacity()) {
        elements.reserve(std::max(smallest, 2 * elements.size()));
    }
}

}  // namespace

Node::Node(std::string name, NodeIndex& index)
    : fullName_(std::move(name)),
      parent_(nullptr),
      kind_(NodeKind::group),
      properties_(false, false, {}, {}, {}, false, false, {}),
      index_(&index)
{
    requireName(fullName_, "as the root");
}

Node::Node(const Node& parent, std::string_view name, bool isSetting, const Properties& properties)
    : fullName_(joinPath(parent.fullName_, name)),
      parent_(&parent),
      kind_(kindOf(isSetting, properties)),
      properties_(properties),
      index_(parent.index_)
{}

boost::shared_ptr<::settings::core::MSettings>
Node::createFactorySetting(const std::string& name, bool isSetting, const Properties& properties)
{
    if (kind_ != NodeKind::group) {
        throw std::invalid_argument(fullName_ + " is a setting and cannot have the child \"" + name +
                                    "\": create it under a group.");
    }
    requireName(name, "under ", fullName_);

    // Everything that can fail comes before the first change.
    auto node = boost::make_shared<Node>(*this, name, isSetting, properties);
    reserveOneMore(children_);
    reserveOneMore(index_->inOrder);
    if (!index_->byPath.insert(IndexedNode(*node)).second) {
        throw std::invalid_argument(node->fullName_ + " exists already: a name can be used once under one "
                                                      "group, so rename this node or remove the other.");
    }
    index_->inOrder.push_back(node.get());
    children_.push_back(node);
    return node;
}

std::string_view Node::name() const noexcept
{
    // The root has no dot: the not-found position wraps around to 0.
    return std::string_view(fullName_).substr(fullName_.rfind('.') + 1);
}

bool Node::isHiddenItself() const noexcept
{
    return properties_.visible.isWritten() && !properties_.visible.value();
}

bool Node::isHidden() const noexcept
{
    return isHiddenItself() || (parent_ != nullptr && parent_->isHidden());
}

SettingsTree::SettingsTree(const std::string& rootName)
    : index_(std::make_shared<NodeIndex>()), root_(boost::make_shared<Node>(rootName, *index_))
{
    index_->reserve(usualNumberOfNodes);
    index_->byPath.insert(IndexedNode(*root_));
}

const Node* SettingsTree::find(std::string_view path) const noexcept
{
    const auto found = index_->byPath.find(path);
    return found == index_->byPath.end() ? nullptr : found->node;
}

std::span<const Node* const> SettingsTree::nodes() const noexcept
{
    return index_->inOrder;
}

const Node* followAlias(const SettingsTree& tree, const Node& node) noexcept
{
    const Node* current = &node;
    // More steps than there are nodes go round in a circle.
    for (std::size_t steps = tree.nodes().size(); current != nullptr && current->kind() == NodeKind::alias;
         --steps)
    {
        current = steps == 0 ? nullptr : tree.find(current->properties().aliasName());
    }
    return current;
}

}  // namespace vx::core
