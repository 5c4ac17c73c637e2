#pragma once

#include <foundation/export.hpp>
#include <settings/core/settings_file_change.hpp>

#include <string>
#include <vector>

namespace verdix::settings {
class FactoryGroup;
}

namespace settings::core {

/// Service interface through which the settings core asks a provider for its part of the tree. The order of
/// the virtual operations is part of the interface.
class VX_API FactorySettingsLoader
{
public:
    FactorySettingsLoader();
    FactorySettingsLoader(const FactorySettingsLoader&) = delete;
    FactorySettingsLoader& operator=(const FactorySettingsLoader&) = delete;

    /// Name of the group under which the provider builds; the settings core makes that group.
    [[nodiscard]] virtual std::string getRootGroupName() const = 0;

    /// Reserved by the settings core; a provider without a reason to do otherwise answers false.
    [[nodiscard]] virtual bool queryFlag() = 0;

    virtual ~FactorySettingsLoader();

    /// Builds the provider's tree under the group given. An exception leaves the nodes made before in place.
    virtual void createTree(::verdix::settings::FactoryGroup& root) = 0;

    /// Fills the table of settings moved or removed per release.
    virtual void getReleaseChanges(ReleaseChangeTable& changes) = 0;

    /// Called for a user's settings folder (UTF-16 path) that was carried over from an older release, after
    /// the release changes were applied, for providers that keep data beside their settings. The inherited
    /// form does nothing: most have none.
    virtual void migrateData(const std::u16string& settingsFolder);

    /// Appends paths of settings that the settings core is to know by name.
    virtual void getSettingPathList(std::vector<std::string>& paths) = 0;
};

}  // namespace settings::core
