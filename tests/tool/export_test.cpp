// The forms that other programs read.

#include <tool/render/escaping.hpp>

#include <boost/json.hpp>
#include <gmock/gmock.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <tests/support/files.hpp>
#include <tests/tool/sample_run.hpp>

namespace {

namespace json = boost::json;

TEST(Export, WritesKindsOfValuesAndRules)
{
    const tests::TestFolder folder;
    const std::string file = folder.with("export.json", std::string(2'000'000, 'x'));
    EXPECT_EQ(tests::runOnSample({"export", "--format", "json", "-o", file}).exitCode, 0);
    const json::value document = json::parse(tests::readFile(file));
    const auto text = [&document](std::string_view path, const char* key) {
        const json::array& nodes = document.at("nodes").as_array();
        return json::serialize(std::ranges::find(nodes, path, [](const json::value& node) {
                                   return std::string_view(node.at("path").as_string());
                               })->at(key));
    };
    EXPECT_EQ(text("verdix.commandwindow.WindowSize", "value"),
              R"({"class":"int32","dims":[1,2],"data":[180,45]})");
    EXPECT_THAT(text("verdix.rule.colormap", "valueValidators"),
                testing::HasSubstr(R"({"kind":"size","rows":null,"columns":3})"));
    EXPECT_EQ(text("verdix.desktop.workspace.MaximumArraySize", "validator"),
              R"({"kind":"native","library":"libvxsavevars","function":"validateMaximumArraySizeValue"})");
    EXPECT_EQ(text("verdix.commandwindow.DisplayLineSpacing", "valueValidators"),
              R"([{"kind":"allowedValues","values":["loose","compact"]}])");
    EXPECT_EQ(json::serialize(document.at("releaseChanges").as_array().at(3).at("changes").at(2)),
              R"({"operation":"move","from":["verdix.connector.InterfacesBlacklist"],)"
              R"("to":["verdix.connector.InterfacesBlocklist"]})");
}

TEST(Export, WritesTables)
{
    const std::string csv = tests::runOnSample({"export", "--format", "csv"}).output;
    EXPECT_THAT(csv, testing::StartsWith("path,class,shape,value,validator,rules,visibility\r\n"));
    EXPECT_THAT(csv, testing::HasSubstr("commandwindow.SuppressCellBraces,logical,1-by-1,false,"
                                        "verdix.settings.mustBeLogicalScalar,,hidden\r\n"));
    const std::string markdown = tests::runOnSample({"export", "--format", "markdown"}).output;
    EXPECT_THAT(markdown, testing::HasSubstr(" |\n| --- | --- | --- | --- | --- | --- | --- |\n| "));
    EXPECT_THAT(markdown,
                testing::HasSubstr("\n| verdix.UserPath | char | 1-by-17 | \"$documents\\\\VERDIX\" | "));
}

TEST(Export, EscapesEachCharacterOfAString)
{
    EXPECT_EQ(vx::tool::csvField("a,b"), "\"a,b\"");
    EXPECT_EQ(vx::tool::csvField("a\nb"), "\"a\nb\"");
    EXPECT_EQ(vx::tool::csvField("say \"x\""), "\"say \"\"x\"\"\"");
    EXPECT_EQ(vx::tool::markdownCell("a|b\\|<c>"), "a\\|b\\\\\\|&lt;c>");
    EXPECT_EQ(vx::tool::escapeHtml("<a href=\"'&\">"), "&lt;a href=&quot;&#39;&amp;&quot;&gt;");
    EXPECT_EQ(vx::tool::cssString("a'\\\n\"b"), "'a\\27 \\5c \\0a \"b'");
}

}  // namespace
