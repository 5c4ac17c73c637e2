#include <tree/areas.hpp>
#include <tree/vocabulary.hpp>

namespace verdix::settings::tree {

void buildGuideArea(FactoryGroup& root)
{
    auto guide = addGroup(root, "guide");
    addLogical(guide, "LayoutActivate", true);
    addLogical(guide, "LayoutChangeDefaultCallback", true);
    addLogical(guide, "LayoutExport", true);
    addLogical(guide, "LayoutExtension", true);
    addLogical(guide, "LayoutFullPath", false);
    addLogical(guide, "LayoutIsBannerExpanded", true);
    addLogical(guide, "LayoutMCodeComments", true);
    addInteger(guide, "LayoutQuickStartTab", 0);
    addLogical(guide, "LayoutShowBanner", true);
    addLogical(guide, "LayoutStatusBar", true);
    addLogical(guide, "LayoutToolBar", true);
    addLogical(guide, "LayoutToolNames", false);
}

}  // namespace verdix::settings::tree
