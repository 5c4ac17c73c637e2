#include <tree/areas.hpp>
#include <tree/vocabulary.hpp>

namespace verdix::settings::tree {

namespace {

void buildFileFormat(FactoryGroup& appDesigner)
{
    auto fileFormat = addGroup(appDesigner, "fileformat");
    addText(fileFormat, "CreateNewAppsAs", "vdapp");
    addLogical(fileFormat, "ShowNewPlainTextInfoMessage", true, Hidden);
}

void buildWindow(FactoryGroup& appDesigner)
{
    auto window = addGroup(appDesigner, "window");
    addLogical(window, "IsMaximized", false);
    addInt32Row(window, "Position", {100, 100, 1400, 800}, windowPosition());
    addLogical(window, "ShowTitleFilePath", true, Visible);
    addLogical(window, "ShowTitleFileExtension", true, Visible);
}

// Both lists of files start with one file of no name, not without any.
void buildHistory(FactoryGroup& appDesigner)
{
    auto history = addGroup(appDesigner, "history", "Hidden", false);
    addCell(history, "FileList", {""}, cellOfTexts());
    addInteger(history, "MaxFileListSize", 8, Visible);

    auto schemoraRealtimeApps = addGroup(history, "SchemoraRealtimeApps", "Hidden", true);
    addCell(schemoraRealtimeApps, "RecentlyBrowsedFiles", {""}, cellOfTexts());
}

void buildDesignView(FactoryGroup& appDesigner)
{
    auto designView = addGroup(appDesigner, "designview", "Hidden", false);
    addInt32(designView, "GridInterval", 10, Visible, inRange(10, 50));
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
    addText(codeView, "ThemedReadonlyBackgroundColor", "", Hidden);
}

void buildComponentLibrary(FactoryGroup& appDesigner)
{
    auto componentLibrary = addGroup(appDesigner, "componentlibrary");
    addCell(componentLibrary, "CategoryOrder", {}, cellOfTexts());
    addCell(componentLibrary, "Favorites", {}, cellOfTexts());
    addText(componentLibrary, "ViewMode", "icon_view");
}

}  // namespace

void buildAppDesignerArea(FactoryGroup& root)
{
    auto appDesigner = addGroup(root, "appdesigner", "Hidden", false);
    addLogical(appDesigner, "AutoSaveOnClickAway", false, Visible);
    addLogical(appDesigner, "EnableVdappSupport", true);

    buildFileFormat(appDesigner);
    buildWindow(appDesigner);
    buildHistory(appDesigner);
    buildDesignView(appDesigner);
    buildCodeView(appDesigner);

    auto componentBrowser = addGroup(appDesigner, "compbrowser", "Hidden", false);
    addLogical(componentBrowser, "IncludeComponentLabels", false, Visible);

    auto confirmationDialogs = addGroup(appDesigner, "confirmationdialogs");
    addLogical(confirmationDialogs, "ShowShortcutsDialog", true);

    buildComponentLibrary(appDesigner);

    auto compatibility = addGroup(appDesigner, "compatibility", "Hidden", true);
    addLogical(compatibility, "ShowBackwardCompatibilityWarningTip", true, Hidden);
}

}  // namespace verdix::settings::tree
