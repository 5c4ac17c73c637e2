#include <tree/areas.hpp>
#include <tree/vocabulary.hpp>

namespace verdix::settings::tree {

void buildConfirmationDialogsArea(FactoryGroup& root)
{
    auto confirmationDialogs = addGroup(root, "confirmationdialogs");
    addLogical(confirmationDialogs, "CommandHistoryDeleteConfirm", true);
    addLogical(confirmationDialogs, "CommandWindowClearConfirmation", true);
    addInteger(confirmationDialogs, "EditorNamedBufferOption", 2, unchecked, inRange(1, 2));
    addLogical(confirmationDialogs, "EditorShowNewFilePrompt", true);
    addLogical(confirmationDialogs, "EditorClearOutputsWhenTogglingMode", true, Hidden);
    addLogical(confirmationDialogs, "VdmFileChangeConfirm", true);
    addLogical(confirmationDialogs, "VerdixExitConfirm", false);
    addLogical(confirmationDialogs, "NavigationShortcutsConfirm", true);
    addLogical(confirmationDialogs, "GrxDeleteProfile", true);
    addLogical(confirmationDialogs, "GrxForcefullyShutdownCluster", true);
    addLogical(confirmationDialogs, "GrxQRSVRequired", true);
    addLogical(confirmationDialogs, "GrxRestartPoolOnClusterChange", true);
    addLogical(confirmationDialogs, "GrxRestartPoolOnPrefSizeChange", true);
    addLogical(confirmationDialogs, "GrxSelectGpu", true);
    addLogical(confirmationDialogs, "GrxSetCloudProfileAsDefault", true);
    addLogical(confirmationDialogs, "GrxStartCloudCluster", true);
    addLogical(confirmationDialogs, "GrxValidateCloudStartsCluster", true);
    addLogical(confirmationDialogs, "WorkspaceBrowserClearConfirmation", true);
    addLogical(confirmationDialogs, "WorkspaceChangeConfirm", true);
    addLogical(confirmationDialogs, "EditorPromptBeforeExitingDebugMode", false);
    addLogical(confirmationDialogs, "EditorPromptChangeLineEnding", false);
    addLogical(confirmationDialogs, "ImportDataShowDialog", true);
    addLogical(confirmationDialogs, "RestoreAllControlsConfirmation", true);
}

}  // namespace verdix::settings::tree
