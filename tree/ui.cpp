#include <component/inputs.hpp>
#include <tree/areas.hpp>
#include <tree/vocabulary.hpp>

#include <cmath>
#include <cstddef>
#include <stdexcept>

namespace verdix::settings::tree {

namespace {

using foundation::verdixdata::Array;
using ::settings::verdix::EnvironmentInput;
using ::settings::verdix::environmentVariable;
using ::settings::verdix::FeatureInput;
using ::settings::verdix::featureSwitch;

constexpr NormalisedRgb black{0, 0, 0};
constexpr NormalisedRgb grey{0.7, 0.7, 0.7};
constexpr NormalisedRgb lightGrey{0.94, 0.94, 0.94};
constexpr NormalisedRgb toolbarGrey{0.956862745098039, 0.956862745098039, 0.956862745098039};
constexpr NormalisedRgb white{1, 1, 1};

// Returns a trait: the native graphics library computes the factory value.
constexpr ComputedBy computed(const char* function)
{
    return computedBy("libvxgraphics_state", function);
}

// Returns true unless the environment variable disables it.
bool usesAppShell()
{
    const auto value = environmentVariable(EnvironmentInput::useAppShell);
    return !value || value->starts_with('1');
}

FactoryGroup buildInternal(FactoryGroup& ui)
{
    auto internal = addGroup(ui, "internal");
    addLogical(internal, "ForceJavaMigrationWarnings", false);

    auto figureType = addGroup(internal, "figuretype");
    addUnset(figureType, "webfigures", computed("getDefaultFigureTypeForSetting"), logicalScalar,
             readOnly(true));

    auto grid = addGroup(internal, "grid");
    addLogical(grid, "AllowFit", false);

    auto uiControl = addGroup(internal, "uicontrol");
    addLogical(uiControl, "UseRedirect", true);
    addLogical(uiControl, "UseRedirectInUifigure", true);

    auto figure = addGroup(internal, "figure");
    addLogical(figure, "UseAppShell", usesAppShell(), Hidden);

    auto webWindow = addGroup(figure, "webwindow");
    addCharvec(webWindow, "LifecycleLogs",
               environmentVariable(EnvironmentInput::lifecycleLogs).value_or("none"), Hidden);

    auto viewModel = addGroup(figure, "viewmodel");
    addUnset(viewModel, "Decaf", computed("getDefaultSyncModeForSetting"), logicalScalar, readOnly(false));
    return internal;
}

// Returns 256 colours from dark blue to yellow. Their brightness increases, so that the order is visible in
// greyscale as well.
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

// Constraint for a colour map: a row of red, green and blue from 0 to 1 for each colour.
consteval auto colourMap()
{
    auto map = inRange(0, 1);
    map.constraint.elementClass = foundation::verdixdata::ArrayType::DOUBLE;
    map.constraint.columns = 3;
    return map;
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
    addNormalisedColour(figure, "Color", lightGrey, normalisedColour());
    addLogical(figure, "DisableChildAxesInteractionsCreation", false);
    addValue(figure, "Colormap", blueToYellow(), colourMap());
}

void buildDialog(FactoryGroup& ui)
{
    auto dialog = addGroup(ui, "dialog");

    auto fileIO = addGroup(dialog, "fileIO");
    addLogical(fileIO, "ShowInWebApps", false);

    auto uiSetColour = addGroup(dialog, "uisetcolor");
    addCharvec(uiSetColour, "ControllerName", "verdix.ui.internal.dialog.WebColorChooser");
    addCharvec(uiSetColour, "RecentlyUsedColors", "ff0000-ff00ff-ffff00-00ff00-ffffff-00ffff-000000");
}

constexpr auto figureBackground =
    normalisedColour({"auto", "none", "red", "green", "blue", "cyan", "magenta", "yellow", "black", "white",
                      "r", "g", "b", "c", "m", "y", "k", "w"});

[[noreturn]] void throwInvalidFigureBackground(const std::string& /*setting*/, const Array& /*value*/)
{
    throw std::runtime_error(
        "Value must be a normalized RGB triplet, 'auto', 'none', or color name. Valid color "
        "names include: 'red'|'green'|'blue'|'cyan'|'magenta'|'yellow'|'black'|'white' or "
        "'r'|'g'|'b'|'c'|'m'|'y'|'k'|'w'");
}

void buildCopyOptions(FactoryGroup& ui)
{
    auto copyOptions = addGroup(ui, "copyoptions");
    addCharvec(copyOptions, "FigureBackground", "auto");
    addCharvec(copyOptions, "FigureFormat", "auto");
    addLogical(copyOptions, "LinesStyleChange", false);
    addCharvec(copyOptions, "LinesStylePref", "auto");
    addCharvec(copyOptions, "LinesWidth", "2");  // points; all sizes in this group are character vectors
    addLogical(copyOptions, "LinesWidthCustom", false);
    addLogical(copyOptions, "LockAxesAndTickLabels", true);
    addLogical(copyOptions, "MatchFigureScreen", true);
    addLogical(copyOptions, "ShowUiControls", true);
    addLogical(copyOptions, "TextBW", false);
    addLogical(copyOptions, "TextBold", false);
    addLogical(copyOptions, "TextSizeChange", false);
    addCharvec(copyOptions, "TextSizeChangePref", "increase");
    addCharvec(copyOptions, "TextSizeChangeTo", "20");   // points
    addCharvec(copyOptions, "TextSizeIncrease", "140");  // percent
    addCharvec(copyOptions, "FigureBackgroundColor", "auto", unchecked, figureBackground,
               onError(throwInvalidFigureBackground));
    addCharvec(copyOptions, "Width", "1000");  // in Units
    addCharvec(copyOptions, "Height", "600");  // in Units
    addCharvec(copyOptions, "Units", "pixels");
    addCharvec(copyOptions, "ContentType", "image");
    addCharvec(copyOptions, "Resolution", "150");  // dots per inch
    addLogical(copyOptions, "Grayscale", false);
    addLogical(copyOptions, "MaintainAspectRatio", true);
}

constexpr auto containerColour =
    normalisedColour({"auto", "none", "green", "blue", "cyan", "magenta", "yellow", "black", "white"});

void buildContainer(FactoryGroup& ui)
{
    auto container = addGroup(ui, "container");

    auto menu = addGroup(container, "menu");
    addNormalisedColour(menu, "ForegroundColor", black, containerColour);

    auto toolbar = addGroup(container, "toolbar");
    addNormalisedColour(toolbar, "BackgroundColor", toolbarGrey, containerColour);

    auto panel = addGroup(container, "panel");
    addNormalisedColour(panel, "ForegroundColor", black, containerColour);
    addNormalisedColour(panel, "BackgroundColor", lightGrey, containerColour);
    addNormalisedColour(panel, "HighlightColor", white, containerColour);
    addNormalisedColour(panel, "ShadowColor", grey, containerColour);

    auto tab = addGroup(container, "tab");
    addNormalisedColour(tab, "ForegroundColor", black, containerColour);
    addNormalisedColour(tab, "BackgroundColor", lightGrey, containerColour);

    auto internal = addGroup(container, "internal");
    for (const char* name : {"uicontainer", "uiflowcontainer", "uigridcontainer"}) {
        auto group = addGroup(internal, name);
        addNormalisedColour(group, "BackgroundColor", lightGrey, containerColour);
    }
}

void buildControl(FactoryGroup& ui)
{
    auto control = addGroup(ui, "control");
    auto uiControl = addGroup(control, "uicontrol");
    addNormalisedColour(uiControl, "ForegroundColor", black, containerColour);
    addNormalisedColour(uiControl, "BackgroundColor", lightGrey, containerColour);
}

}  // namespace

void buildUserInterfaceArea(FactoryGroup& root)
{
    // Read once at the beginning, so that all nodes see the same value.
    const bool isWebUi = featureSwitch(FeatureInput::webUi) != 0;

    auto ui = addGroup(root, "ui");
    addLogical(ui, "UIFigureDebugModeEnabled", false);

    auto internal = buildInternal(ui);
    buildFigure(ui);

    auto internalDialog = addGroup(internal, "dialog");
    addLogical(internalDialog, "FileDialogs", isWebUi);

    buildDialog(ui);
    buildCopyOptions(ui);
    buildContainer(ui);
    buildControl(ui);
}

}  // namespace verdix::settings::tree
