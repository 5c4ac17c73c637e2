#include <tree/areas.hpp>
#include <tree/vocabulary.hpp>

namespace verdix::settings::tree {

void buildRequirementsArea(FactoryGroup& root)
{
    auto rmi = addGroup(root, "rmi");

    auto connector = addGroup(rmi, "connector");
    addLogical(connector, "EnableHTTP", false);

    auto codePane = addGroup(rmi, "codepane");
    addLogical(codePane, "ShowReqLinksPanel", false);

    auto kvbw = addGroup(rmi, "kvbw");
    addLogical(kvbw, "DuplicateOnCopy", true);
}

}  // namespace verdix::settings::tree
