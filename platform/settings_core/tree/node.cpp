#include <settings_core/tree/node_store.hpp>

#include <stdexcept>

namespace vx::core {

namespace {

NodeKind kindOf(bool isSetting, const Node::Properties& properties)
{
    if (!isSetting) {
        return NodeKind::group;
    }
    return properties.isAlias() ? NodeKind::alias : NodeKind::setting;
}

}  // namespace

std::string_view kindLabel(NodeKind kind) noexcept
{
    static constexpr std::string_view labels[] = {"group", "setting", "alias"};
    return labels[static_cast<std::size_t>(kind)];
}

std::string_view visibilityLabel(const Node& node) noexcept
{
    const auto& visible = node.properties().visible;
    return !visible.isWritten() ? "default" : visible.value() ? "visible" : "hidden";
}

Node::Node(NodeStore& store, const Node* parent, std::string_view path, NodeKind kind,
           const Properties& properties)
    : store_(&store), parent_(parent), path_(path), kind_(kind), properties_(properties)
{}

boost::shared_ptr<::settings::core::MSettings>
Node::createFactorySetting(const std::string& name, bool isSetting, const Properties& properties)
{
    if (kind_ != NodeKind::group) {
        throw std::invalid_argument(getFullName() + " is a setting and cannot have the child \"" + name +
                                    "\": create it under a group.");
    }
    const NodeKind kind = kindOf(isSetting, properties);
    if (kind == NodeKind::alias && properties.aliasName().empty()) {
        throw std::invalid_argument(
            getFullName() + "." + name +
            " is an alias with an empty target: give the full path of the setting that "
            "it stands for.");
    }
    Node& child = store_->add(*this, name, kind, properties);
    return {store_->shared_from_this(), &child};
}

boost::shared_ptr<const Node> Node::sharedFromThis() const
{
    return {store_->shared_from_this(), this};
}

std::string_view Node::name() const noexcept
{
    return parent_ == nullptr ? path_ : path_.substr(parent_->path_.size() + 1);
}

bool Node::isHiddenItself() const noexcept
{
    return properties_.visible.isWritten() && !properties_.visible.value();
}

bool Node::isHidden() const noexcept
{
    return isHiddenItself() || (parent_ != nullptr && parent_->isHidden());
}

}  // namespace vx::core
