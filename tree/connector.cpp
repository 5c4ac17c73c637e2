#include <component/inputs.hpp>
#include <tree/areas.hpp>
#include <tree/vocabulary.hpp>

#include <boost/algorithm/string/predicate.hpp>

#include <locale>

namespace verdix::settings::tree {

namespace {

using ::settings::verdix::EnvironmentInput;
using ::settings::verdix::logDecision;

// Returns true if the environment variable disables the online working folder for the process.
bool isCdAnywhereDisabled()
{
    const auto value =
        ::settings::verdix::environmentVariable(EnvironmentInput::cdAnywhereDisabled).value_or("");
    if (value.empty()) {
        logDecision(
            "s.verdix.online.cdAnywhereDisabled set to false, because env var VX_CD_ANYWHERE_DISABLED was "
            "unset.");
        return false;
    }
    const std::locale locale;
    if (boost::algorithm::iequals(value, "true", locale)) {
        logDecision(
            "s.verdix.online.cdAnywhereDisabled set to true, based on value of VX_CD_ANYWHERE_DISABLED.");
        return true;
    }
    if (boost::algorithm::iequals(value, "false", locale)) {
        logDecision(
            "s.verdix.online.cdAnywhereDisabled set to false, based on value of VX_CD_ANYWHERE_DISABLED.");
        return false;
    }
    logDecision("s.verdix.online.cdAnywhereDisabled set to false, because VX_CD_ANYWHERE_DISABLED wasn't "
                "true/false. It was: ",
                value);
    return false;
}

}  // namespace

void buildConnectorArea(FactoryGroup& root)
{
    const bool cdAnywhereDisabled = isCdAnywhereDisabled();
    const auto anyStrings = cellOfStrings();

    auto connector = addGroup(root, "connector");
    addCell(connector, "InterfacesBlocklist", {"awdl"}, anyStrings);
    addValue(connector, "StaticPaths", internal::cell({1, 0}), Visible, anyStrings);

    auto online = addGroup(root, "online");
    addLogical(online, "cdAnywhereDisabled", cdAnywhereDisabled, Hidden);
}

}  // namespace verdix::settings::tree
