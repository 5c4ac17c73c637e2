#include <tree/areas.hpp>
#include <tree/vocabulary.hpp>

#include <cstdint>
#include <limits>

namespace verdix::settings::tree {

void buildGeneralArea(FactoryGroup& root)
{
    const auto algorithms = oneOf({"twister", "philox", "threefry", "combRecursive", "multFibonacci"});
    const auto seeds = inRange(0, std::numeric_limits<std::uint32_t>::max());

    auto general = addGroup(root, "general", Visible);

    auto internal = addGroup(general, "internal");
    addLogical(internal, "VERDIXOnlinePrefToResync", false);

    auto matFile = addGroup(general, "matfile", Visible);
    addLogical(matFile, "EnableCompression", true);
    addLogical(matFile, "ProtectedLoading", false, Hidden);
    addCharvec(matFile, "SaveFormat", "v7", oneOf({"v6", "v7", "v7.3"}));

    auto verdixDrive = addGroup(general, "verdixdrive");
    addCharvec(verdixDrive, "DefaultVisibility", "", Hidden);

    auto randomNumbers = addGroup(general, "randomnumbers", Visible);
    addCharvec(randomNumbers, "DefaultAlgorithm", "twister", unchecked, algorithms);
    addNumber(randomNumbers, "DefaultSeed", 0, unchecked, seeds);

    auto windows = addGroup(general, "windows", Visible);
    addLogical(windows, "AutoCollapse", true);
}

}  // namespace verdix::settings::tree
