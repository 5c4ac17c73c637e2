#include <tree/areas.hpp>
#include <tree/vocabulary.hpp>

namespace verdix::settings::tree {

namespace {

void buildFileFormat(FactoryGroup& appDesigner)
{
    auto fileFormat = addGroup(appDesigner, "fileformat");
    addCharvec(fileFormat, "CreateNewAppsAs", "vdapp");
    addLogical(fileFormat, "ShowNewPlainTextInfoMessage", true, Hidden);
}

void buildWindow(FactoryGroup& appDesigner)
{
    auto window = addGroup(appDesigner, "window");
    addLogical(window, "IsMaximized", false);
    addIntegerRow(window, "Position", {100, 100, 1400, 800}, windowPosition());
    addLogical(window, "ShowTitleFilePath", true, Visible);
    addLogical(window, "ShowTitleFileExtension", true, Visible);
}

// Both lists of files initially have one element, an empty string.
void buildHistory(FactoryGroup& appDesigner)
{
    auto history = addGroup(appDesigner, "history", Visible);
    addCell(history, "FileList", {""}, cellOfStrings());
    addInteger(history, "MaxFileListSize", 8, Visible);

    auto schemoraRealtimeApps = addGroup(history, "SchemoraRealtimeApps", Hidden);
    addCell(schemoraRealtimeApps, "RecentlyBrowsedFiles", {""}, cellOfStrings());
}

void buildDesignView(FactoryGroup& appDesigner)
{
    auto designView = addGroup(appDesigner, "designview", Visible);
    addInteger(designView, "GridInterval", 10, unchecked, Visible, inRange(10, 50));
    addLogical(designView, "ShowAlignmentHints", true, Visible);
    addLogical(designView, "ShowAxesBanner", true);
    addLogical(designView, "ShowGrid", false, Visible);
    addLogical(designView, "ShowResizingHints", false, Visible);
    addLogical(designView, "SnapToGrid", true, Visible);
    addLogical(designView, "ShowSchemoraBindingsTip", true);
    addLogical(designView, "ShowSchemoraComponentsTip", true);
    addLogical(designView, "ShowSCRTBindingsTip", true);
    addLogical(designView, "ShowSCRTComponentsTip", true);
}

void buildCodeView(FactoryGroup& appDesigner)
{
    auto codeView = addGroup(appDesigner, "codeview");
    addLogical(codeView, "ShowAppMigrationTips", true);
    addLogical(codeView, "ShowCodeViewTips", true);
    addLogical(codeView, "ShowUserComponentCodeViewTips", true);
    addLogical(codeView, "ShowProgrammingTips", true);
    addColour(codeView, "ReadonlyBackgroundColor", {241, 241, 241}, Visible);
    addCharvec(codeView, "ThemedReadonlyBackgroundColor", "", Hidden);
}

void buildComponentLibrary(FactoryGroup& appDesigner)
{
    auto componentLibrary = addGroup(appDesigner, "componentlibrary");
    addCell(componentLibrary, "CategoryOrder", {}, cellOfStrings());
    addCell(componentLibrary, "Favorites", {}, cellOfStrings());
    addCharvec(componentLibrary, "ViewMode", "icon_view");
}

}  // namespace

void buildAppDesignerArea(FactoryGroup& root)
{
    auto appDesigner = addGroup(root, "appdesigner", Visible);
    addLogical(appDesigner, "AutoSaveOnClickAway", false, Visible);
    addLogical(appDesigner, "EnableVdappSupport", true);

    buildFileFormat(appDesigner);
    buildWindow(appDesigner);
    buildHistory(appDesigner);
    buildDesignView(appDesigner);
    buildCodeView(appDesigner);

    auto componentBrowser = addGroup(appDesigner, "compbrowser", Visible);
    addLogical(componentBrowser, "IncludeComponentLabels", false, Visible);

    auto confirmationDialogs = addGroup(appDesigner, "confirmationdialogs");
    addLogical(confirmationDialogs, "ShowShortcutsDialog", true);

    buildComponentLibrary(appDesigner);

    auto compatibility = addGroup(appDesigner, "compatibility", Hidden);
    addLogical(compatibility, "ShowBackwardCompatibilityWarningTip", true, Hidden);
}

}  // namespace verdix::settings::tree
