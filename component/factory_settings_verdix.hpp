#pragma once

#include <settings/core/factory_settings_loader.hpp>

#include <string>
#include <vector>

namespace settings::verdix {

/// Provides the factory settings of everything under "verdix". Holds no state: each call builds anew, and
/// what goes wrong while it builds is passed on to the caller.
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
