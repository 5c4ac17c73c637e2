// The JSON form that other programs read: every node of the real tree keeps to it.

#include <boost/json.hpp>
#include <gmock/gmock.h>

#include <set>
#include <string>
#include <tests/support/files.hpp>
#include <tests/tool/process.hpp>
#include <vector>

namespace {

namespace json = boost::json;
using testing::ElementsAre;

std::vector<std::string> keys(const json::object& object)
{
    std::vector<std::string> names;
    for (const auto& member : object) {
        names.emplace_back(member.key());
    }
    return names;
}

json::object exportTree()
{
    const auto run = tests::runTool({"export", "--format", "json"});
    EXPECT_EQ(run.exitCode, 0) << run.errors;
    return json::parse(run.output).as_object();
}

void checkValue(const json::object& value)
{
    std::size_t product = 1;
    for (const json::value& size : value.at("dims").as_array()) {
        product *= size.to_number<std::size_t>();
    }
    EXPECT_GE(value.at("dims").as_array().size(), 2U);
    const json::value& data = value.at("data");
    EXPECT_EQ(data.is_string(), value.at("class").as_string() == "char");
    // A text counts its UTF-16 units, which are its bytes when it is ASCII.
    EXPECT_EQ(data.is_string() ? data.get_string().size() : data.as_array().size(), product);
}

const json::object& nodeAt(const json::object& document, std::string_view path)
{
    for (const json::value& node : document.at("nodes").as_array()) {
        if (node.as_object().at("path").as_string() == path) {
            return node.get_object();
        }
    }
    throw std::out_of_range(std::string(path) + " is not in the export");
}

TEST(Export, EveryNodeHasTheStatedForm)
{
    const json::object document = exportTree();
    EXPECT_THAT(keys(document), ElementsAre("root", "nodes", "releaseChanges", "settingPathList"));
    std::set<std::string> paths;
    for (const json::value& entry : document.at("nodes").as_array()) {
        const json::object& node = entry.as_object();
        const std::string path(node.at("path").as_string());
        SCOPED_TRACE(path);
        EXPECT_THAT(keys(node), ElementsAre("path", "node", "visibility", "readOnly", "value", "validator",
                                            "runTimeDefault", "valueValidators", "aliasTarget",
                                            "errorHandler", "additionalFile"));
        if (!node.at("value").is_null()) {
            checkValue(node.at("value").as_object());
        }
        EXPECT_EQ(node.at("aliasTarget").is_string(), node.at("node").as_string() == "alias");
        EXPECT_TRUE(paths.insert(path).second) << "twice";
        const std::string parent = path.substr(0, path.rfind('.'));
        EXPECT_TRUE(parent == "verdix" || paths.contains(parent)) << "stands before its group";
    }
    EXPECT_GT(paths.size(), 1000U);
}

TEST(Export, WritesKindsOfValuesAndRules)
{
    const json::object document = exportTree();
    const auto text = [&document](std::string_view path, const char* key) {
        return json::serialize(nodeAt(document, path).at(key));
    };
    EXPECT_EQ(text("verdix.commandwindow.WindowSize", "value"),
              R"({"class":"int32","dims":[1,2],"data":[180,45]})");
    EXPECT_EQ(text("verdix.connector.InterfacesBlocklist", "value"),
              R"({"class":"cell","dims":[1,1],"data":["awdl"]})");
    EXPECT_EQ(text("verdix.connector.StaticPaths", "value"), R"({"class":"cell","dims":[1,0],"data":[]})");
    EXPECT_EQ(text("verdix.dump", "value"), "null");
    EXPECT_EQ(text("verdix.unittest.OutputDetail", "valueValidators"),
              R"([{"kind":"range","lower":-1,"upper":4}])");
    EXPECT_THAT(text("verdix.ui.figure.Colormap", "valueValidators"),
                testing::HasSubstr(R"({"kind":"size","rows":null,"columns":3})"));
    EXPECT_EQ(text("verdix.qorv", "aliasTarget"), R"("qorv")");
    EXPECT_EQ(text("verdix.class.UseFullNameInDisplayHeader", "validator"),
              R"({"kind":"script","qualifier":"verdix.settings","function":"mustBeLogicalScalar"})");
    EXPECT_EQ(text("verdix.desktop.workspace.savevariablestoscript.MaximumArraySize", "validator"),
              R"({"kind":"native","library":"libvxsavevars","function":"validateMaximumArraySizeValue"})");
    EXPECT_EQ(text("verdix.appearance.VERDIXTheme", "valueValidators"),
              R"([{"kind":"allowedValues","values":["System","Light","Dark"]}])");
    EXPECT_EQ(
        text("verdix.ui.internal.figuretype.webfigures", "runTimeDefault"),
        R"({"kind":"native","library":"libvxgraphics_state","function":"getDefaultFigureTypeForSetting"})");
    EXPECT_EQ(json::serialize(document.at("releaseChanges").as_array().at(3).at("changes").at(0)),
              R"({"operation":"move","from":["verdix.connector.InterfacesBlacklist"],)"
              R"("to":["verdix.connector.InterfacesBlocklist"]})");
}

TEST(Export, WritesTheSameToAFile)
{
    const tests::TestFolder folder;
    const std::string file = folder.with("export.json", "old content");
    const auto run = tests::runTool({"export", "--format", "json", "-o", file});
    EXPECT_EQ(run.exitCode, 0) << run.errors;
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(tests::readFile(file), tests::runTool({"export", "--format", "json"}).output);
}

}  // namespace
