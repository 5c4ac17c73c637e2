#pragma once

#include <settings/core/factory_setting_properties.hpp>
#include <settings/core/settings.hpp>

#include <boost/smart_ptr/enable_shared_from_this.hpp>
#include <boost/smart_ptr/shared_ptr.hpp>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vx::core {

/// What a node is.
enum class NodeKind : std::uint8_t
{
    group,
    setting,
    alias
};

class NodeIndex;

/// A node of the embedded settings core. Nodes are made through createFactorySetting of their parent only,
/// and never change afterwards but for gaining children.
class VX_API Node final : public ::settings::core::MSettings, public boost::enable_shared_from_this<Node>
{
public:
    /// What the provider said of a node.
    using Properties = ::settings::core::detail::FactorySettingProperties;
    /// Handles of the nodes under one.
    using Children = std::vector<boost::shared_ptr<Node>>;

    /// The root of a tree; SettingsTree makes it.
    Node(std::string name, NodeIndex& index);
    /// A node under another; createFactorySetting makes it.
    Node(const Node& parent, std::string_view name, bool isSetting, const Properties& properties);

    /// Raises std::invalid_argument, and makes nothing, when this node is a setting, when the name is empty
    /// or holds a ".", or when a child of that name exists.
    boost::shared_ptr<::settings::core::MSettings>
    createFactorySetting(const std::string& name, bool isSetting, const Properties& properties) override;

    /// A copy of fullName(), for providers.
    [[nodiscard]] std::string getFullName() const override { return fullName_; }

    /// Names from the root down to this node, joined by ".".
    [[nodiscard]] const std::string& fullName() const noexcept { return fullName_; }
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

private:
    std::string fullName_;
    const Node* parent_;
    NodeKind kind_;
    Properties properties_;
    Children children_;
    NodeIndex* index_;  ///< of the tree, which may go before the last handle does
};

}  // namespace vx::core
