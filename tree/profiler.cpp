#include <tree/areas.hpp>
#include <tree/vocabulary.hpp>

namespace verdix::settings::tree {

namespace {

void buildShowFeature(FactoryGroup& profiler)
{
    auto showFeature = addGroup(profiler, "showfeature");
    addLogical(showFeature, "ShowBusyLines", true);
    addLogical(showFeature, "ShowChildFunctions", true);
    addLogical(showFeature, "ShowCodeAnalyzerResults", true);
    addLogical(showFeature, "ShowFileCoverage", true);
    addLogical(showFeature, "ShowFlameGraph", true);
    addLogical(showFeature, "ShowFunctionListing", true);
    addLogical(showFeature, "ShowParentFunctions", true);
    addLogical(showFeature, "ShowMPIPlots", true);
}

// The settings that store how a table of the report is sorted, besides the column number.
struct SortState
{
    const char* table;
    std::initializer_list<const char*> settings;
};

void buildTables(FactoryGroup& profiler)
{
    const SortState sortStates[] = {
        {"summarytable", {"SortingDatatype", "SortingOrder"}},
        {"busylinestable", {"SortingOrder", "SortByField"}},
        {"childrentable", {"SortingOrder"}},
    };
    for (const auto& [name, settings] : sortStates) {
        auto table = addGroup(profiler, name);
        addNumber(table, "SortingColumnNumber", 0);
        for (const char* setting : settings) {
            addCharvec(table, setting, "");
        }
    }
}

}  // namespace

void buildProfilerArea(FactoryGroup& root)
{
    const auto atLeastOne = atLeast(1);

    auto profiler = addGroup(root, "profiler");
    addLogical(profiler, "EnableProfileOnButton", true);
    addLogical(profiler, "EnableProfileComparison", false);
    addNumber(profiler, "PaginateThreshold", 1000, unchecked, atLeastOne);
    addNumber(profiler, "PaginateFunctionListingThreshold", 1000, unchecked, atLeastOne);
    addCharvec(profiler, "TableViewMode", "");

    auto functionListing = addGroup(profiler, "functionlisting");
    addCharvec(functionListing, "HighlightMode", "");

    buildShowFeature(profiler);
    buildTables(profiler);

    auto window = addGroup(profiler, "window");
    addLogical(window, "IsMaximized", false);
    addUnset(window, "Position", windowPosition());
}

}  // namespace verdix::settings::tree
