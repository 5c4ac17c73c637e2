#include <tree/areas.hpp>
#include <tree/vocabulary.hpp>

namespace verdix::settings::tree {

void buildSuggestionsArea(FactoryGroup& root)
{
    auto suggestions = addGroup(root, "suggestions", Visible);
    addLogical(suggestions, "AcceptOnRightArrow", true, Visible);
    addLogical(suggestions, "ShowTips", true, Visible);
    addLogical(suggestions, "ShowInlineText", true, Visible);
    addLogical(suggestions, "ShowFooterDemoPopout", true, Hidden);
    addNumber(suggestions, "HorizontalWidth", -1, unchecked, Hidden);
    addNumber(suggestions, "VerticalHeight", -1, unchecked, Hidden);
    addNumber(suggestions, "MaximumNumberOfSuggestions", 200, unchecked, Hidden, inRange(1, 10000));

    auto commandWindow = addGroup(suggestions, "commandwindow", Visible);
    addLogical(commandWindow, "ShowAutomatically", true, Visible);
    addLogical(commandWindow, "ShowOnTab", true, Visible);
    addLogical(commandWindow, "TabAcceptsOnOneSuggestion", false, Visible);

    auto editor = addGroup(suggestions, "editor", Visible);
    addLogical(editor, "ShowAutomatically", true, Visible);
    addLogical(editor, "ShowOnTab", true, Visible);
    addNumber(editor, "SuggestionDelay", 50, Hidden);
    addLogical(editor, "TabAcceptsOnOneSuggestion", false, Visible);
    addLogical(editor, "ShowAdditionalHelp", true, Visible);
}

}  // namespace verdix::settings::tree
