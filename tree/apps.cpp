#include <tree/areas.hpp>
#include <tree/vocabulary.hpp>

namespace verdix::settings::tree {

namespace {

// For state that a tool saves between sessions.
constexpr auto rememberedState = maximumLength(100000);

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
    addCharvec(desktop, "LayoutState", "", unchecked, Hidden, rememberedState);
    addCharvec(desktop, "Documents", "", unchecked, Hidden, rememberedState);
}

void buildAddressBar(FactoryGroup& desktop)
{
    auto addressBar = addGroup(desktop, "addressbar");
    addCharvec(addressBar, "LocationHistory", "", unchecked, Hidden, rememberedState);
}

void buildToolstrip(FactoryGroup& desktop)
{
    auto toolstrip = addGroup(desktop, "toolstrip");
    addCharvec(toolstrip, "QuickAccessBar", "{}", unchecked, Hidden, rememberedState);
    addCharvec(toolstrip, "AppsGalleryState", "", unchecked, Hidden, rememberedState);
    addCharvec(toolstrip, "PlotsGalleryState", "", unchecked, Hidden, rememberedState);

    auto plotsGallery = addGroup(toolstrip, "plotsgallery");
    addLogical(plotsGallery, "NewFigurePlotOption", true, Hidden);
}

// Adds a column view of the folder browser.
void addFolderView(FactoryGroup& currentFolder, const char* name, std::span<const char* const> columnOrder)
{
    const auto listOfGroups = rememberedState;
    const auto listOfColumns = maximumLength(100);

    auto view = addGroup(currentFolder, name);
    addCell(view, "ClosedGroups", {}, listOfGroups);
    addCell(view, "ColumnOrder", columnOrder, listOfColumns);
    addCell(view, "ColumnSizes", {}, listOfColumns);
    addCharvec(view, "GroupColumn", "");
    addCharvec(view, "GroupMode", "");
    addCell(view, "OpenGroups", {}, listOfGroups);
    addCharvec(view, "SortColumn", "name");
    addLogical(view, "SortDescending", false);
    addCell(view, "VisibleColumns", {}, listOfColumns);
}

void buildCurrentFolderParts(FactoryGroup& currentFolder)
{
    static constexpr std::array allColumns = {"icon", "name",        "size",     "modified", "description",
                                              "type", "modifiedUtc", "cmStatus", "preview",  "location"};
    static constexpr std::span shortColumns(allColumns.data(), 6);

    auto autoRefresh = addGroup(currentFolder, "autorefresh");
    addLogical(autoRefresh, "Enabled", true);
    addNumber(autoRefresh, "Interval", 3, integerScalar);

    addFolderView(currentFolder, "lastfolder", shortColumns);
    addFolderView(currentFolder, "layout", allColumns);
    addFolderView(currentFolder, "lastsearch", allColumns);

    auto pathAffordance = addGroup(currentFolder, "pathaffordance");
    addLogical(pathAffordance, "Enabled", true);
    addNumber(pathAffordance, "Transparency", 40, integerScalar);

    auto detailViewer = addGroup(currentFolder, "detailviewer");
    addLogical(detailViewer, "Collapsed", false);
    addNumber(detailViewer, "Ratio", 0);
    addNumber(detailViewer, "Size", 0, integerScalar);
}

void buildCurrentFolder(FactoryGroup& desktop)
{
    auto currentFolder = addGroup(desktop, "currentfolder");
    addNumber(currentFolder, "CurrentFolderSize", 15000, integerScalar);
    addLogical(currentFolder, "ShowHiddenFiles", false);
    addCell(currentFolder, "History", {}, maximumLength(500));

    // The order of creation is the order of the tree, so these sibling groups are created between settings of
    // currentfolder.
    buildAddressBar(desktop);
    buildToolstrip(desktop);

    addNumber(currentFolder, "HistorySize", 20, integerScalar);
    addLogical(currentFolder, "IsJSCurrentFolderInstance", false);
    addCell(currentFolder, "EphemeralRoots", {}, rememberedState);

    buildCurrentFolderParts(currentFolder);
}

void buildLogin(FactoryGroup& desktop)
{
    auto login = addGroup(desktop, "login");
    addCharvec(login, "CachedUsername", "");
    addLogical(login, "DebugLog", false);
    addCharvec(login, "DisplayName", "");
    addCharvec(login, "EmailAddress", "");
    addCharvec(login, "FirstName", "");
    addCharvec(login, "IdentityToken", "");
    addCharvec(login, "LastName", "");
    addCharvec(login, "Level", "0");
    addCharvec(login, "ProfileId", "");
    addLogical(login, "RememberMe", true);
    addCharvec(login, "SessionId", "");
    addCharvec(login, "SourceId", "");
    addCharvec(login, "UserId", "");
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
    auto desktop = addGroup(root, "desktop", Hidden);
    addSwitches(desktop);

    auto layout = addGroup(desktop, "layout");
    addCharvec(layout, "CustomLayouts", "", unchecked, Hidden, maximumLength(1000000));

    auto help = addGroup(desktop, "help");
    addCharvec(help, "DocLanguage", "");

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
    addCharvec(apps, "AppsInstallFolder", "");

    buildDesktop(root);
}

}  // namespace verdix::settings::tree
