#include <tree/areas.hpp>
#include <tree/vocabulary.hpp>

namespace verdix::settings::tree {

namespace {

void buildCommandWindow(FactoryGroup& colors)
{
    auto commandWindow = addGroup(colors, "commandwindow", Visible);
    addColour(commandWindow, "ErrorColor", {183, 49, 44}, Visible);
    addColour(commandWindow, "HyperlinkColor", {22, 86, 167}, Visible);
    addColour(commandWindow, "WarningColor", {179, 98, 5}, Visible);
}

void buildProgrammingTools(FactoryGroup& colors)
{
    auto programmingTools = addGroup(colors, "programmingtools", Visible);
    addColour(programmingTools, "AutofixHighlightColor", {255, 245, 188}, Visible);
    addLogical(programmingTools, "AutomaticallyHighlightVariables", true, Visible);
    addColour(programmingTools, "CodeAnalyzerWarningColor", {237, 177, 32}, Visible);
    addColour(programmingTools, "CodeAnalyzerInfoColor", {22, 86, 167}, Visible);
    addLogical(programmingTools, "HighlightAutofixes", true, Visible);
    addLogical(programmingTools, "ShowVariablesWithSharedScope", true, Visible);
    addColour(programmingTools, "VariableHighlightColor", {208, 249, 244}, Visible);
    addColour(programmingTools, "VariablesWithSharedScopeColor", {2, 120, 128}, Visible);
}

}  // namespace

void buildColorsArea(FactoryGroup& root)
{
    auto colors = addGroup(root, "colors", Visible);
    addCharvec(colors, "DesktopColors", "", Hidden);
    addCharvec(colors, "SyntaxHighlightingColors", "", Hidden);
    addLogical(colors, "UseSystemColor", true);
    addColour(colors, "BackgroundColor", {255, 255, 255});
    addColour(colors, "ForegroundColor", {33, 33, 33});
    addColour(colors, "KeywordColor", {14, 0, 255}, Visible);
    addColour(colors, "CommentColor", {0, 128, 19}, Visible);
    addColour(colors, "StringColor", {167, 9, 245}, Visible);
    addColour(colors, "UnterminatedStringColor", {144, 38, 34}, Visible);
    addColour(colors, "SystemCommandColor", {139, 102, 6}, Visible);
    addColour(colors, "SyntaxErrorColor", {183, 49, 44}, Visible);
    addColour(colors, "ValidationSectionColor", {160, 82, 45}, Visible);

    buildCommandWindow(colors);
    buildProgrammingTools(colors);
}

}  // namespace verdix::settings::tree
