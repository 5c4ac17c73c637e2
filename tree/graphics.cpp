#include <tree/areas.hpp>
#include <tree/vocabulary.hpp>

namespace verdix::settings::tree {

void buildGraphicsArea(FactoryGroup& root)
{
    auto graphics = addGroup(root, "graphics");

    auto machineSpecific = addGroup(graphics, "machine_specific");
    addLogical(machineSpecific, "showinteractioninfobar", true);
    addLogical(machineSpecific, "showlegacydatastatsapp", false);
    addLogical(machineSpecific, "showlegacylinkedplotdialog", false);
    addLogical(machineSpecific, "showlegacycolormapeditor", false);
    addCharvec(machineSpecific, "showinteractioninfobarreleaseset", "");
}

}  // namespace verdix::settings::tree
