#include <component/factory_settings_verdix.hpp>
#include <migration/release_changes.hpp>
#include <tree/areas.hpp>

namespace settings::verdix {

std::string FactorySettingsVerdix::getRootGroupName() const
{
    return "verdix";
}

bool FactorySettingsVerdix::queryFlag()
{
    return false;
}

void FactorySettingsVerdix::createTree(::verdix::settings::FactoryGroup& root)
{
    ::verdix::settings::tree::buildRootTree(root);
}

void FactorySettingsVerdix::getReleaseChanges(::settings::core::ReleaseChangeTable& changes)
{
    fillReleaseChanges(changes);
}

void FactorySettingsVerdix::getSettingPathList(std::vector<std::string>& paths)
{
    paths.emplace_back("verdix.supportpackageupgrade.ShowUpgradeUI");
}

}  // namespace settings::verdix
