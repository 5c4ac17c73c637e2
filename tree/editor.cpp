#include <tree/areas.hpp>
#include <tree/editor.hpp>
#include <tree/vocabulary.hpp>

#include <optional>

namespace verdix::settings::tree {

namespace {

constexpr auto figureFormat = oneOf({"png", "jpeg", "tiff", "eps", "pdf"});
constexpr auto figureResolution = atLeast(1);   // dots per inch
constexpr auto margins = rowOf(4, atLeast(0));  // points
constexpr auto orientation = oneOf({"Portrait", "Landscape"});
constexpr auto paperSize =
    oneOf({"Letter", "Legal", "Tabloid", "Executive", "A2", "A3", "A4", "A5", "B4", "B5", "Custom"});

template <class... Traits>
void addFigureResolution(FactoryGroup& group, Traits... traits)
{
    addValue(group, "FigureResolution", internal::makeScalar<short>(600), integerScalar, figureResolution,
             traits...);
}

void buildGeneral(FactoryGroup& editor)
{
    const auto liveScriptFormat = oneOf({"M", "m", "VDX", "vdx"});
    const auto listOfFiles = cellOfStrings();

    addLogical(editor, "UseVERDIXEditor", true);
    addCharvec(editor, "OtherEditor", "");
    addCharvec(editor, "LiveScriptFormat", "M", liveScriptFormat);
    addLogical(editor, "HasResetLiveScriptFormatSetting", false, Hidden);
    addLogical(editor, "HasResetWelcomeBannerR2026b", false, Hidden);
    addCharvec(editor, "DefaultLineEnding", "CRLF");
    addInteger(editor, "RecentFileListSize", 8, unchecked, inRange(0, 100));
    addCell(editor, "RecentClosedFileList", {}, Hidden, listOfFiles);
    addLogical(editor, "ShowLastClosedFileNotFoundDialog", true, Hidden);
    addCell(editor, "RecentFileList", {}, Hidden, listOfFiles);
    addLogical(editor, "ReopenFilesOnRestart", true);
    addLogical(editor, "VerifyOutputRequest", true, Hidden);
    addLogical(editor, "OpenFileAtBreakpoint", true);
    addLogical(editor, "DisplayFullPath", true);
    addLogical(editor, "ReloadFilesOnChange", true);
    addLogical(editor, "SaveFilesOnClickAway", true);
    addLogical(editor, "AddLineTerminationOnSave", false);
    addLogical(editor, "EnableInlineStepInButtons", true);
    addLogical(editor, "OnlyStepInToUserFunctions", true);
    addLogical(editor, "EnableColumnSelection", true, Hidden);
    addLogical(editor, "DisableNavigationButtons", false, Hidden);
    addLogical(editor, "InitializeAtStartup", true);
    addLogical(editor, "InitializeBrowserAtStartup", false);
    addLogical(editor, "DeferedFigureRendering", false, Hidden);  // misspelled, but its readers expect it
    addLogical(editor, "EnablePagination", true);
    addLogical(editor, "EnableSplitScreen", true);
    addLogical(editor, "EnableSplitScreenLiveEditor", false);
    addLogical(editor, "EnableSynchronousEvaluation", false);
    addLogical(editor, "UseLegacyEditor", false, Hidden);
    addLogical(editor, "EnableSharedBrowserForLiveScript", false, Hidden);
    addNumber(editor, "MaxTokenizationLineLength", 10000, integerScalar, Hidden);
    addCharvec(editor, "PreviouslyOpenedFiles", "", unchecked, Hidden, maximumLength(100000));
    addInteger(editor, "MinimumFramesForAnimation", 10, unchecked, atLeast(1));

    auto equations = addGroup(editor, "equations", Hidden);
    addCharvec(equations, "EquationEditorSymbolsGalleryState", "", unchecked, maximumLength(100000));
    addCharvec(equations, "EquationEditorStructuresGalleryState", "", unchecked, maximumLength(100000));

    auto debug = addGroup(editor, "debug", Hidden);
    addLogical(debug, "EnableNestedDebuggingLiveEditor", false, Hidden);

    auto print = addGroup(editor, "print", Hidden);
    addInteger(print, "Options", 0x2210C809, Hidden);  // bit field of print options
    addCharvec(print, "TextFont", "0, 10, Monospace", Hidden);
    addCharvec(print, "HeaderFont", "0, 10, Monospace", Hidden);
}

// Margins (the same on all sides) and the custom paper size are in points.
void addPage(FactoryGroup& dialog, int margin)
{
    const auto marginType = oneOf({"Default", "Narrow", "Wide", "Custom"});
    const auto customPaperSize = rowOf(2, atLeast(1));

    addIntegerRow(dialog, "Margins", {margin, margin, margin, margin}, Hidden, margins);
    addCharvec(dialog, "MarginType", "Default", unchecked, Hidden, marginType);
    addCharvec(dialog, "Orientation", "Portrait", Hidden, orientation);
    addCharvec(dialog, "PaperSize", "Letter", Hidden, paperSize);
    addIntegerRow(dialog, "CustomPaperSize", {612, 792}, Hidden, customPaperSize);
}

// The contents of the export dialog for a file format. Settings whose member is not set are not created.
struct ExportDialog
{
    const char* format;
    const char* figureFormat = nullptr;
    std::optional<int> margin = {};
    std::optional<bool> embedImages = {};
    bool outputs = false;
    bool html = false;
};

constexpr ExportDialog exportDialogs[] = {
    {.format = "pdf", .figureFormat = "png", .margin = 28},
    {.format = "latex", .figureFormat = "eps", .margin = 72, .embedImages = false},
    {.format = "docx", .margin = 72},
    {.format = "html", .figureFormat = "png", .embedImages = true},
    {.format = "md", .figureFormat = "png", .embedImages = false, .outputs = true, .html = true},
    {.format = "ipy", .figureFormat = "png", .embedImages = true, .outputs = true},
};

void addExportDialog(FactoryGroup& exportDialog, const ExportDialog& options)
{
    auto dialog = addGroup(exportDialog, options.format, Hidden);
    if (options.figureFormat) {
        addCharvec(dialog, "FigureFormat", options.figureFormat, Hidden, figureFormat);
        addFigureResolution(dialog, Hidden);
    }
    if (options.margin) {
        addPage(dialog, *options.margin);
    }
    if (options.embedImages) {
        addCharvec(dialog, "MediaPath", "", unchecked, Hidden);
        addLogical(dialog, "EmbedImages", *options.embedImages, Hidden);
    }
    if (options.outputs) {
        addCharvec(dialog, "OutputLanguage", "", unchecked, Hidden);
        addLogical(dialog, "IncludeOutputs", true, Hidden);
    }
    if (options.html) {
        addLogical(dialog, "AcceptHTML", false, Hidden);
    }
}

void buildDialogs(FactoryGroup& editor)
{
    auto exportDialog = addGroup(editor, "exportDialog", Hidden);
    for (const ExportDialog& dialog : exportDialogs) {
        addExportDialog(exportDialog, dialog);
    }

    auto printDialog = addGroup(editor, "printDialog", Hidden);
    addPage(printDialog, 28);
    addLogical(printDialog, "PageNumbers", false, Hidden);
    addLogical(printDialog, "LineNumbers", true, Hidden);
    addLogical(printDialog, "WrapCodeLines", true, Hidden);
}

// Settings without a value inherit the value of the setting with the same name in the parent group, here and
// in buildExport.
void buildPageSetup(FactoryGroup& exports)
{
    const auto addInherited = [](FactoryGroup& format) {
        addUnset(format, "Orientation", stringScalar, orientation);
        addUnset(format, "PaperSize", stringScalar, paperSize);
    };

    auto pageSetup = addGroup(exports, "pagesetup");
    addCharvec(pageSetup, "PaperSize", "Letter", paperSize);
    addCharvec(pageSetup, "Orientation", "Portrait", orientation);
    addIntegerRow(pageSetup, "Margins", {72, 72, 72, 72}, margins);

    auto pdf = addGroup(pageSetup, "pdf");
    addIntegerRow(pdf, "Margins", {28, 28, 28, 28}, margins);
    addInherited(pdf);

    auto docx = addGroup(pageSetup, "docx");
    addUnset(docx, "Margins", margins);
    addInherited(docx);

    auto latex = addGroup(pageSetup, "latex");
    addIntegerRow(latex, "Margins", {134, 125, 134, 120}, margins);  // unequal on purpose
    addInherited(latex);
}

void buildExport(FactoryGroup& editor)
{
    auto exports = addGroup(editor, "export");
    addCharvec(exports, "FigureFormat", "png", figureFormat);
    addFigureResolution(exports);

    auto pdf = addGroup(exports, "pdf");
    addUnset(pdf, "FigureFormat", stringScalar, figureFormat);
    addUnset(pdf, "FigureResolution", integerScalar, figureResolution);

    auto latex = addGroup(exports, "latex");
    addCharvec(latex, "FigureFormat", "eps", figureFormat);
    addUnset(latex, "FigureResolution", integerScalar, figureResolution);

    buildPageSetup(exports);
}

void buildDisplay(FactoryGroup& editor)
{
    auto displaySettings = addGroup(editor, "displaysettings");
    addLogical(displaySettings, "DataTipsInEditMode", false);
    addCharvec(displaySettings, "DefaultView", "code", Hidden,
               oneOf({"code", "inline", "right", "hidecode"}));
    addLogical(displaySettings, "EnableInlineOutputFocus", true);
    addLogical(displaySettings, "HighlightCurrentLine", false);
    addColour(displaySettings, "HighlightCurrentLineColor", {229, 250, 221});
    addLogical(displaySettings, "LiveEditorDataTips", true);
    addCharvec(displaySettings, "DataTipsMode", "on", Hidden, oneOf({"on", "off"}));
    addLogical(displaySettings, "ShowCodeFoldingMargin", true, Hidden);
    addLogical(displaySettings, "ShowLineNumbers", true);
    addLogical(displaySettings, "ShowOpenAsLiveScriptBanner", true);
    addLogical(displaySettings, "ShowPauseOnCaughtErrorOption", false);
    addLogical(displaySettings, "ShowRunToHereMargin", true, Hidden);
    addLogical(displaySettings, "ShowRunSectionMargin", true, Hidden);
    addLogical(displaySettings, "ShowWelcomeToLiveEditorBanner", true);
    addLogical(displaySettings, "ShowLiveTasksInHideCode", true, Hidden);
    addLogical(displaySettings, "ShowLiveAppRefactor", true, Hidden);
    addNumber(displaySettings, "CurrentZoomFactor", 1, Hidden);
    addLogical(displaySettings, "DisableResetZoomKeyboardShortcut", false);
    addLogical(displaySettings, "EnableZoomOnScroll", true);
    addLogical(displaySettings, "EnableSingleFileZoom", false);
    addLogical(displaySettings, "ScrollBeyondLastLine", true);
    addLogical(displaySettings, "WrapCodeLines", false);

    auto lineLimit = addGroup(displaySettings, "linelimit");
    addColour(lineLimit, "LineColor", {191, 191, 191});
    addInteger(lineLimit, "LineColumn", 75);
    addInteger(lineLimit, "LineWidth", 1, inRange(1, 100));
    addLogical(lineLimit, "ShowLine", true);
}

void buildTabAndIndent(FactoryGroup& editor)
{
    const auto columns = inRange(1, 100);

    auto tab = addGroup(editor, "tab");
    addLogical(tab, "EmacsStyle", false);
    addInteger(tab, "IndentSize", 4, columns);
    addLogical(tab, "InsertSpaces", true);
    addInteger(tab, "TabSize", 4, columns);

    auto indent = addGroup(editor, "indent");
    addLogical(indent, "SmartIndentEntireDocument", false);
    addLogical(indent, "RemoveAutomaticWhitespace", true);
    addLogical(indent, "PadEmptyLines", false);
    addNumber(indent, "AutoIndentMaxLines", 100, unchecked, Hidden, atLeast(0));
}

}  // namespace

void buildEditorArea(FactoryGroup& root)
{
    auto editor = addGroup(root, "editor");
    buildGeneral(editor);
    buildDialogs(editor);
    buildExport(editor);
    buildDisplay(editor);
    buildTabAndIndent(editor);
    buildEditorLanguages(editor);
    buildEditorTools(editor);
}

}  // namespace verdix::settings::tree
