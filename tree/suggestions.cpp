#include <tree/areas.hpp>
#include <tree/vocabulary.hpp>

namespace verdix::settings::tree {

void buildSuggestionsArea(FactoryGroup& root)
{
    auto suggestions = addGroup(root, "suggestions", "Hidden", false);
    addLogical(suggestions, "AcceptOnRightArrow", true, Visible);
    addLogical(suggestions, "ShowTips", true, Visible);
    addLogical(suggestions, "ShowInlineText", true, Visible);
    addLogical(suggestions, "ShowFooterDemoPopout", true, Hidden);
    addDouble(suggestions, "HorizontalWidth", -1, Hidden);
    addDouble(suggestions, "VerticalHeight", -1, Hidden);
    addDouble(suggestions, "MaximumNumberOfSuggestions", 200, Hidden, inRange(1, 10000));

    auto commandWindow = addGroup(suggestions, "commandwindow", "Hidden", false);
    addLogical(commandWindow, "ShowAutomatically", true, Visible);
    addLogical(commandWindow, "ShowOnTab", true, Visible);
    addLogical(commandWindow, "TabAcceptsOnOneSuggestion", false, Visible);

    auto editor = addGroup(suggestions, "editor", "Hidden", false);
    addLogical(editor, "ShowAutomatically", true, Visible);
    addLogical(editor, "ShowOnTab", true, Visible);
    addNumber(editor, "SuggestionDelay", 50, Hidden);
    addLogical(editor, "TabAcceptsOnOneSuggestion", false, Visible);
    addLogical(editor, "ShowAdditionalHelp", true, Visible);
}

}  // namespace verdix::settings::tree
