#include <tree/areas.hpp>
#include <tree/vocabulary.hpp>

namespace verdix::settings::tree {

namespace {

FunctionDescriptor checkedBy(const char* function)
{
    return native("libvxsavevars", function);
}

void buildSaveVariablesToScript(FactoryGroup& workspace)
{
    auto save = addGroup(workspace, "savevariablestoscript", "Hidden", false);
    addDouble(save, "MaximumArraySize", 1000, Visible, checkedBy("validateMaximumArraySizeValue"),
              atLeast(1));
    addDouble(save, "MaximumNestingLevel", 20, Visible, checkedBy("validateMaximumNestingLevel"), atLeast(1));
    addDouble(save, "MaximumTextWidth", 76, Visible, checkedBy("validateMaximumTextWidth"), atLeast(1));
    addLogical(save, "Using2Dslice", false, Visible);
    addDoubleRow(save, "ArrayDimensionsFor2Dslice", {1, 2}, Visible, checkedBy("validateArrayDimensions"),
                 rowOf(2, atLeast(1)));
}

void buildStatisticalCalculations(FactoryGroup& workspace)
{
    auto statisticalCalculations = addGroup(workspace, "statisticalcalculations", "Hidden", false);
    addNumber(statisticalCalculations, "WorkspaceBrowserStatNumelLimit", 500000, Visible);
    addLogical(statisticalCalculations, "WorkspaceBrowserUseNaNs", true, Visible);
}

void buildColumns(FactoryGroup& workspace)
{
    // "Bytes" stands fifth among the columns to choose from, but last among those shown in order.
    const auto names = cellOf({"Name", "Value", "Size", "Class", "Bytes", "Min", "Max", "Range", "Mean",
                               "Median", "Mode", "Var", "Std"});
    const std::vector<std::string> order = {"Name", "Value",  "Size", "Class", "Min", "Max",  "Range",
                                            "Mean", "Median", "Mode", "Var",   "Std", "Bytes"};
    const std::vector<int> widths(order.size(), 75);

    auto columns = addGroup(workspace, "columns", "Hidden", false);
    addCell(columns, "ColumnsShown", {"Name", "Value", "Size", "Class"}, Visible, names);
    addCell(columns, "ColumnOrder", order, Visible, names);
    addValue(columns, "ColumnWidths", internal::makeRow<int>(widths), Visible,
             rowOf(widths.size(), atLeast(1)));
}

}  // namespace

void buildWorkspaceArea(FactoryGroup& desktop)
{
    auto workspace = addGroup(desktop, "workspace");
    addDouble(workspace, "ArraySizeLimit", 100, Visible, atLeast(1));
    addLogical(workspace, "ArraySizeLimitEnabled", true, Visible);
    addLogical(workspace, "UseInspectorForUnregisteredObjects", false, Visible);
    addLogical(workspace, "EnableContainerExpansion", false, Visible);
    addDouble(workspace, "GcBeta", 0, Hidden, inRange(0, 1));

    buildSaveVariablesToScript(workspace);
    buildStatisticalCalculations(workspace);
    buildColumns(workspace);
}

}  // namespace verdix::settings::tree
