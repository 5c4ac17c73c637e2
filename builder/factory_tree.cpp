#include <builder/factory_tree.hpp>

namespace verdix::settings {

std::string fullName(const detail::FactorySettingNode& node)
{
    std::string path = node.parentSettingsNode->getFullName();
    path.reserve(path.size() + 1 + node.name.size());
    path += '.';
    path += node.name;
    return path;
}

void realize(detail::FactorySettingNode& node,
             const ::settings::core::detail::FactorySettingProperties& properties)
{
    node.settingsNode =
        node.parentSettingsNode->createFactorySetting(node.name, node.isSetting(), properties);
}

namespace {

::settings::core::detail::FactorySettingProperties defaultProperties()
{
    return {false, false, {}, {}, {}, false, false, {}};
}

}  // namespace

namespace detail {

SettingOptions makeOptions(const FactorySettingNode& node)
{
    return {defaultProperties(), {}, node};
}

FactoryGroup makeGroup(const FactoryGroup& parent, std::string&& name)
{
    return {parent.treeContext, parent.settingsNode, nullptr, std::move(name)};
}

FactorySetting makeSetting(const FactoryGroup& parent, std::string&& name)
{
    return {parent.treeContext, parent.settingsNode, nullptr, std::move(name)};
}

FactoryGroup addRealized(FactoryGroup& parent, FactoryGroup&& group,
                         const ::settings::core::detail::FactorySettingProperties& properties)
{
    realize(group, properties);
    parent.groups.try_emplace(group.name, group);
    return std::move(group);
}

void addRealized(FactoryGroup& parent, FactorySetting&& setting,
                 const ::settings::core::detail::FactorySettingProperties& properties)
{
    realize(setting, properties);
    parent.settings.try_emplace(setting.name, std::move(setting));
}

}  // namespace detail

FactoryGroup addGroup(FactoryGroup& parent, std::string name)
{
    return detail::addRealized(parent, detail::makeGroup(parent, std::move(name)), defaultProperties());
}

void addAlias(FactoryGroup& parent, std::string name, std::string target)
{
    auto properties = defaultProperties();
    properties.setAliasName(std::move(target));
    detail::addRealized(parent, detail::makeSetting(parent, std::move(name)), properties);
}

}  // namespace verdix::settings
