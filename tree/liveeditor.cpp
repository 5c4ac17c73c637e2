#include <tree/areas.hpp>
#include <tree/vocabulary.hpp>

namespace verdix::settings::tree {

void buildLiveEditorArea(FactoryGroup& root)
{
    auto liveEditor = addGroup(root, "liveeditor");
    addCharvec(liveEditor, "LiveEditorInteractiveOutputs", "50");  // a number as a character vector
    addLogical(liveEditor, "LiveEditorRemoveFigureCloning", false, Hidden);
    addLogical(liveEditor, "AutoEvaluateSymbolicSuggestions", true, Hidden);
    addLogical(liveEditor, "SuggestionsNotifierSetting", true, Hidden);
    addLogical(liveEditor, "RunOnRestoreAllControls", false);
}

}  // namespace verdix::settings::tree
