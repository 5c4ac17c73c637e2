#include <tree/areas.hpp>
#include <tree/vocabulary.hpp>

namespace verdix::settings::tree {

namespace {

void buildPlotting(FactoryGroup& variables)
{
    auto plotting = addGroup(variables, "plotting", "Hidden", false);
    addLogical(plotting, "DockFigure", true);
    addLogical(plotting, "FocusFigure", true);
    addLogical(plotting, "LinkData", true);
    addLogical(plotting, "GenerateTitle", true);
    addLogical(plotting, "GenerateLabels", true);
    addLogical(plotting, "GenerateLegend", true);
}

void buildStatistics(FactoryGroup& variables)
{
    auto statistics = addGroup(variables, "statistics", "Hidden", false);
    addLogical(statistics, "ShowStatistics", false);
    addNumber(statistics, "TextElementLimit", 500);
    addLogical(statistics, "ShowMaxTextElementDialog", true);

    auto statisticalCalculations = addGroup(variables, "statisticalcalculations", "Hidden", false);
    addNumber(statisticalCalculations, "StatNumelLimit", 500000);
    addLogical(statisticalCalculations, "StatUseNaNs", true);
}

void buildStructColumns(FactoryGroup& variables)
{
    const std::vector<std::string> names = {"Name",  "Value", "Size",   "Class", "Min", "Max",
                                            "Range", "Mean",  "Median", "Mode",  "Var", "Std"};
    const std::vector<int> widths(names.size(), 75);
    const auto columns = cellOf(names);

    auto structColumns = addGroup(variables, "structcolumns", "Hidden", false);
    addCell(structColumns, "ColumnsShown", {"Name", "Value", "Size", "Class"}, Visible, columns);
    addCell(structColumns, "ColumnOrder", names, Visible, columns);
    addValue(structColumns, "ColumnWidths", internal::makeRow<int>(widths), rowOf(widths.size(), atLeast(1)));
}

}  // namespace

void buildVariablesArea(FactoryGroup& desktop)
{
    const auto format = oneOf({u"short", u"long", u"shortE", u"longE", u"shortG", u"longG", u"shortEng",
                               u"longEng", u"+", u"bank", u"hex", u"rational"});
    const auto direction = oneOf({u"down", u"right", u"up", u"left"});

    auto variables = addGroup(desktop, "variables");
    addCharVector(variables, "ArrayEditor_CS_Format", "short", Visible, format);

    auto editing = addGroup(variables, "editing", "Hidden", false);
    addCharVector(editing, "ArrayEditorEDirection", "down", Visible, direction);
    addLogical(editing, "ArrayEditorEMoves", true);

    auto internationalNumberHandling = addGroup(variables, "internationalnumberhandling", "Hidden", false);
    addText(internationalNumberHandling, "SpreadsheetDecimalSeparator", ".");

    auto sorting = addGroup(variables, "sorting", "Hidden", false);
    addCharVector(sorting, "MissingValuePlacement", "auto", Visible, oneOf({u"auto", u"first", u"last"}));

    buildPlotting(variables);

    auto sparklines = addGroup(variables, "sparklines", "Hidden", false);
    addLogical(sparklines, "ShowSparklines", false);

    buildStatistics(variables);
    buildStructColumns(variables);
}

}  // namespace verdix::settings::tree
