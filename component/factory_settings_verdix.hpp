#pragma once

#include <settings/core/factory_settings_loader.hpp>

#include <string>
#include <vector>

namespace settings::verdix {

/// Provides the factory settings under "verdix". Stateless: each call of createTree builds a new tree and
/// passes exceptions on to the caller.
class FactorySettingsVerdix final : public ::settings::core::FactorySettingsLoader
{
public:
    [[nodiscard]] std::string getRootGroupName() const override;
    [[nodiscard]] bool queryFlag() override;
    void createTree(::verdix::settings::FactoryGroup& root) override;
    void getReleaseChanges(::settings::core::ReleaseChangeTable& changes) override;
    void getSettingPathList(std::vector<std::string>& paths) override;
};

}  // namespace settings::verdix
