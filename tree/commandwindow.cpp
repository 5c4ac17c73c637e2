#include <tree/areas.hpp>
#include <tree/vocabulary.hpp>

#include <limits>

namespace verdix::settings::tree {

void buildCommandWindowArea(FactoryGroup& root)
{
    const auto numericFormat = oneOf({"short", "long", "shortE", "longE", "shortG", "longG", "hex", "bank",
                                      "+", "rational", "debug", "shortEng", "longEng"});
    const auto anyInt32 = inRange(std::numeric_limits<int>::min(), std::numeric_limits<int>::max());

    auto commandWindow = addGroup(root, "commandwindow", Visible);
    addLogical(commandWindow, "WrapLines", false);
    addLogical(commandWindow, "UseEightyColumnDisplayWidth", false, Visible);
    addLogical(commandWindow, "ScrollBeyondLastLine", true);
    addLogical(commandWindow, "SuppressCellBraces", false, Hidden);
    addLogical(commandWindow, "UseTrueFalseForLogical", false, Hidden);
    addLogical(commandWindow, "GettingStarted", true);
    addInteger(commandWindow, "NumberOfLinesInScrollBuffer", 5000, unchecked, inRange(1000, 25000));
    addLogical(commandWindow, "WarnIfRoot", true);
    addCharvec(commandWindow, "DisplayLineSpacing", "loose", Visible, oneOf({"loose", "compact"}));
    addCharvec(commandWindow, "NumericFormat", "short", Visible, numericFormat);
    addLogical(commandWindow, "ShowTypoSuggestions", true);
    addLogical(commandWindow, "ShowEnhancedOutput", true, Hidden);
    addLogical(commandWindow, "EnableRichOutputInteractiveView", false, Hidden);
    addIntegerRow(commandWindow, "WindowSize", {180, 45}, anyInt32);  // columns, then lines
}

}  // namespace verdix::settings::tree
