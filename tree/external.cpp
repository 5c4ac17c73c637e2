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
        addString(group, "JrePath", "system");  // a string, unlike the texts of other settings
    }
}

}  // namespace

void buildExternalInterfacesArea(FactoryGroup& root)
{
    auto external = addGroup(root, "external");
    auto interfaces = addGroup(external, "interfaces");

    // The spellings of the mode differ: each interface reads its own.
    auto python = addGroup(interfaces, "python");
    addText(python, "ExecutionMode", "InProcess");
    auto cpp = addGroup(interfaces, "cpp");
    addText(cpp, "ExecutionMode", "inprocess");
    addCell(python, "Version", {"", "", "", ""}, rowOf(4, cellOfStrings()));

    buildJava(interfaces);

    auto dotnet = addGroup(interfaces, "dotnet");
    addText(dotnet, "DotnetVersion", "");
    addText(dotnet, "Framework", "");
    addText(dotnet, "Version", "framework", unchecked, oneOf({"framework", "core"}));
}

}  // namespace verdix::settings::tree
