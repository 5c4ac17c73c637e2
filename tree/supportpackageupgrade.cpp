#include <tree/areas.hpp>
#include <tree/vocabulary.hpp>

namespace verdix::settings::tree {

void buildSupportPackageUpgradeArea(FactoryGroup& root)
{
    auto supportPackageUpgrade = addGroup(root, "supportpackageupgrade");
    addText(supportPackageUpgrade, "ShowUpgradeUI", "new");  // the component reports this path by name
}

}  // namespace verdix::settings::tree
