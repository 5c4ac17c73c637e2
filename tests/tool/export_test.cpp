// The JSON form that other programs read.

#include <boost/json.hpp>
#include <gmock/gmock.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <tests/support/files.hpp>
#include <tests/tool/process.hpp>

namespace {

namespace json = boost::json;

json::object exportTree()
{
    const tests::TestFolder folder;
    const std::string file = folder.with("export.json", "old content");
    const auto run = tests::runTool({"export", "--format", "json", "-o", file});
    EXPECT_EQ(run.exitCode, 0) << run.errors;
    EXPECT_EQ(run.output, "");
    return json::parse(tests::readFile(file)).as_object();
}

TEST(Export, WritesKindsOfValuesAndRules)
{
    const json::object document = exportTree();
    const auto text = [&document](std::string_view path, const char* key) {
        const json::array& nodes = document.at("nodes").as_array();
        return json::serialize(std::ranges::find(nodes, path, [](const json::value& node) {
                                   return std::string_view(node.at("path").as_string());
                               })->at(key));
    };
    EXPECT_EQ(text("verdix.commandwindow.WindowSize", "value"),
              R"({"class":"int32","dims":[1,2],"data":[180,45]})");
    EXPECT_EQ(text("verdix.connector.InterfacesBlocklist", "value"),
              R"({"class":"cell","dims":[1,1],"data":["awdl"]})");
    EXPECT_EQ(text("verdix.unittest.OutputDetail", "valueValidators"),
              R"([{"kind":"range","lower":-1,"upper":4}])");
    EXPECT_THAT(text("verdix.ui.figure.Colormap", "valueValidators"),
                testing::HasSubstr(R"({"kind":"size","rows":null,"columns":3})"));
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

}  // namespace
