#include <settings_core/tree/node_store.hpp>
#include <settings_core/tree/settings_tree.hpp>

#include <boost/smart_ptr/make_shared.hpp>

namespace vx::core {

SettingsTree::SettingsTree(std::string_view rootName)
    : store_(boost::make_shared<NodeStore>(rootName)), root_(store_, store_->nodes().front())
{}

const Node* SettingsTree::find(std::string_view path) const noexcept
{
    return store_->find(path);
}

std::span<const Node* const> SettingsTree::nodes() const noexcept
{
    return store_->nodes().subspan(1);
}

const Node* followAlias(const SettingsTree& tree, const Node& node) noexcept
{
    const Node* current = &node;
    // A chain with more steps than the tree has nodes is circular.
    for (std::size_t steps = tree.nodes().size(); current != nullptr && current->kind() == NodeKind::alias;
         --steps)
    {
        current = steps == 0 ? nullptr : tree.find(current->properties().aliasName());
    }
    return current;
}

}  // namespace vx::core
