#include <component/inputs.hpp>
#include <tree/areas.hpp>
#include <tree/vocabulary.hpp>

#include <boost/algorithm/string/predicate.hpp>

#include <locale>

namespace verdix::settings::tree {

namespace {

using ::settings::verdix::logDecision;

// Whoever starts the environment may switch the online working folder off for the whole process.
bool isCdAnywhereDisabled()
{
    const auto text = ::settings::verdix::environmentVariable("VX_CD_ANYWHERE_DISABLED").value_or("");
    if (text.empty()) {
        logDecision(
            "s.verdix.online.cdAnywhereDisabled set to false, because env var VX_CD_ANYWHERE_DISABLED was "
            "unset.");
        return false;
    }
    const std::locale locale;
    if (boost::algorithm::iequals(text, "true", locale)) {
        logDecision(
            "s.verdix.online.cdAnywhereDisabled set to true, based on value of VX_CD_ANYWHERE_DISABLED.");
        return true;
    }
    if (boost::algorithm::iequals(text, "false", locale)) {
        logDecision(
            "s.verdix.online.cdAnywhereDisabled set to false, based on value of VX_CD_ANYWHERE_DISABLED.");
        return false;
    }
    logDecision("s.verdix.online.cdAnywhereDisabled set to false, because VX_CD_ANYWHERE_DISABLED wasn't "
                "true/false. It was: ",
                text);
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
