#include <tree/areas.hpp>
#include <tree/vocabulary.hpp>

namespace verdix::settings::tree {

void buildWebArea(FactoryGroup& root)
{
    auto web = addGroup(root, "web");
    addInteger(web, "BrowserTabMaximum", 30);
    addLogical(web, "ExternalLinkIsOk", false);
    addText(web, "FindPanel", "small");
    addNumber(web, "MaxFileSize", 1500000);  // bytes
    addText(web, "ProxyHost", "");
    addText(web, "ProxyPassword", "");
    addText(web, "ProxyPort", "");
    addText(web, "ProxyUsername", "");
    addText(web, "SystemBrowser", "firefox");
    addText(web, "SystemBrowserOptions", "");
    addLogical(web, "UseProxy", false);
    addLogical(web, "UseProxyAuthentication", false);
    addInteger(web, "Zoom", 100);  // percent
    addText(web, "ChromiumDirLinux", "");
    addText(web, "LightweightBrowserDefaultType", "cef");
    addLogical(web, "SystemBrowserForExternalSites", true);
    addLogical(web, "RedirectExternalSites", true);

    addGroup(web, "zoom");

    // The platforms on which each client uses the lightweight browser.
    static constexpr std::array allPlatforms = {"win64", "maci64", "glnxa64"};
    const auto platforms = cellOf(allPlatforms);
    auto cef = addGroup(web, "cef");
    addCell(cef, "liveeditor", allPlatforms, platforms);
    addCell(cef, "helpbrowser", allPlatforms, platforms);
    addUnset(cef, "webbrowser", platforms);
    addUnset(cef, "helppanel", platforms);
}

}  // namespace verdix::settings::tree
