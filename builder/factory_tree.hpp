#pragma once

#include <builder/factory_node.hpp>
#include <builder/setting_options.hpp>

#include <string>
#include <string_view>
#include <utility>

namespace verdix::settings {

/// Names from the root down to the node, joined by ".", whether or not the node is realized.
[[nodiscard]] std::string fullName(const detail::FactorySettingNode& node);

/// Has the settings core create the node, and keeps the handle. What the settings core raises is passed on.
void realize(detail::FactorySettingNode& node,
             const ::settings::core::detail::FactorySettingProperties& properties);

namespace detail {

/// The full name of a child, realized or not.
[[nodiscard]] std::string joinPath(const ::settings::core::MSettings& parent, std::string_view name);

/// What is said of a node of which nothing is said.
[[nodiscard]] ::settings::core::detail::FactorySettingProperties defaultProperties();

/// Realizes a child and enters it in the parent's index, where an earlier child of that name stays.
///@{
[[nodiscard]] FactoryGroup makeGroup(FactoryGroup& parent, std::string&& name,
                                     const ::settings::core::detail::FactorySettingProperties& properties);
void makeSetting(FactoryGroup& parent, std::string&& name,
                 const ::settings::core::detail::FactorySettingProperties& properties);
///@}

}  // namespace detail

/// Creates a group under a realized group and returns it, ready to take children.
FactoryGroup addGroup(FactoryGroup& parent, std::string name);

/// The same with one option, as of addSetting.
template <class Value>
FactoryGroup addGroup(FactoryGroup& parent, std::string name, const char* option, Value value)
{
    SettingOptions options(parent, name);
    applyOption(options, option, std::move(value));
    return detail::makeGroup(parent, std::move(name), options.properties);
}

/// Creates a setting under a realized group out of what describe(SettingOptions&) applies. What that raises
/// ends the call, and the settings core then knows nothing of the setting.
template <class Describe>
void addDescribed(FactoryGroup& parent, std::string name, const Describe& describe)
{
    SettingOptions options(parent, name);
    describe(options);
    detail::makeSetting(parent, std::move(name), options.properties);
}

/// Creates a setting under a realized group. The options are pairs of a name and a value, applied from left
/// to right (see applyOption); they are taken by value, so literals of any length are one type. The first
/// error ends the call, and the settings core then knows nothing of the setting.
template <class... Pairs>
void addSetting(FactoryGroup& parent, std::string name, Pairs... pairs)
{
    static_assert(sizeof...(Pairs) % 2 == 0, "options are pairs of a name and a value");
    addDescribed(parent, std::move(name),
                 [&](SettingOptions& options) { detail::applyPairs(options, std::move(pairs)...); });
}

/// Creates a setting that stands for the one at the target path, and has nothing of its own.
void addAlias(FactoryGroup& parent, std::string name, std::string target);

}  // namespace verdix::settings
