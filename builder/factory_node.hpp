#pragma once

#include <settings/core/settings.hpp>

#include <boost/smart_ptr/shared_ptr.hpp>

#include <map>
#include <string>
#include <utility>

/// The nodes of which a provider builds its tree.
namespace verdix::settings {

/// What groups and settings have in common.
namespace detail {

/// Handle of a node of the settings core.
using SettingsNode = boost::shared_ptr<::settings::core::MSettings>;
/// What the settings core hands to a provider for its own use; opaque.
using TreeContext = boost::shared_ptr<void>;

/// A node of the factory tree while it is being described. It mirrors the settings core's own node, which is
/// made the moment this one is realized, and only shares it. The settings core's loader makes the root one
/// and hands it in, so fields and virtual operations keep their order.
class FactorySettingNode
{
public:
    /// Tells a setting (true) from a group.
    [[nodiscard]] virtual bool isSetting() const = 0;
    virtual ~FactorySettingNode() = default;

    SettingsNode settingsNode;        ///< empty until the node is realized
    SettingsNode parentSettingsNode;  ///< under which this node is created
    TreeContext treeContext;          ///< handed from every group to its children, never looked into
    std::string name;                 ///< one component of a path, no dots
    std::string annotation;           ///< travels with the node; nothing here sets or reads it

protected:
    /// Takes over the handles; `nodeName` is one component of a path. `node` may be empty until the node is
    /// realized.
    FactorySettingNode(TreeContext context, SettingsNode parent, SettingsNode node, std::string&& nodeName)
        : settingsNode(std::move(node)),
          parentSettingsNode(std::move(parent)),
          treeContext(std::move(context)),
          name(std::move(nodeName))
    {}

    /// A copy is another description of the same node of the settings core.
    ///@{
    FactorySettingNode(const FactorySettingNode&) = default;
    FactorySettingNode(FactorySettingNode&&) noexcept = default;
    FactorySettingNode& operator=(const FactorySettingNode&) = default;
    FactorySettingNode& operator=(FactorySettingNode&&) noexcept = default;
    ///@}
};

}  // namespace detail

/// A setting while it is being described: what addSetting returns.
class FactorySetting : public detail::FactorySettingNode
{
public:
    /// As the base class has it.
    FactorySetting(detail::TreeContext context, detail::SettingsNode parent, detail::SettingsNode node,
                   std::string&& nodeName)
        : FactorySettingNode(std::move(context), std::move(parent), std::move(node), std::move(nodeName))
    {}

    /// Always true.
    [[nodiscard]] bool isSetting() const override { return true; }
};

/// A group while it is being described, with the groups and settings made under it so far.
class FactoryGroup : public detail::FactorySettingNode
{
public:
    /// As the base class has it. The settings core makes the root group, addGroup every other.
    FactoryGroup(detail::TreeContext context, detail::SettingsNode parent, detail::SettingsNode node,
                 std::string&& nodeName)
        : FactorySettingNode(std::move(context), std::move(parent), std::move(node), std::move(nodeName))
    {}

    /// Copies are independent, but for the node of the settings core.
    ///@{
    FactoryGroup(const FactoryGroup&) = default;
    FactoryGroup(FactoryGroup&&) = default;
    FactoryGroup& operator=(const FactoryGroup&) = default;
    FactoryGroup& operator=(FactoryGroup&&) = default;
    ///@}

    /// Not inline: every function of an area ends with several.
    [[gnu::noinline]] ~FactoryGroup() override {}  // NOLINT(modernize-use-equals-default)

    /// Always false.
    [[nodiscard]] bool isSetting() const override { return false; }

    /// Copies of the groups made under this one, by name, each as it was when it was made. The tree's order
    /// is that of creation, which the settings core keeps.
    std::map<std::string, FactoryGroup> groups;
    /// Settings made under this group, by name.
    std::map<std::string, FactorySetting> settings;
};

}  // namespace verdix::settings
