#pragma once

#include <settings/core/factory_setting_properties.hpp>
#include <settings/core/settings.hpp>

#include <boost/intrusive/slist.hpp>
#include <boost/smart_ptr/shared_ptr.hpp>

#include <cstdint>
#include <string>
#include <string_view>

namespace vx::core {

/// The kinds of nodes.
enum class NodeKind : std::uint8_t
{
    group,
    setting,
    alias
};

/// Returns "group", "setting" or "alias".
[[nodiscard]] VX_API std::string_view kindLabel(NodeKind kind) noexcept;

class NodeStore;

/// A node of the embedded settings core. Nodes are created by createFactorySetting of their parent only, and
/// are immutable except for new children. All nodes of a tree live as long as the tree or a shared pointer to
/// any of its nodes.
class VX_API Node final : public ::settings::core::MSettings
{
    using Link =
        boost::intrusive::slist_member_hook<boost::intrusive::link_mode<boost::intrusive::normal_link>>;
    Link next_;  ///< to the next child of the parent

public:
    /// The provider's description of a node.
    using Properties = ::settings::core::detail::FactorySettingProperties;
    /// The children of a node, in creation order; size() takes linear time.
    using Children = boost::intrusive::slist<Node, boost::intrusive::member_hook<Node, Link, &Node::next_>,
                                             boost::intrusive::cache_last<true>,
                                             boost::intrusive::constant_time_size<false>>;

    /// For NodeStore only. `path` is the full name; its characters belong to the store. The root has no
    /// parent.
    Node(NodeStore& store, const Node* parent, std::string_view path, NodeKind kind,
         const Properties& properties);

    /// Creates a child and returns it. Throws std::invalid_argument, and creates nothing, when this node is a
    /// setting, when the name is empty or contains a ".", when a child of that name exists, or when an alias
    /// has an empty target.
    boost::shared_ptr<::settings::core::MSettings>
    createFactorySetting(const std::string& name, bool isSetting, const Properties& properties) override;

    /// Returns a copy of fullName(), for providers.
    [[nodiscard]] std::string getFullName() const override { return std::string(path_); }

    /// Returns the names from the root down to this node, joined by ".".
    [[nodiscard]] std::string_view fullName() const noexcept { return path_; }
    /// Returns the last component of the full name.
    [[nodiscard]] std::string_view name() const noexcept;
    /// Whether the node is a group, a setting or an alias.
    [[nodiscard]] NodeKind kind() const noexcept { return kind_; }
    /// Returns the provider's description of the node.
    [[nodiscard]] const Properties& properties() const noexcept { return properties_; }

    /// Returns the parent, or null for the root.
    [[nodiscard]] const Node* parent() const noexcept { return parent_; }

    /// Returns the children in creation order.
    [[nodiscard]] const Children& children() const noexcept { return children_; }

    /// Whether the provider hid this node itself.
    [[nodiscard]] bool isHiddenItself() const noexcept;

    /// Whether this node or a group above it is hidden.
    [[nodiscard]] bool isHidden() const noexcept;

    /// Returns a shared pointer to this node, which keeps the whole tree alive.
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

/// Returns the declared visibility: "default" (none declared), "visible" or "hidden".
[[nodiscard]] VX_API std::string_view visibilityLabel(const Node& node) noexcept;

}  // namespace vx::core
