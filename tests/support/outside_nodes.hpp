#pragma once

// The node classes as a loader outside this project declares them. They repeat builder/factory_node.hpp on
// purpose, and share nothing with it: where the two differ, the module and this loader no longer understand
// each other.

#include <settings/core/settings.hpp>

#include <boost/smart_ptr/shared_ptr.hpp>

#include <map>
#include <string>

namespace verdix::settings {

namespace detail {

class FactorySettingNode
{
public:
    [[nodiscard]] virtual bool isSetting() const = 0;
    virtual ~FactorySettingNode() = default;

    boost::shared_ptr<::settings::core::MSettings> settingsNode;
    boost::shared_ptr<::settings::core::MSettings> parentSettingsNode;
    boost::shared_ptr<void> treeContext;
    std::string name;
    std::string annotation;
};

}  // namespace detail

class FactorySetting : public detail::FactorySettingNode
{
public:
    [[nodiscard]] bool isSetting() const override { return true; }
};

class FactoryGroup : public detail::FactorySettingNode
{
public:
    [[nodiscard]] bool isSetting() const override { return false; }

    std::map<std::string, FactoryGroup> groups;
    std::map<std::string, FactorySetting> settings;
};

}  // namespace verdix::settings
