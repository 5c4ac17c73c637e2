#pragma once

#include <foundation/export.hpp>
#include <settings/core/settings_file_change.hpp>

#include <string>
#include <vector>

namespace verdix::settings {
class FactoryGroup;
}

namespace settings::core {

/// Service interface with which the settings core requests the part of the tree that a provider describes.
/// The order of the virtual functions is part of the interface.
class VX_API FactorySettingsLoader
{
public:
    FactorySettingsLoader();
    FactorySettingsLoader(const FactorySettingsLoader&) = delete;
    FactorySettingsLoader& operator=(const FactorySettingsLoader&) = delete;

    /// Returns the name of the root group of the provider, which the settings core creates.
    [[nodiscard]] virtual std::string getRootGroupName() const = 0;

    /// Reserved for the settings core; providers return false.
    [[nodiscard]] virtual bool queryFlag() = 0;

    virtual ~FactorySettingsLoader();

    /// Builds the provider's tree under the root group. If it throws, the nodes created before remain.
    virtual void createTree(::verdix::settings::FactoryGroup& root) = 0;

    /// Adds the settings that each release moved or removed.
    virtual void getReleaseChanges(ReleaseChangeTable& changes) = 0;

    /// Migrates data that the provider keeps besides its settings. Called after the release changes were
    /// applied to settingsFolder (a UTF-16 path), which was copied from an older release. Does nothing by
    /// default.
    virtual void migrateData(const std::u16string& settingsFolder);

    /// Appends the paths of settings that the settings core itself uses.
    virtual void getSettingPathList(std::vector<std::string>& paths) = 0;
};

}  // namespace settings::core
