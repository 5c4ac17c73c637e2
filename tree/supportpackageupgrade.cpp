#include <tree/areas.hpp>
#include <tree/vocabulary.hpp>

namespace verdix::settings::tree {

void buildSupportPackageUpgradeArea(FactoryGroup& root)
{
    auto supportPackageUpgrade = addGroup(root, "supportpackageupgrade");
    addCharvec(supportPackageUpgrade, "ShowUpgradeUI", "new");  // getSettingPathList returns this path
}

}  // namespace verdix::settings::tree
