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

}  // namespace vx::core
