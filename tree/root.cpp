#include <tree/areas.hpp>
#include <tree/vocabulary.hpp>

namespace verdix::settings::tree {

namespace {

void buildWorkingFolder(FactoryGroup& root)
{
    auto workingFolder = addGroup(root, "workingfolder");
    addCharvec(workingFolder, "CustomFolderPath", "");
    addCharvec(workingFolder, "InitialWorkingFolder", "");
    addCharvec(workingFolder, "LastFolderPath", "");
}

void buildUnitTest(FactoryGroup& root)
{
    const auto verbosity = inRange(-1, 4);
    auto unitTest = addGroup(root, "unittest");
    addCharvec(unitTest, "DefaultPluginsFcn", "verdix.unittest.internal.getDefaultPlugins");
    addInteger(unitTest, "OutputDetail", -1, unchecked, verbosity);
    addInteger(unitTest, "LoggingLevel", -1, unchecked, verbosity);
    addLogical(unitTest, "ClearCommandWindow", false);
    addLogical(unitTest, "UseStrict", false);
    addLogical(unitTest, "UseParallel", false);
    addLogical(unitTest, "UseDebug", false);
    addLogical(unitTest, "UseTestBrowser", true);
}

// Settings and small groups that do not belong to an area.
void buildMiscellaneous(FactoryGroup& root)
{
    addLogical(root, "DeleteFilesPermanently", true);
    addCharvec(root, "G11nLanguagePref", "");
    addCharvec(root, "UserPath", "$documents\\VERDIX");  // its readers replace $documents by the folder
    addUnset(root, "dump", logicalScalar);
    buildWorkingFolder(root);
    addAlias(root, "qorv", "qorv");

    auto classDisplay = addGroup(root, "class");
    addLogical(classDisplay, "UseFullNameInDisplayHeader", false);

    auto string = addGroup(root, "string");
    addCharvec(string, "DefaultTextType", "char");

    auto vexo = addGroup(root, "vexo");  // other modules add settings to both groups
    addGroup(vexo, "upgrade");

    auto toolboxPathCache = addGroup(root, "toolboxpathcache", Visible);
    addLogical(toolboxPathCache, "EnableToolboxPathCache", true, Visible);

    auto videoReader = addGroup(root, "videoreader");
    addLogical(videoReader, "UseHardwareAcceleration", true);

    buildUnitTest(root);
}

void buildDiagnostics(FactoryGroup& root)
{
    auto diagnostics = addGroup(root, "diagnostics", Hidden);
    addLogical(diagnostics, "ShowStackDecoration", true, Hidden);
}

}  // namespace

void buildRootTree(FactoryGroup& root)
{
    buildMiscellaneous(root);
    buildAddOnsArea(root);
    buildAppDesignerArea(root);
    buildAppearanceArea(root);
    buildCodeAnalyzerArea(root);
    buildColorsArea(root);
    buildCommandWindowArea(root);
    buildConfirmationDialogsArea(root);
    buildConnectorArea(root);
    buildDateTimeArea(root);
    buildAppsArea(root);
    buildDiagnostics(root);
    buildEditorArea(root);
    buildExternalInterfacesArea(root);
    buildErrorRecoveryArea(root);
    buildFindFilesArea(root);
    buildGeneralArea(root);
    buildFontsArea(root);
    buildGraphicsArea(root);
    buildGuideArea(root);
    buildHardwareArea(root);
    buildHelpArea(root);
    buildImageDisplayArea(root);
    buildImportToolArea(root);
    buildKeyboardArea(root);
    buildLiveEditorArea(root);
    buildProfilerArea(root);
    addGroup(root, "project");  // other modules add settings to it and to sourcecontrol
    buildRequirementsArea(root);
    buildAccessibilityArea(root);
    buildStartupPluginsArea(root);
    buildSupportPackageRootArea(root);
    buildSupportPackageUpgradeArea(root);
    buildUserInterfaceArea(root);
    buildWebArea(root);
    buildSuggestionsArea(root);
    addGroup(root, "sourcecontrol");
}

}  // namespace verdix::settings::tree
