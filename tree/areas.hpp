#pragma once

#include <builder/factory_node.hpp>

namespace verdix::settings::tree {

/// Builds everything under the root group "verdix", area by area. The order of the nodes is that of creation.
void buildRootTree(FactoryGroup& root);

// One builder per area, in the order in which the root calls them. Each makes its groups under the root.
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

// Builders that the apps area calls for the group "desktop".
void buildVariablesArea(FactoryGroup& desktop);
void buildWorkspaceArea(FactoryGroup& desktop);
void buildCommandHistoryArea(FactoryGroup& desktop);

}  // namespace verdix::settings::tree
