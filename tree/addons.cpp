#include <tree/areas.hpp>
#include <tree/vocabulary.hpp>

namespace verdix::settings::tree {

namespace {

void addWindow(FactoryGroup& addOns, std::string name)
{
    auto window = addGroup(addOns, std::move(name));
    addLogical(window, "Maximized", false);
    addUnset(window, "Position", windowPosition());
}

}  // namespace

void buildAddOnsArea(FactoryGroup& root)
{
    auto addOns = addGroup(root, "addons");
    addLogical(addOns, "AddLegacyAddOnFolders", true);
    addLogical(addOns, "Enabled", true);
    addCharvec(addOns, "InstallationFolder", "");
    addCharvec(addOns, "LastFolderPath", "");

    addWindow(addOns, "explorer");
    addWindow(addOns, "manager");
}

}  // namespace verdix::settings::tree
