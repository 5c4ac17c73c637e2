#include <tree/areas.hpp>
#include <tree/vocabulary.hpp>

namespace verdix::settings::tree {

void buildErrorRecoveryArea(FactoryGroup& root)
{
    auto errorRecovery = addGroup(root, "errorrecovery");

    auto registry = addGroup(errorRecovery, "registry");
    addLogical(registry, "UseWebService", false);
}

}  // namespace verdix::settings::tree
