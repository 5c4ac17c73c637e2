#pragma once

#include <settings/core/settings.hpp>

#include <boost/smart_ptr/shared_ptr.hpp>

#include <map>
#include <string>
#include <utility>

/// The nodes from which a provider builds its tree.
namespace verdix::settings {

/// Implementation of the base class of groups and settings.
namespace detail {

/// Handle of a node of the settings core.
using SettingsNode = boost::shared_ptr<::settings::core::MSettings>;
/// Opaque data of the settings core, passed through the tree.
using TreeContext = boost::shared_ptr<void>;

/// A node of the factory tree. Realizing it creates the corresponding node of the settings core, of which it
/// shares ownership. The loader of the settings core creates the root node, so the order of fields and
/// virtual functions is part of the interface.
class FactorySettingNode
{
public:
    /// Returns true for a setting, false for a group.
    [[nodiscard]] virtual bool isSetting() const = 0;
    virtual ~FactorySettingNode() = default;

    SettingsNode settingsNode;        ///< null until the node is realized
    SettingsNode parentSettingsNode;  ///< the parent of settingsNode
    TreeContext treeContext;          ///< the same for all nodes of a tree; never used here
    std::string name;                 ///< one component of a path, without dots
    std::string annotation;           ///< copied with the node, but neither set nor read here

protected:
    /// `nodeName` is one component of a path. `node` may be null until the node is realized.
    FactorySettingNode(TreeContext context, SettingsNode parent, SettingsNode node, std::string&& nodeName)
        : settingsNode(std::move(node)),
          parentSettingsNode(std::move(parent)),
          treeContext(std::move(context)),
          name(std::move(nodeName))
    {}

    /// Copies refer to the same node of the settings core.
    ///@{
    FactorySettingNode(const FactorySettingNode&) = default;
    FactorySettingNode(FactorySettingNode&&) noexcept = default;
    FactorySettingNode& operator=(const FactorySettingNode&) = default;
    FactorySettingNode& operator=(FactorySettingNode&&) noexcept = default;
    ///@}
};

}  // namespace detail

/// A setting of the factory tree.
class FactorySetting : public detail::FactorySettingNode
{
public:
    /// As the constructor of the base class.
    FactorySetting(detail::TreeContext context, detail::SettingsNode parent, detail::SettingsNode node,
                   std::string&& nodeName)
        : FactorySettingNode(std::move(context), std::move(parent), std::move(node), std::move(nodeName))
    {}

    /// Always true.
    [[nodiscard]] bool isSetting() const override { return true; }
};

/// A group of the factory tree, with the groups and settings created in it so far.
class FactoryGroup : public detail::FactorySettingNode
{
public:
    /// As the constructor of the base class. The settings core creates the root group, addGroup all others.
    FactoryGroup(detail::TreeContext context, detail::SettingsNode parent, detail::SettingsNode node,
                 std::string&& nodeName)
        : FactorySettingNode(std::move(context), std::move(parent), std::move(node), std::move(nodeName))
    {}

    /// Copies have their own children, but refer to the same node of the settings core.
    ///@{
    FactoryGroup(const FactoryGroup&) = default;
    FactoryGroup(FactoryGroup&&) = default;
    FactoryGroup& operator=(const FactoryGroup&) = default;
    FactoryGroup& operator=(FactoryGroup&&) = default;
    ///@}

    /// Not inline, because every function of an area destroys several groups at its end.
    [[gnu::noinline]] ~FactoryGroup() override {}  // NOLINT(modernize-use-equals-default)

    /// Always false.
    [[nodiscard]] bool isSetting() const override { return false; }

    /// Copies of the child groups by name, taken when they were created. The order of the tree is the order
    /// of creation, which the settings core keeps.
    std::map<std::string, FactoryGroup> groups;
    /// The settings of this group by name.
    std::map<std::string, FactorySetting> settings;
};

}  // namespace verdix::settings
