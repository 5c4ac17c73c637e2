#pragma once

#include <settings/core/settings.hpp>

#include <boost/smart_ptr/shared_ptr.hpp>

#include <map>
#include <string>
#include <utility>

namespace verdix::settings {

namespace detail {

using SettingsNode = boost::shared_ptr<::settings::core::MSettings>;
using TreeContext = boost::shared_ptr<void>;

/// A node of the factory tree while it is being described. It mirrors the settings core's own node, which is
/// made the moment this one is realized, and only shares it. The settings core's loader makes the root one
/// and hands it in, so fields and virtual operations keep their order.
class FactorySettingNode
{
public:
    [[nodiscard]] virtual bool isSetting() const = 0;
    virtual ~FactorySettingNode() = default;

    SettingsNode settingsNode;        ///< empty until the node is realized
    SettingsNode parentSettingsNode;  ///< under which this node is created
    TreeContext treeContext;          ///< handed from every group to its children, never looked into
    std::string name;                 ///< one component of a path, no dots
    std::string annotation;           ///< travels with the node; nothing here sets or reads it

protected:
    FactorySettingNode(TreeContext context, SettingsNode parent, SettingsNode node, std::string&& nodeName)
        : settingsNode(std::move(node)),
          parentSettingsNode(std::move(parent)),
          treeContext(std::move(context)),
          name(std::move(nodeName))
    {}

    FactorySettingNode(const FactorySettingNode&) = default;
    FactorySettingNode(FactorySettingNode&&) noexcept = default;
    FactorySettingNode& operator=(const FactorySettingNode&) = default;
    FactorySettingNode& operator=(FactorySettingNode&&) noexcept = default;
};

}  // namespace detail

class FactorySetting : public detail::FactorySettingNode
{
public:
    FactorySetting(detail::TreeContext context, detail::SettingsNode parent, detail::SettingsNode node,
                   std::string&& nodeName)
        : FactorySettingNode(std::move(context), std::move(parent), std::move(node), std::move(nodeName))
    {}

    [[nodiscard]] bool isSetting() const override { return true; }
};

class FactoryGroup : public detail::FactorySettingNode
{
public:
    FactoryGroup(detail::TreeContext context, detail::SettingsNode parent, detail::SettingsNode node,
                 std::string&& nodeName)
        : FactorySettingNode(std::move(context), std::move(parent), std::move(node), std::move(nodeName))
    {}

    [[nodiscard]] bool isSetting() const override { return false; }

    // Local indexes by name: the tree's order is that of creation, which the settings core keeps.
    std::map<std::string, FactoryGroup> groups;
    std::map<std::string, FactorySetting> settings;
};

}  // namespace verdix::settings
