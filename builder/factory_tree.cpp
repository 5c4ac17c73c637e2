#include <builder/factory_tree.hpp>

namespace verdix::settings {

using ::settings::core::detail::FactorySettingProperties;

std::string fullName(const detail::FactorySettingNode& node)
{
    std::string path = node.parentSettingsNode->getFullName();
    path.reserve(path.size() + 1 + node.name.size());
    return path.append(1, '.').append(node.name);
}

void realize(detail::FactorySettingNode& node, const FactorySettingProperties& properties)
{
    node.settingsNode =
        node.parentSettingsNode->createFactorySetting(node.name, node.isSetting(), properties);
}

namespace detail {

FactoryGroup insert(FactoryGroup& parent, FactoryGroup group, const FactorySettingProperties& properties)
{
    realize(group, properties);
    parent.groups.try_emplace(group.name, group);
    return group;
}

void insert(FactoryGroup& parent, FactorySetting&& setting, const FactorySettingProperties& properties)
{
    realize(setting, properties);
    parent.settings.try_emplace(setting.name, std::move(setting));
}

}  // namespace detail

FactoryGroup addGroup(FactoryGroup& parent, std::string name)
{
    static const auto properties = detail::defaultProperties();
    return detail::insert(parent, detail::makeNamedChild<FactoryGroup>(parent, std::move(name)), properties);
}

void addAlias(FactoryGroup& parent, std::string name, std::string target)
{
    auto setting = detail::makeChild<FactorySetting>(parent, std::move(name));
    auto properties = detail::defaultProperties();
    properties.setAliasName(std::move(target));
    detail::insert(parent, std::move(setting), properties);
}

}  // namespace verdix::settings
