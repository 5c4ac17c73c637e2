#pragma once

#include <settings/core/factory_setting_properties.hpp>
#include <settings/core/settings.hpp>

#include <boost/intrusive/slist.hpp>
#include <boost/smart_ptr/shared_ptr.hpp>

#include <cstdint>
#include <string>
#include <string_view>

namespace vx::core {

/// What a node is.
enum class NodeKind : std::uint8_t
{
    group,
    setting,
    alias
};

class NodeStore;

/// A node of the embedded settings core. Nodes are made through createFactorySetting of their parent only,
/// and never change afterwards but for gaining children. They live as long as their tree, or as a handle of
/// any of its nodes.
class VX_API Node final : public ::settings::core::MSettings
{
    using Link =
        boost::intrusive::slist_member_hook<boost::intrusive::link_mode<boost::intrusive::normal_link>>;
    Link next_;  ///< to the next child of the parent

public:
    /// What the provider said of a node.
    using Properties = ::settings::core::detail::FactorySettingProperties;
    /// The nodes under one, in creation order; counting them takes a walk.
    using Children = boost::intrusive::slist<Node, boost::intrusive::member_hook<Node, Link, &Node::next_>,
                                             boost::intrusive::cache_last<true>,
                                             boost::intrusive::constant_time_size<false>>;

    /// Made by the store of its tree. The path is the names from the root down, joined by "."; its text is
    /// the store's. The root has no parent.
    Node(NodeStore& store, const Node* parent, std::string_view path, NodeKind kind,
         const Properties& properties);

    /// Raises std::invalid_argument, and makes nothing, when this node is a setting, when the name is empty
    /// or holds a ".", when a child of that name exists, or when an alias has an empty target.
    boost::shared_ptr<::settings::core::MSettings>
    createFactorySetting(const std::string& name, bool isSetting, const Properties& properties) override;

    /// A copy of fullName(), for providers.
    [[nodiscard]] std::string getFullName() const override { return std::string(path_); }

    /// Names from the root down to this node, joined by ".".
    [[nodiscard]] std::string_view fullName() const noexcept { return path_; }
    /// The last component of the full name.
    [[nodiscard]] std::string_view name() const noexcept;
    /// Group, setting or alias.
    [[nodiscard]] NodeKind kind() const noexcept { return kind_; }
    /// What the provider said when it made the node.
    [[nodiscard]] const Properties& properties() const noexcept { return properties_; }

    /// Null for the root.
    [[nodiscard]] const Node* parent() const noexcept { return parent_; }

    /// In creation order.
    [[nodiscard]] const Children& children() const noexcept { return children_; }

    /// Whether this node's own flag hides it.
    [[nodiscard]] bool isHiddenItself() const noexcept;

    /// Whether this node or a group above it is hidden.
    [[nodiscard]] bool isHidden() const noexcept;

    /// A handle of this node, which keeps the whole tree.
    [[nodiscard]] boost::shared_ptr<const Node> sharedFromThis() const;

private:
    friend class NodeStore;

    NodeStore* store_;
    const Node* parent_;
    std::string_view path_;
    NodeKind kind_;
    Properties properties_;
    Children children_;
};

}  // namespace vx::core
