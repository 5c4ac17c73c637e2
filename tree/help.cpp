#include <tree/areas.hpp>
#include <tree/vocabulary.hpp>

namespace verdix::settings::tree {

void buildHelpArea(FactoryGroup& root)
{
    auto help = addGroup(root, "help");
    addCharvec(help, "DocLocation", "WEB");
    addCharvec(help, "DocProjectRoot", "");
    addCharvec(help, "DocRoot", "");
    addCharvec(help, "DocDataRoot", "");
    addCharvec(help, "DocRelease", "");
    addCharvec(help, "DocCenterDomain", "");
    addCharvec(help, "InstalledProductFilter", "");
    addLogical(help, "PopupShowsBrowser", false);
    addLogical(help, "SearchStemming", true);
    addLogical(help, "Show3pDocInBrowser", true);
    addLogical(help, "ShowUninstalledProducts", false);
    addCharvec(help, "UninstalledProductFilter", "");
    addLogical(help, "UseDocForProjects", false);
    addLogical(help, "UseJavaScriptHelpBrowser", true);
    addLogical(help, "DebugProjectDoc", false);
    addLogical(help, "OptionalDocInstall", true);
    addLogical(help, "DocSearchDirectConnection", false);
    addLogical(help, "DocSearchEnableIPC", true);
    static constexpr std::array products = {"verdixOnline", "verdixDesktop"};
    addCell(help, "SystemBrowserForDoc", products, cellOf(products));

    auto csh = addGroup(help, "csh");
    auto window = addGroup(csh, "window");
    addNumberRow(window, "Position", {100, 100, 800, 500}, windowPosition());
}

}  // namespace verdix::settings::tree
