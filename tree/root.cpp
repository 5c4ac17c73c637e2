#include <tree/areas.hpp>
#include <tree/vocabulary.hpp>

namespace verdix::settings::tree {

namespace {

void buildWorkingFolder(FactoryGroup& root)
{
    auto workingFolder = addGroup(root, "workingfolder");
    addText(workingFolder, "CustomFolderPath", "");
    addText(workingFolder, "InitialWorkingFolder", "");
    addText(workingFolder, "LastFolderPath", "");
}

void buildUnitTest(FactoryGroup& root)
{
    const auto verbosity = inRange(-1, 4);
    auto unitTest = addGroup(root, "unittest");
    addText(unitTest, "DefaultPluginsFcn", "verdix.unittest.internal.getDefaultPlugins");
    addInteger(unitTest, "OutputDetail", -1, unchecked, verbosity);
    addInteger(unitTest, "LoggingLevel", -1, unchecked, verbosity);
    addLogical(unitTest, "ClearCommandWindow", false);
    addLogical(unitTest, "UseStrict", false);
    addLogical(unitTest, "UseParallel", false);
    addLogical(unitTest, "UseDebug", false);
    addLogical(unitTest, "UseTestBrowser", true);
}

// Settings and small groups that belong to no area.
void buildGeneralPart(FactoryGroup& root)
{
    addLogical(root, "DeleteFilesPermanently", true);
    addText(root, "G11nLanguagePref", "");
    addText(root, "UserPath", "$documents\\VERDIX");  // whoever reads it puts the folder in for $documents
    addUnset(root, "dump", logicalScalar);
    buildWorkingFolder(root);
    addAlias(root, "qorv", "qorv");

    auto classDisplay = addGroup(root, "class");
    addLogical(classDisplay, "UseFullNameInDisplayHeader", false);

    auto string = addGroup(root, "string");
    addText(string, "DefaultTextType", "char");

    auto vexo = addGroup(root, "vexo");  // both groups are anchors: other modules fill them
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
    buildGeneralPart(root);
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
    addGroup(root, "project");  // an anchor, as is sourcecontrol
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
