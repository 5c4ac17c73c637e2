#include <tree/areas.hpp>
#include <tree/vocabulary.hpp>

#include <cstdint>
#include <limits>

namespace verdix::settings::tree {

void buildGeneralArea(FactoryGroup& root)
{
    const auto algorithms = oneOf({u"twister", u"philox", u"threefry", u"combRecursive", u"multFibonacci"});
    const auto seeds = inRange(0, std::numeric_limits<std::uint32_t>::max());

    auto general = addGroup(root, "general", "Hidden", false);

    auto internal = addGroup(general, "internal");
    addLogical(internal, "VERDIXOnlinePrefToResync", false);

    auto matFile = addGroup(general, "matfile", "Hidden", false);
    addLogical(matFile, "EnableCompression", true);
    addLogical(matFile, "ProtectedLoading", false, Hidden);
    addText(matFile, "SaveFormat", "v7", oneOf({u"v6", u"v7", u"v7.3"}));

    auto verdixDrive = addGroup(general, "verdixdrive");
    addText(verdixDrive, "DefaultVisibility", "", Hidden);

    auto randomNumbers = addGroup(general, "randomnumbers", "Hidden", false);
    addCharVector(randomNumbers, "DefaultAlgorithm", "twister", algorithms);
    addDouble(randomNumbers, "DefaultSeed", 0, seeds);

    auto windows = addGroup(general, "windows", "Hidden", false);
    addLogical(windows, "AutoCollapse", true);
}

}  // namespace verdix::settings::tree
