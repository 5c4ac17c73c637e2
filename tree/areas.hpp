#pragma once

#include <builder/factory_node.hpp>

namespace verdix::settings::tree {

/// Builds the tree under the root group "verdix", area by area. Nodes are ordered by creation.
void buildRootTree(FactoryGroup& root);

// One function for each area, in the order in which buildRootTree calls them.
void buildAddOnsArea(FactoryGroup& root);
void buildAppDesignerArea(FactoryGroup& root);
void buildAppearanceArea(FactoryGroup& root);
void buildCodeAnalyzerArea(FactoryGroup& root);
void buildColorsArea(FactoryGroup& root);
void buildCommandWindowArea(FactoryGroup& root);
void buildConfirmationDialogsArea(FactoryGroup& root);
void buildConnectorArea(FactoryGroup& root);
void buildDateTimeArea(FactoryGroup& root);
void buildAppsArea(FactoryGroup& root);
void buildEditorArea(FactoryGroup& root);
void buildExternalInterfacesArea(FactoryGroup& root);
void buildErrorRecoveryArea(FactoryGroup& root);
void buildFindFilesArea(FactoryGroup& root);
void buildGeneralArea(FactoryGroup& root);
void buildFontsArea(FactoryGroup& root);
void buildGraphicsArea(FactoryGroup& root);
void buildGuideArea(FactoryGroup& root);
void buildHardwareArea(FactoryGroup& root);
void buildHelpArea(FactoryGroup& root);
void buildImageDisplayArea(FactoryGroup& root);
void buildImportToolArea(FactoryGroup& root);
void buildKeyboardArea(FactoryGroup& root);
void buildLiveEditorArea(FactoryGroup& root);
void buildProfilerArea(FactoryGroup& root);
void buildRequirementsArea(FactoryGroup& root);
void buildAccessibilityArea(FactoryGroup& root);
void buildStartupPluginsArea(FactoryGroup& root);
void buildSupportPackageRootArea(FactoryGroup& root);
void buildSupportPackageUpgradeArea(FactoryGroup& root);
void buildUserInterfaceArea(FactoryGroup& root);
void buildWebArea(FactoryGroup& root);
void buildSuggestionsArea(FactoryGroup& root);

// Parts of the apps area under the group "desktop".
void buildVariablesArea(FactoryGroup& desktop);
void buildWorkspaceArea(FactoryGroup& desktop);
void buildCommandHistoryArea(FactoryGroup& desktop);

}  // namespace verdix::settings::tree
