#include <tree/areas.hpp>
#include <tree/vocabulary.hpp>

namespace verdix::settings::tree {

namespace {

// The rule for what a tool remembers from session to session.
SettingValueValidator rememberedState()
{
    return maximumLength(100000);
}

void addSwitches(FactoryGroup& desktop)
{
    addLogical(desktop, "BlockEditorGraphicalDebugging", false);
    addAlias(desktop, "DisplayScaleFactor", "webwindowscale.DisplayScaleFactor");
    addLogical(desktop, "EnableLiveClassSupport", false);
    addLogical(desktop, "EnableLiveEditorFloatingPalette", false);
    addLogical(desktop, "EnableLiveSystemObjectEditorSupport", false);
    addLogical(desktop, "EnableVdxSupport", false);
    addLogical(desktop, "EnableMouseWheelRedirector", false);
    addLogical(desktop, "EnableRichScriptSupport", true);
    addLogical(desktop, "FavoriteCommandsEnabled", true, Hidden);
    addLogical(desktop, "MOFavoriteCommandsEnabled", true, Hidden);
    addLogical(desktop, "OpenPlainCodeInLiveEditor", true);
    addLogical(desktop, "OpenToolstripWithViewModel", true);
    addLogical(desktop, "EnableJSRunTestsToolstrip", true);
    addLogical(desktop, "EnableTestBrowser", true);
    addLogical(desktop, "EnableJSTestBrowser", true);
    addLogical(desktop, "EnableJSSystemEditorToolstrip", true, Hidden);
    addLogical(desktop, "RestoreDesktopConfig", true, Hidden);
    addLogical(desktop, "FirstTechPreviewEntry", false, Hidden);
    addLogical(desktop, "PrewarmInDebug", false, Hidden);
    addNumber(desktop, "Zoom", 100, Hidden, inRange(25, 500));  // percent
    addNumber(desktop, "TextFontSize", 12, Hidden, inRange(1, 36));
    addCharVector(desktop, "LayoutState", "", Hidden, rememberedState());
    addCharVector(desktop, "Documents", "", Hidden, rememberedState());
}

void buildAddressBar(FactoryGroup& desktop)
{
    auto addressBar = addGroup(desktop, "addressbar");
    addCharVector(addressBar, "LocationHistory", "", Hidden, rememberedState());
}

void buildToolstrip(FactoryGroup& desktop)
{
    auto toolstrip = addGroup(desktop, "toolstrip");
    addCharVector(toolstrip, "QuickAccessBar", "{}", Hidden, rememberedState());
    addCharVector(toolstrip, "AppsGalleryState", "", Hidden, rememberedState());
    addCharVector(toolstrip, "PlotsGalleryState", "", Hidden, rememberedState());

    auto plotsGallery = addGroup(toolstrip, "plotsgallery");
    addLogical(plotsGallery, "NewFigurePlotOption", true, Hidden);
}

// A column view of the folder browser.
void addFolderView(FactoryGroup& currentFolder, std::string name, std::vector<std::string> columnOrder)
{
    const auto listOfGroups = rememberedState();
    const auto listOfColumns = maximumLength(100);

    auto view = addGroup(currentFolder, std::move(name));
    addCell(view, "ClosedGroups", {}, listOfGroups);
    addCell(view, "ColumnOrder", std::move(columnOrder), listOfColumns);
    addCell(view, "ColumnSizes", {}, listOfColumns);
    addText(view, "GroupColumn", "");
    addText(view, "GroupMode", "");
    addCell(view, "OpenGroups", {}, listOfGroups);
    addText(view, "SortColumn", "name");
    addLogical(view, "SortDescending", false);
    addCell(view, "VisibleColumns", {}, listOfColumns);
}

void buildCurrentFolderParts(FactoryGroup& currentFolder)
{
    const std::vector<std::string> allColumns = {"icon", "name",        "size",     "modified", "description",
                                                 "type", "modifiedUtc", "cmStatus", "preview",  "location"};

    auto autoRefresh = addGroup(currentFolder, "autorefresh");
    addLogical(autoRefresh, "Enabled", true);
    addDouble(autoRefresh, "Interval", 3, integerScalar);

    addFolderView(currentFolder, "lastfolder", {"icon", "name", "size", "modified", "description", "type"});
    addFolderView(currentFolder, "layout", allColumns);
    addFolderView(currentFolder, "lastsearch", allColumns);

    auto pathAffordance = addGroup(currentFolder, "pathaffordance");
    addLogical(pathAffordance, "Enabled", true);
    addDouble(pathAffordance, "Transparency", 40, integerScalar);

    auto detailViewer = addGroup(currentFolder, "detailviewer");
    addLogical(detailViewer, "Collapsed", false);
    addNumber(detailViewer, "Ratio", 0);
    addDouble(detailViewer, "Size", 0, integerScalar);
}

void buildCurrentFolder(FactoryGroup& desktop)
{
    auto currentFolder = addGroup(desktop, "currentfolder");
    addDouble(currentFolder, "CurrentFolderSize", 15000, integerScalar);
    addLogical(currentFolder, "ShowHiddenFiles", false);
    addCell(currentFolder, "History", {}, maximumLength(500));

    // These two siblings come between the settings of the current folder: the order of creation is that of
    // the whole tree.
    buildAddressBar(desktop);
    buildToolstrip(desktop);

    addDouble(currentFolder, "HistorySize", 20, integerScalar);
    addLogical(currentFolder, "IsJSCurrentFolderInstance", false);
    addCell(currentFolder, "EphemeralRoots", {}, rememberedState());

    buildCurrentFolderParts(currentFolder);
}

void buildLogin(FactoryGroup& desktop)
{
    auto login = addGroup(desktop, "login");
    addText(login, "CachedUsername", "");
    addLogical(login, "DebugLog", false);
    addText(login, "DisplayName", "");
    addText(login, "EmailAddress", "");
    addText(login, "FirstName", "");
    addText(login, "IdentityToken", "");
    addText(login, "LastName", "");
    addText(login, "Level", "0");
    addText(login, "ProfileId", "");
    addLogical(login, "RememberMe", true);
    addText(login, "SessionId", "");
    addText(login, "SourceId", "");
    addText(login, "UserId", "");
}

void buildPairbot(FactoryGroup& desktop)
{
    auto pairbot = addGroup(desktop, "pairbot");
    addLogical(pairbot, "PairbotEnabled", false);
    addLogical(pairbot, "AskPairbotShortcutHintDisabled", false);
    addLogical(pairbot, "AskPairbotShortcutHintDismissedForSessionInEditor", false);
    addLogical(pairbot, "ShowActionAndAskPairbotSparkleIcon", true);
}

void buildDesktop(FactoryGroup& root)
{
    auto desktop = addGroup(root, "desktop", "Hidden", true);
    addSwitches(desktop);

    auto layout = addGroup(desktop, "layout");
    addCharVector(layout, "CustomLayouts", "", Hidden, maximumLength(1000000));

    auto help = addGroup(desktop, "help");
    addText(help, "DocLanguage", "");

    addGroup(desktop, "displayedroots");
    buildCurrentFolder(desktop);

    auto arrayEditor = addGroup(desktop, "arrayeditor");
    addLogical(arrayEditor, "CodeGenEnabled", true);
    addLogical(arrayEditor, "VECmdLineCodeGenEnabled", true);

    buildLogin(desktop);
    buildPairbot(desktop);
    addLogical(desktop, "EnableJSConsoleButton", true, Hidden);

    buildVariablesArea(desktop);
    buildWorkspaceArea(desktop);
    buildCommandHistoryArea(desktop);
}

}  // namespace

void buildAppsArea(FactoryGroup& root)
{
    auto apps = addGroup(root, "apps");
    addText(apps, "AppsInstallFolder", "");

    buildDesktop(root);
}

}  // namespace verdix::settings::tree
