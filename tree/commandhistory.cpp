#include <tree/areas.hpp>
#include <tree/vocabulary.hpp>

namespace verdix::settings::tree {

void buildCommandHistoryArea(FactoryGroup& desktop)
{
    auto commandHistory = addGroup(desktop, "commandhistory");
    addLogical(commandHistory, "SaveToFile", true, Visible);
    addLogical(commandHistory, "SaveDuplicates", false);
    addLogical(commandHistory, "SaveExitCommand", false);
    addInteger(commandHistory, "ObsoleteSaveOption", 0);
    addInteger(commandHistory, "CommandCountLimit", 25000, Visible);
    addInteger(commandHistory, "SaveOptions", 0);
    addLogical(commandHistory, "MatchAnywhere", false);
    addLogical(commandHistory, "MatchCase", false);
    addLogical(commandHistory, "FilterMatches", false);
    addLogical(commandHistory, "ShowMatchBar", false);
    addLogical(commandHistory, "ShowExecutionTimeWhenDocked", false);
    addLogical(commandHistory, "ShowMatchBarWhenDocked", false);
    addLogical(commandHistory, "ShowMatchLocations", false);
    addLogical(commandHistory, "ShowExecutionTime", false);
    addInteger(commandHistory, "ShowFavoriteCommands", 1);  // 0 or 1, like the next one
    addInteger(commandHistory, "ShowFavoriteCommandsWhenDocked", 0);
    addInteger(commandHistory, "PopupWidth", -1);
    addInteger(commandHistory, "PopupHeight", -1);
    addCharvec(commandHistory, "DisplayMode", "popup");
}

}  // namespace verdix::settings::tree
