#include <tree/areas.hpp>
#include <tree/vocabulary.hpp>

namespace verdix::settings::tree {

void buildImportToolArea(FactoryGroup& root)
{
    auto importTool = addGroup(root, "importtool");
    addCharvec(importTool, "ImportToolTextType", "string");
    addLogical(importTool, "Decaf", false);
}

}  // namespace verdix::settings::tree
