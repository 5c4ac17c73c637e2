#include <tree/areas.hpp>
#include <tree/vocabulary.hpp>

namespace verdix::settings::tree {

void buildSupportPackageRootArea(FactoryGroup& root)
{
    auto supportPackageRoot = addGroup(root, "supportpackageroot");
    // A mark for whoever reads it, not a path.
    addText(supportPackageRoot, "SupportPackageRootPath", "__DEFAULT__");
}

}  // namespace verdix::settings::tree
