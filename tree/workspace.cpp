#include <tree/areas.hpp>
#include <tree/vocabulary.hpp>

namespace verdix::settings::tree {

namespace {

constexpr NativeFunction saveLimit(const char* function)
{
    return native("libvxsavevars", function);
}

void buildSaveVariablesToScript(FactoryGroup& workspace)
{
    auto save = addGroup(workspace, "savevariablestoscript", Visible);
    addNumber(save, "MaximumArraySize", 1000, Visible, saveLimit("validateMaximumArraySizeValue"),
              atLeast(1));
    addNumber(save, "MaximumNestingLevel", 20, Visible, saveLimit("validateMaximumNestingLevel"), atLeast(1));
    addNumber(save, "MaximumTextWidth", 76, Visible, saveLimit("validateMaximumTextWidth"), atLeast(1));
    addLogical(save, "Using2Dslice", false, Visible);
    addNumberRow(save, "ArrayDimensionsFor2Dslice", {1, 2}, Visible, saveLimit("validateArrayDimensions"),
                 rowOf(2, atLeast(1)));
}

void buildStatisticalCalculations(FactoryGroup& workspace)
{
    auto statisticalCalculations = addGroup(workspace, "statisticalcalculations", Visible);
    addNumber(statisticalCalculations, "WorkspaceBrowserStatNumelLimit", 500000, Visible);
    addLogical(statisticalCalculations, "WorkspaceBrowserUseNaNs", true, Visible);
}

void buildColumns(FactoryGroup& workspace)
{
    // "Bytes" is the fifth of the available columns, but the last in the default order.
    const auto names = cellOf({"Name", "Value", "Size", "Class", "Bytes", "Min", "Max", "Range", "Mean",
                               "Median", "Mode", "Var", "Std"});

    auto columns = addGroup(workspace, "columns", Visible);
    addCell(columns, "ColumnsShown", {"Name", "Value", "Size", "Class"}, Visible, names);
    addCell(columns, "ColumnOrder",
            {"Name", "Value", "Size", "Class", "Min", "Max", "Range", "Mean", "Median", "Mode", "Var", "Std",
             "Bytes"},
            Visible, names);
    addIntegerRow(columns, "ColumnWidths", {75, 75, 75, 75, 75, 75, 75, 75, 75, 75, 75, 75, 75}, Visible,
                  rowOf(13, atLeast(1)));
}

}  // namespace

void buildWorkspaceArea(FactoryGroup& desktop)
{
    auto workspace = addGroup(desktop, "workspace");
    addNumber(workspace, "ArraySizeLimit", 100, unchecked, Visible, atLeast(1));
    addLogical(workspace, "ArraySizeLimitEnabled", true, Visible);
    addLogical(workspace, "UseInspectorForUnregisteredObjects", false, Visible);
    addLogical(workspace, "EnableContainerExpansion", false, Visible);
    addNumber(workspace, "GcBeta", 0, unchecked, Hidden, inRange(0, 1));

    buildSaveVariablesToScript(workspace);
    buildStatisticalCalculations(workspace);
    buildColumns(workspace);
}

}  // namespace verdix::settings::tree
