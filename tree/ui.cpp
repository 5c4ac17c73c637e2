#include <component/inputs.hpp>
#include <tree/areas.hpp>
#include <tree/vocabulary.hpp>

#include <cmath>
#include <cstddef>
#include <stdexcept>

namespace verdix::settings::tree {

namespace {

using foundation::verdixdata::Array;
using ::settings::verdix::environmentVariable;

// Red, green and blue as real numbers from 0 to 1.
using NormalisedRgb = std::array<double, 3>;

constexpr NormalisedRgb black{0, 0, 0};
constexpr NormalisedRgb grey{0.7, 0.7, 0.7};
constexpr NormalisedRgb lightGrey{0.94, 0.94, 0.94};
constexpr NormalisedRgb toolbarGrey{0.956862745098039, 0.956862745098039, 0.956862745098039};
constexpr NormalisedRgb white{1, 1, 1};

// A triple, or one of the words where there are any.
SettingValueValidator normalisedColour(std::initializer_list<std::u16string_view> words = {})
{
    return {.allowedValues = {words.begin(), words.end()},
            .colour = ::settings::core::SettingValueValidator::Colour::normalised};
}

void addColour(FactoryGroup& group, std::string_view name, const NormalisedRgb& value,
               const SettingValueValidator& rule)
{
    addValue(group, name, internal::makeRow(value), rule);
}

// A setting whose factory value the graphics library computes when it is asked for.
void addComputedLogical(FactoryGroup& group, std::string name, const char* function, bool readOnly)
{
    addSetting(group, std::move(name), "FactoryValueFcn", native("libvxgraphics_state", function),
               "ValidationFcn", logicalScalar.name, "ReadOnly", readOnly);
}

// On unless whoever starts the environment says otherwise.
bool usesAppShell()
{
    const auto text = environmentVariable("VX_UI_INTERNAL_FIGURE_USEAPPSHELL");
    return !text || text->starts_with('1');
}

FactoryGroup buildInternal(FactoryGroup& ui)
{
    auto internal = addGroup(ui, "internal");
    addLogical(internal, "ForceJavaMigrationWarnings", false);

    auto figureType = addGroup(internal, "figuretype");
    addComputedLogical(figureType, "webfigures", "getDefaultFigureTypeForSetting", true);

    auto grid = addGroup(internal, "grid");
    addLogical(grid, "AllowFit", false);

    auto uiControl = addGroup(internal, "uicontrol");
    addLogical(uiControl, "UseRedirect", true);
    addLogical(uiControl, "UseRedirectInUifigure", true);

    auto figure = addGroup(internal, "figure");
    addLogical(figure, "UseAppShell", usesAppShell(), Hidden);

    auto webWindow = addGroup(figure, "webwindow");
    addText(webWindow, "LifecycleLogs", environmentVariable("VX_WEBWINDOW_LOGS_SPEC").value_or("none"),
            Hidden);

    auto viewModel = addGroup(figure, "viewmodel");
    addComputedLogical(viewModel, "Decaf", "getDefaultSyncModeForSetting", false);
    return internal;
}

// 256 colours from a dark blue to yellow: brightness rises from row to row, so the order survives in grey.
Array blueToYellow()
{
    constexpr std::size_t count = 256;
    constexpr NormalisedRgb darkBlue{0, 0.125, 0.3};
    constexpr NormalisedRgb yellow{1, 0.925, 0.275};

    auto map = foundation::verdixdata::standalone::ClientArrayFactory{}.createArray<double>({count, 3});
    auto element = map.begin();
    for (std::size_t channel = 0; channel < darkBlue.size(); ++channel) {
        for (std::size_t row = 0; row < count; ++row) {
            const double share = static_cast<double>(row) / (count - 1);
            *element++ = std::lerp(darkBlue[channel], yellow[channel], share);
        }
    }
    return map;
}

// Red, green and blue from 0 to 1, in as many rows as the map has colours.
SettingValueValidator colourMap()
{
    auto rule = inRange(0, 1);
    rule.size = {{.columns = 3}};
    rule.elementClass = foundation::verdixdata::ArrayType::DOUBLE;
    return rule;
}

void buildFigure(FactoryGroup& ui)
{
    auto figure = addGroup(ui, "figure");
    addLogical(figure, "ShowEmbedded", false);
    addLogical(figure, "ShowInVERDIXOnline", false);
    addLogical(figure, "ShowInDialogWindow", false);
    addLogical(figure, "ShowInWebApps", false);
    addLogical(figure, "MoUIFigureInUIContainer", false);
    addLogical(figure, "MoAppInUIContainer", false);
    addLogical(figure, "DockFigureInDeployment", false);
    addColour(figure, "Color", lightGrey, normalisedColour());
    addLogical(figure, "DisableChildAxesInteractionsCreation", false);
    addValue(figure, "Colormap", blueToYellow(), colourMap());
}

void buildDialog(FactoryGroup& ui)
{
    auto dialog = addGroup(ui, "dialog");

    auto fileIO = addGroup(dialog, "fileIO");
    addLogical(fileIO, "ShowInWebApps", false);

    auto uiSetColour = addGroup(dialog, "uisetcolor");
    addText(uiSetColour, "ControllerName", "verdix.ui.internal.dialog.WebColorChooser");
    addText(uiSetColour, "RecentlyUsedColors", "ff0000-ff00ff-ffff00-00ff00-ffffff-00ffff-000000");
}

SettingValueValidator figureBackground()
{
    return normalisedColour({u"auto", u"none", u"red", u"green", u"blue", u"cyan", u"magenta", u"yellow",
                             u"black", u"white", u"r", u"g", u"b", u"c", u"m", u"y", u"k", u"w"});
}

[[noreturn]] void refuseFigureBackground(const std::string& /*setting*/, const Array& /*value*/)
{
    throw std::runtime_error(
        "Value must be a normalized RGB triplet, 'auto', 'none', or color name. Valid color "
        "names include: 'red'|'green'|'blue'|'cyan'|'magenta'|'yellow'|'black'|'white' or "
        "'r'|'g'|'b'|'c'|'m'|'y'|'k'|'w'");
}

void buildCopyOptions(FactoryGroup& ui)
{
    auto copyOptions = addGroup(ui, "copyoptions");
    addText(copyOptions, "FigureBackground", "auto");
    addText(copyOptions, "FigureFormat", "auto");
    addLogical(copyOptions, "LinesStyleChange", false);
    addText(copyOptions, "LinesStylePref", "auto");
    addText(copyOptions, "LinesWidth", "2");  // points, as a text like all sizes of this group
    addLogical(copyOptions, "LinesWidthCustom", false);
    addLogical(copyOptions, "LockAxesAndTickLabels", true);
    addLogical(copyOptions, "MatchFigureScreen", true);
    addLogical(copyOptions, "ShowUiControls", true);
    addLogical(copyOptions, "TextBW", false);
    addLogical(copyOptions, "TextBold", false);
    addLogical(copyOptions, "TextSizeChange", false);
    addText(copyOptions, "TextSizeChangePref", "increase");
    addText(copyOptions, "TextSizeChangeTo", "20");   // points
    addText(copyOptions, "TextSizeIncrease", "140");  // percent
    addSetting(copyOptions, "FigureBackgroundColor", "FactoryValue", internal::charvec("auto"),
               "ValueValidator", figureBackground(), "ErrorHandler", refuseFigureBackground);
    addText(copyOptions, "Width", "1000");  // in Units
    addText(copyOptions, "Height", "600");  // in Units
    addText(copyOptions, "Units", "pixels");
    addText(copyOptions, "ContentType", "image");
    addText(copyOptions, "Resolution", "150");  // dots per inch
    addLogical(copyOptions, "Grayscale", false);
    addLogical(copyOptions, "MaintainAspectRatio", true);
}

void buildContainer(FactoryGroup& ui, const SettingValueValidator& colour)
{
    auto container = addGroup(ui, "container");

    auto menu = addGroup(container, "menu");
    addColour(menu, "ForegroundColor", black, colour);

    auto toolbar = addGroup(container, "toolbar");
    addColour(toolbar, "BackgroundColor", toolbarGrey, colour);

    auto panel = addGroup(container, "panel");
    addColour(panel, "ForegroundColor", black, colour);
    addColour(panel, "BackgroundColor", lightGrey, colour);
    addColour(panel, "HighlightColor", white, colour);
    addColour(panel, "ShadowColor", grey, colour);

    auto tab = addGroup(container, "tab");
    addColour(tab, "ForegroundColor", black, colour);
    addColour(tab, "BackgroundColor", lightGrey, colour);

    auto internal = addGroup(container, "internal");
    for (const char* name : {"uicontainer", "uiflowcontainer", "uigridcontainer"}) {
        auto group = addGroup(internal, name);
        addColour(group, "BackgroundColor", lightGrey, colour);
    }
}

void buildControl(FactoryGroup& ui, const SettingValueValidator& colour)
{
    auto control = addGroup(ui, "control");
    auto uiControl = addGroup(control, "uicontrol");
    addColour(uiControl, "ForegroundColor", black, colour);
    addColour(uiControl, "BackgroundColor", lightGrey, colour);
}

}  // namespace

void buildUserInterfaceArea(FactoryGroup& root)
{
    // Read before anything is built, so that every node sees one state of the switch.
    foundation::feature::Feature<0> webUi("webui");
    const bool isWebUi = webUi.get() != 0;

    const auto colour = normalisedColour(
        {u"auto", u"none", u"green", u"blue", u"cyan", u"magenta", u"yellow", u"black", u"white"});

    auto ui = addGroup(root, "ui");
    addLogical(ui, "UIFigureDebugModeEnabled", false);

    auto internal = buildInternal(ui);
    buildFigure(ui);

    auto internalDialog = addGroup(internal, "dialog");
    addLogical(internalDialog, "FileDialogs", isWebUi);

    buildDialog(ui);
    buildCopyOptions(ui);
    buildContainer(ui, colour);
    buildControl(ui, colour);
}

}  // namespace verdix::settings::tree
