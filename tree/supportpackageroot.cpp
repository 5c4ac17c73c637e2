#include <tree/areas.hpp>
#include <tree/vocabulary.hpp>

namespace verdix::settings::tree {

void buildSupportPackageRootArea(FactoryGroup& root)
{
    auto supportPackageRoot = addGroup(root, "supportpackageroot");
    // Not a path: readers of the setting replace this marker.
    addCharvec(supportPackageRoot, "SupportPackageRootPath", "__DEFAULT__");
}

}  // namespace verdix::settings::tree
