#include <tree/areas.hpp>
#include <tree/vocabulary.hpp>

namespace verdix::settings::tree {

namespace {

void buildPlotting(FactoryGroup& variables)
{
    auto plotting = addGroup(variables, "plotting", Visible);
    addLogical(plotting, "DockFigure", true);
    addLogical(plotting, "FocusFigure", true);
    addLogical(plotting, "LinkData", true);
    addLogical(plotting, "GenerateTitle", true);
    addLogical(plotting, "GenerateLabels", true);
    addLogical(plotting, "GenerateLegend", true);
}

void buildStatistics(FactoryGroup& variables)
{
    auto statistics = addGroup(variables, "statistics", Visible);
    addLogical(statistics, "ShowStatistics", false);
    addNumber(statistics, "TextElementLimit", 500);
    addLogical(statistics, "ShowMaxTextElementDialog", true);

    auto statisticalCalculations = addGroup(variables, "statisticalcalculations", Visible);
    addNumber(statisticalCalculations, "StatNumelLimit", 500000);
    addLogical(statisticalCalculations, "StatUseNaNs", true);
}

void buildStructColumns(FactoryGroup& variables)
{
    static constexpr std::array names = {"Name",  "Value", "Size",   "Class", "Min", "Max",
                                         "Range", "Mean",  "Median", "Mode",  "Var", "Std"};
    const auto columns = cellOf(names);

    auto structColumns = addGroup(variables, "structcolumns", Visible);
    addCell(structColumns, "ColumnsShown", {"Name", "Value", "Size", "Class"}, Visible, columns);
    addCell(structColumns, "ColumnOrder", names, Visible, columns);
    addIntegerRow(structColumns, "ColumnWidths", {75, 75, 75, 75, 75, 75, 75, 75, 75, 75, 75, 75},
                  rowOf(names.size(), atLeast(1)));
}

}  // namespace

void buildVariablesArea(FactoryGroup& desktop)
{
    const auto format = oneOf({"short", "long", "shortE", "longE", "shortG", "longG", "shortEng", "longEng",
                               "+", "bank", "hex", "rational"});
    const auto direction = oneOf({"down", "right", "up", "left"});

    auto variables = addGroup(desktop, "variables");
    addCharvec(variables, "ArrayEditor_CS_Format", "short", unchecked, Visible, format);

    auto editing = addGroup(variables, "editing", Visible);
    addCharvec(editing, "ArrayEditorEDirection", "down", unchecked, Visible, direction);
    addLogical(editing, "ArrayEditorEMoves", true);

    auto internationalNumberHandling = addGroup(variables, "internationalnumberhandling", Visible);
    addCharvec(internationalNumberHandling, "SpreadsheetDecimalSeparator", ".");

    auto sorting = addGroup(variables, "sorting", Visible);
    addCharvec(sorting, "MissingValuePlacement", "auto", unchecked, Visible,
               oneOf({"auto", "first", "last"}));

    buildPlotting(variables);

    auto sparklines = addGroup(variables, "sparklines", Visible);
    addLogical(sparklines, "ShowSparklines", false);

    buildStatistics(variables);
    buildStructColumns(variables);
}

}  // namespace verdix::settings::tree
