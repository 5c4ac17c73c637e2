#include <tree/areas.hpp>
#include <tree/vocabulary.hpp>

namespace verdix::settings::tree {

void buildFindFilesArea(FactoryGroup& root)
{
    auto findFiles = addGroup(root, "findfiles");
    addLogical(findFiles, "JsEnabled", false);
    addCharvec(findFiles, "LookInPathHistory", "", unchecked, maximumLength(100000), Hidden);
    addLogical(findFiles, "MatchCase", false, Hidden);
    addLogical(findFiles, "MatchWholeword", false, Hidden);
    addLogical(findFiles, "SearchFilename", true, Hidden);
    addLogical(findFiles, "SearchContentInFile", true, Hidden);
    addCharvec(findFiles, "SearchScope", "Current folder", Hidden);
    addLogical(findFiles, "IncludeSubfolders", true, Hidden);
    addCharvec(findFiles, "FiletypeFilter", "", Hidden);
}

}  // namespace verdix::settings::tree
