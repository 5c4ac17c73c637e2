#pragma once

#include <builder/factory_node.hpp>
#include <builder/setting_options.hpp>

#include <string>
#include <utility>

namespace verdix::settings {

/// Returns the full path of a node, whether or not it is realized. Passes on what getFullName of its parent
/// throws.
[[nodiscard]] std::string fullName(const detail::FactorySettingNode& node);

/// Creates the node in the settings core and stores its handle. Passes on what the settings core throws.
void realize(detail::FactorySettingNode& node,
             const ::settings::core::detail::FactorySettingProperties& properties);

namespace detail {

/// Returns a child node that is not realized yet.
template <class Node>
[[nodiscard]] Node makeChild(const FactoryGroup& parent, std::string&& name)
{
    return Node(parent.treeContext, parent.settingsNode, nullptr, std::move(name));
}

/// The same after a call of the parent's getFullName, for a node whose options need no name in an error
/// message. The call is part of the interface with the settings core, and it may throw.
template <class Node>
[[nodiscard]] Node makeNamedChild(const FactoryGroup& parent, std::string&& name)
{
    static_cast<void>(parent.settingsNode->getFullName());
    return makeChild<Node>(parent, std::move(name));
}

/// Realizes a child and inserts it into the parent's map of groups or settings, unless a child with that name
/// is already there.
///@{
[[nodiscard]] FactoryGroup insert(FactoryGroup& parent, FactoryGroup group,
                                  const ::settings::core::detail::FactorySettingProperties& properties);
void insert(FactoryGroup& parent, FactorySetting&& setting,
            const ::settings::core::detail::FactorySettingProperties& properties);
///@}

}  // namespace detail

/// Creates a group in a realized group and returns it.
FactoryGroup addGroup(FactoryGroup& parent, std::string name);

/// As above, with one option; see addSetting.
template <class Value>
FactoryGroup addGroup(FactoryGroup& parent, std::string name, OptionName option, Value&& value)
{
    auto group = detail::makeChild<FactoryGroup>(parent, std::move(name));
    SettingOptions options = detail::defaultOptions(group);
    applyOption(options, option, std::forward<Value>(value));
    return detail::insert(parent, std::move(group), options.properties);
}

/// Creates a setting in a realized group. The options are pairs of a name and a value, applied from left to
/// right; see applyOption. If an option is invalid, throws and does not create the setting in the settings
/// core.
template <class... Pairs>
void addSetting(FactoryGroup& parent, std::string name, Pairs&&... pairs)
{
    static_assert(sizeof...(Pairs) % 2 == 0, "options are pairs of a name and a value");
    auto setting = detail::makeChild<FactorySetting>(parent, std::move(name));
    SettingOptions options = detail::defaultOptions(setting);
    detail::applyPairs(options, std::forward<Pairs>(pairs)...);
    detail::insert(parent, std::move(setting), options.properties);
}

/// Creates an alias: a setting that refers to the setting at the target path.
void addAlias(FactoryGroup& parent, std::string name, std::string target);

}  // namespace verdix::settings
