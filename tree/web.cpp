#include <tree/areas.hpp>
#include <tree/vocabulary.hpp>

namespace verdix::settings::tree {

void buildWebArea(FactoryGroup& root)
{
    auto web = addGroup(root, "web");
    addInteger(web, "BrowserTabMaximum", 30);
    addLogical(web, "ExternalLinkIsOk", false);
    addCharvec(web, "FindPanel", "small");
    addNumber(web, "MaxFileSize", 1500000);  // bytes
    addCharvec(web, "ProxyHost", "");
    addCharvec(web, "ProxyPassword", "");
    addCharvec(web, "ProxyPort", "");
    addCharvec(web, "ProxyUsername", "");
    addCharvec(web, "SystemBrowser", "firefox");
    addCharvec(web, "SystemBrowserOptions", "");
    addLogical(web, "UseProxy", false);
    addLogical(web, "UseProxyAuthentication", false);
    addInteger(web, "Zoom", 100);  // percent
    addCharvec(web, "ChromiumDirLinux", "");
    addCharvec(web, "LightweightBrowserDefaultType", "cef");
    addLogical(web, "SystemBrowserForExternalSites", true);
    addLogical(web, "RedirectExternalSites", true);

    addGroup(web, "zoom");

    // The platforms on which a client uses the lightweight browser.
    static constexpr std::array allPlatforms = {"win64", "maci64", "glnxa64"};
    const auto platforms = cellOf(allPlatforms);
    auto cef = addGroup(web, "cef");
    addCell(cef, "liveeditor", allPlatforms, platforms);
    addCell(cef, "helpbrowser", allPlatforms, platforms);
    addUnset(cef, "webbrowser", platforms);
    addUnset(cef, "helppanel", platforms);
}

}  // namespace verdix::settings::tree
