#include <builder/factory_tree.hpp>

namespace verdix::settings {

std::string fullName(const detail::FactorySettingNode& node)
{
    return detail::joinPath(*node.parentSettingsNode, node.name);
}

void realize(detail::FactorySettingNode& node,
             const ::settings::core::detail::FactorySettingProperties& properties)
{
    node.settingsNode =
        node.parentSettingsNode->createFactorySetting(node.name, node.isSetting(), properties);
}

namespace detail {

std::string joinPath(const ::settings::core::MSettings& parent, std::string_view name)
{
    std::string path = parent.getFullName();
    path.reserve(path.size() + 1 + name.size());
    return path.append(1, '.').append(name);
}

::settings::core::detail::FactorySettingProperties defaultProperties()
{
    return {false, false, {}, {}, {}, false, false, {}};
}

FactoryGroup makeGroup(FactoryGroup& parent, std::string&& name,
                       const ::settings::core::detail::FactorySettingProperties& properties)
{
    FactoryGroup group(parent.treeContext, parent.settingsNode, nullptr, std::move(name),
                       parent.groups.get_allocator().memory());
    realize(group, properties);
    parent.groups.try_emplace(group.name, group);
    return group;
}

void makeSetting(FactoryGroup& parent, std::string&& name,
                 const ::settings::core::detail::FactorySettingProperties& properties)
{
    // The setting is made where it stays, in the index, and so after its node.
    SettingsNode node = parent.settingsNode->createFactorySetting(name, true, properties);
    std::string key = name;
    parent.settings.try_emplace(std::move(key), parent.treeContext, parent.settingsNode, std::move(node),
                                std::move(name));
}

}  // namespace detail

FactoryGroup addGroup(FactoryGroup& parent, std::string name)
{
    return detail::makeGroup(parent, std::move(name), detail::defaultProperties());
}

void addAlias(FactoryGroup& parent, std::string name, std::string target)
{
    auto properties = detail::defaultProperties();
    properties.setAliasName(std::move(target));
    detail::makeSetting(parent, std::move(name), properties);
}

}  // namespace verdix::settings
