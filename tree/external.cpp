#include <tree/areas.hpp>
#include <tree/vocabulary.hpp>

namespace verdix::settings::tree {

namespace {

void buildJava(FactoryGroup& interfaces)
{
    auto java = addGroup(interfaces, "java");
    addNumber(java, "HeapSize", 1728);  // megabytes
    for (const char* platform : {"glnxa64", "maca64", "maci64", "win64"}) {
        auto group = addGroup(java, platform);
        addString(group, "JrePath", "system");  // a string scalar, other than in other settings
    }
}

}  // namespace

void buildExternalInterfacesArea(FactoryGroup& root)
{
    auto external = addGroup(root, "external");
    auto interfaces = addGroup(external, "interfaces");

    // The spellings of the mode differ, because each interface expects its own.
    auto python = addGroup(interfaces, "python");
    addCharvec(python, "ExecutionMode", "InProcess");
    auto cpp = addGroup(interfaces, "cpp");
    addCharvec(cpp, "ExecutionMode", "inprocess");
    addCell(python, "Version", {"", "", "", ""}, rowOf(4, cellOfStrings()));

    buildJava(interfaces);

    auto dotnet = addGroup(interfaces, "dotnet");
    addCharvec(dotnet, "DotnetVersion", "");
    addCharvec(dotnet, "Framework", "");
    addCharvec(dotnet, "Version", "framework", unchecked, oneOf({"framework", "core"}));
}

}  // namespace verdix::settings::tree
