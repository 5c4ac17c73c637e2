#include <tree/editor.hpp>
#include <tree/vocabulary.hpp>

namespace verdix::settings::tree {

namespace {

// A language construct that the editor can fold.
struct Construct
{
    const char* name;
    bool folds;
};

constexpr Construct constructs[] = {
    {"ArgumentsBlocks", false},  {"BlockComments", true},          {"Comments", true},
    {"ClassCode", true},         {"ClassEnumerationBlocks", true}, {"ClassEventBlocks", true},
    {"ClassMethodBlocks", true}, {"ClassPropertiesBlocks", true},  {"ForAndParforBlocks", true},
    {"FunctionCode", true},      {"IfElseBlocks", false},          {"Sections", false},
    {"SpmdBlocks", true},        {"SwitchCaseBlocks", false},      {"TryCatchBlocks", true},
    {"WhileBlocks", true},
};

void buildCodeFolding(FactoryGroup& editor)
{
    auto codeFolding = addGroup(editor, "codefolding");
    addLogical(codeFolding, "EnableCodeFolding", true);
    for (const auto& [name, folds] : constructs) {
        addLogical(codeFolding, std::string("Fold") + name, folds);
    }
    for (const auto& [name, folds] : constructs) {
        addLogical(codeFolding, std::string("InitiallyFold") + name, false);
    }
}

void buildCodingAids(FactoryGroup& editor)
{
    auto layout = addGroup(editor, "layout");
    addLogical(layout, "Responsive", false);

    auto codingUi = addGroup(editor, "codingui", Hidden);
    addLogical(codingUi, "Prewarm", true);
    addCharvec(codingUi, "LiveAppsGalleryState", "", unchecked, maximumLength(100000));
    addLogical(codingUi, "EnableTaskExecutionModel", false);

    auto autocompletions = addGroup(editor, "autocompletions");
    addInteger(autocompletions, "EnableAutocompletions", 1, Visible,
               inRange(0, 2));  // an integer, although it looks like a switch
    addLogical(autocompletions, "ShowPopout", true, Hidden);
    addLogical(autocompletions, "AnnounceDisclaimer", true, Hidden);
    addInteger(autocompletions, "CacheMaxSize", 5, Hidden, inRange(0, 100));
}

void buildBackup(FactoryGroup& editor)
{
    auto backup = addGroup(editor, "backup");
    addLogical(backup, "DeleteOnClose", true);
    addLogical(backup, "EnableFileBackup", true);
    addCharvec(backup, "FileExtensionToAppend", "~");
    addCharvec(backup, "FileExtensionToReplace", "asv");
    addNumber(backup, "Frequency", 5);
    addLogical(backup, "SaveIntoSourceFolder", true);
    addCharvec(backup, "SaveToFolder", "");
    addLogical(backup, "SaveUntitled", false);
    addLogical(backup, "ReplaceExtension", true);
}

// Automatic formatting of text (first group) and automatic completion of code (second group) during typing.
void buildTypingAids(FactoryGroup& editor)
{
    auto autoFormat = addGroup(editor, "autoformat");
    addLogical(autoFormat, "AngleBracketsForHyperlink", true);
    addLogical(autoFormat, "AsteriskForItalicAndBold", true);
    addLogical(autoFormat, "AutomaticBulletedList", true);
    addLogical(autoFormat, "AutomaticNumberedList", true);
    addLogical(autoFormat, "BacktickAndBarForMonospace", true);
    addLogical(autoFormat, "DollarSignForLatex", true);
    addLogical(autoFormat, "EnableAutoFormatting", true);
    addLogical(autoFormat, "HashtagForTitle", true);
    addLogical(autoFormat, "HashtagsForHeading", true);
    addLogical(autoFormat, "LabelURLToHyperlink", true);
    addLogical(autoFormat, "SectionBreak", true);
    addLogical(autoFormat, "SectionBreakAndHeading", true);
    addLogical(autoFormat, "TrademarkCopyrightSymbol", true);
    addLogical(autoFormat, "URLToHyperlink", true);
    addLogical(autoFormat, "UnderscoreForItalicAndBold", true);

    auto autoCoding = addGroup(editor, "autocoding");
    addLogical(autoCoding, "CharacterVectors", true);
    addLogical(autoCoding, "Comments", true);
    addLogical(autoCoding, "ControlFlows", false);
    addLogical(autoCoding, "CurlyBraces", true);
    addLogical(autoCoding, "Definitions", false);
    addLogical(autoCoding, "DoubleQuotes", true);
    addLogical(autoCoding, "EnableAutoCoding", true);
    addLogical(autoCoding, "Parentheses", true);
    addLogical(autoCoding, "SingleQuotes", true);
    addLogical(autoCoding, "SplitParentheses", true);
    addLogical(autoCoding, "SquareBrackets", true);
    addLogical(autoCoding, "Strings", true);
}

void buildPresentation(FactoryGroup& editor)
{
    auto present = addGroup(editor, "present", Hidden);
    addInteger(present, "DefaultPresentationZoomLevel", 200, Hidden, inRange(10, 1000));  // percent

    auto automaticSlideBreaks = addGroup(present, "automaticslidebreaks", Hidden);
    addLogical(automaticSlideBreaks, "SectionBreak", true, Hidden);
    addLogical(automaticSlideBreaks, "Title", true, Hidden);
    addLogical(automaticSlideBreaks, "HeadingLevel1", true, Hidden);
    addLogical(automaticSlideBreaks, "HeadingLevel2", false, Hidden);
    addLogical(automaticSlideBreaks, "HeadingLevel3", false, Hidden);
}

void buildSavingAndOutputs(FactoryGroup& editor)
{
    auto saving = addGroup(editor, "saving");
    addLogical(saving, "SaveFilesPeriodicallyOnline", true);
    addLogical(saving, "SaveFilesPeriodically", false, Hidden);
    addInteger(saving, "PeriodicSaveInterval", 1, atLeast(1));
    addLogical(saving, "SaveOutput", true);

    auto outputs = addGroup(editor, "outputs");
    addLogical(outputs, "EnableOutputLimit", true);
    addInteger(outputs, "OutputLimit", -1, atLeast(-1));

    auto rmi = addGroup(editor, "rmi");
    addLogical(rmi, "HighlightRequirements", true);

    auto serialization = addGroup(editor, "serialization");
    addLogical(serialization, "EnableLiveEditorCppLoad", true);
    addLogical(serialization, "EnableLiveEditorCppSave", false);
    addLogical(serialization, "EnableUnifiedEditorCppLoad", true);
    addLogical(serialization, "EnableUnifiedEditorCppSave", false);
}

void buildSpellingAndStyles(FactoryGroup& editor)
{
    auto spelling = addGroup(editor, "spelling");
    addCharvec(spelling, "CheckSpelling", "auto", oneOf({"auto", "on", "off"}));
    addLogical(spelling, "CheckInMonospaceText", false);
    addLogical(spelling, "CheckInCodeComments", true);
    addLogical(spelling, "CheckInCodeStrings", false);

    auto styles = addGroup(editor, "styles", Hidden);
    addLogical(styles, "ApplyCustomizationsToNewScripts", false, Hidden);
    addCharvec(styles, "Customizations", "{}", Hidden);
}

void buildFind(FactoryGroup& editor)
{
    auto find = addGroup(editor, "find");
    addCharvec(find, "state", "", Hidden);  // lower case, like the next one, because its readers expect it
    addCharvec(find, "isOpened", "", Hidden);
    addLogical(find, "ShowPanel", true, Hidden);
    addLogical(find, "WrapAround", true);
    addLogical(find, "MoveCursorOnType", true);
    addLogical(find, "HighlightAllResults", false);
    addLogical(find, "HighlightSelectionMatches", false);
    addLogical(find, "SeedSearchFromSelection", true);
    addLogical(find, "SeedSearchFromCursor", false);
    addLogical(find, "PersistHistoryAcrossSessions", true);
    addLogical(find, "AddSpaceOnTop", false);
}

void buildPanels(FactoryGroup& editor)
{
    auto variables = addGroup(editor, "variables", Hidden);
    addLogical(variables, "TableOutputSparklines", false, Hidden);
    addLogical(variables, "TableOutputSummaryStats", false, Hidden);

    auto tools = addGroup(editor, "tools", Hidden);
    addLogical(tools, "EnableProblemsPanel", false, Hidden);
    addLogical(tools, "OpenPanelOnDebugStart", true, Hidden);

    auto outline = addGroup(tools, "outline", Hidden);
    addLogical(outline, "ShowOutlinePanel", false, Hidden);
    addCharvec(outline, "SortByType", "Position", Hidden);
    addLogical(outline, "FollowCursor", false, Hidden);

    auto snippet = addGroup(editor, "snippet", Hidden);
    addLogical(snippet, "ShowTooltip", true, Hidden);
}

}  // namespace

void buildEditorTools(FactoryGroup& editor)
{
    buildCodeFolding(editor);
    buildCodingAids(editor);
    buildBackup(editor);
    buildTypingAids(editor);
    buildPresentation(editor);
    buildSavingAndOutputs(editor);
    buildSpellingAndStyles(editor);
    buildFind(editor);
    buildPanels(editor);
}

}  // namespace verdix::settings::tree
