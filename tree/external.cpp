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
        addValue(group, "JrePath", "system", stringScalar);  // a string, unlike the texts of other settings
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
    addCell(python, "Version", std::vector<std::string>(4), rowOf(4, cellOfTexts()));

    buildJava(interfaces);

    auto dotnet = addGroup(interfaces, "dotnet");
    addText(dotnet, "DotnetVersion", "");
    addText(dotnet, "Framework", "");
    addCharVector(dotnet, "Version", "framework", oneOf({u"framework", u"core"}));
}

}  // namespace verdix::settings::tree
