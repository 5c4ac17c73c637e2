#pragma once

#include <builder/factory_node.hpp>
#include <builder/setting_options.hpp>

#include <string>
#include <utility>

namespace verdix::settings {

/// Returns the full name of the node's parent, ".", and the node's name, whether or not the node is realized.
/// Throws what the parent's getFullName throws.
[[nodiscard]] std::string fullName(const detail::FactorySettingNode& node);

/// Has the settings core create the node, and keeps the handle. What the settings core throws is passed on.
void realize(detail::FactorySettingNode& node,
             const ::settings::core::detail::FactorySettingProperties& properties);

namespace detail {

/// Returns a node under this group that is not realized yet.
template <class Node>
[[nodiscard]] Node makeChild(const FactoryGroup& parent, std::string&& name)
{
    return Node(parent.treeContext, parent.settingsNode, nullptr, std::move(name));
}

/// Realizes a child and enters it in the parent's index, where an earlier child of that name stays.
///@{
[[nodiscard]] FactoryGroup insert(FactoryGroup& parent, FactoryGroup group,
                                  const ::settings::core::detail::FactorySettingProperties& properties);
void insert(FactoryGroup& parent, FactorySetting&& setting,
            const ::settings::core::detail::FactorySettingProperties& properties);
///@}

/// Realizes a node whose properties need no options. The full name of its group is asked for all the same:
/// that call is part of the interface with the settings core, and it may throw.
///@{
[[nodiscard]] FactoryGroup
addReadyGroup(FactoryGroup& parent, std::string&& name,
              const ::settings::core::detail::FactorySettingProperties& properties);
void addReadySetting(FactoryGroup& parent, std::string&& name,
                     const ::settings::core::detail::FactorySettingProperties& properties);
///@}

}  // namespace detail

/// Creates a group under a realized group and returns it, ready to take children.
FactoryGroup addGroup(FactoryGroup& parent, std::string name);

/// The same with one option, as of addSetting.
template <class Value>
FactoryGroup addGroup(FactoryGroup& parent, std::string name, OptionName option, Value&& value)
{
    auto group = detail::makeChild<FactoryGroup>(parent, std::move(name));
    SettingOptions options = detail::defaultOptions(group);
    applyOption(options, option, std::forward<Value>(value));
    return detail::insert(parent, std::move(group), options.properties);
}

/// Creates a setting under a realized group. The options are pairs of a name and a value, applied from left
/// to right (see applyOption). The first error ends the call, and the settings core then knows nothing of the
/// setting.
template <class... Pairs>
void addSetting(FactoryGroup& parent, std::string name, Pairs&&... pairs)
{
    static_assert(sizeof...(Pairs) % 2 == 0, "options are pairs of a name and a value");
    auto setting = detail::makeChild<FactorySetting>(parent, std::move(name));
    SettingOptions options = detail::defaultOptions(setting);
    detail::applyPairs(options, std::forward<Pairs>(pairs)...);
    detail::insert(parent, std::move(setting), options.properties);
}

/// Creates a setting that stands for the one at the target path, and has nothing of its own.
void addAlias(FactoryGroup& parent, std::string name, std::string target);

}  // namespace verdix::settings
