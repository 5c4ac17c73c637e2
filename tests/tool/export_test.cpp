// The forms that other programs read.

#include <tool/render/escaping.hpp>

#include <gmock/gmock.h>

#include <string>
#include <tests/support/files.hpp>
#include <tests/tool/sample_run.hpp>

namespace {

TEST(Export, WritesKindsOfValuesAndRules)
{
    const tests::TestFolder folder;
    const std::string file = folder.with("export.json", std::string(2'000'000, 'x'));
    EXPECT_EQ(tests::runOnSample({"export", "--format", "json", "-o", file}).exitCode, 0);
    const std::string document = tests::readFile(file);
    for (const char* line : {
             "WindowSize\"[^\n]*\"class\": \"int32\", \"dims\": \\[1, 2\\], \"data\": \\[180, 45\\]",
             "rule.colormap\"[^\n]*\"kind\": \"size\", \"rows\": null, \"columns\": 3 ",
             "MaximumArraySize\"[^\n]*\"native\", \"library\": \"libvxsavevars\", \"function\": "
             "\"validateMax",
             "Spacing\"[^\n]*\"kind\": \"allowedValues\", \"values\": \\[\"loose\", \"compact\"\\] ",
             "\"operation\": \"move\", \"from\": \\[\"verdix.connector.InterfacesBlacklist\"\\], \"to\": ",
         })
    {
        EXPECT_THAT(document, testing::ContainsRegex(line));
    }
}

TEST(Export, WritesTables)
{
    const std::string csv = tests::runOnSample({"export", "--format", "csv"}).output;
    EXPECT_THAT(csv, testing::StartsWith("path,class,shape,value,validator,rules,visibility,origin\r\n"));
    EXPECT_THAT(csv, testing::HasSubstr("commandwindow.SuppressCellBraces,logical,1-by-1,false,"
                                        "verdix.settings.mustBeLogicalScalar,,hidden,factory\r\n"));
    const std::string markdown = tests::runOnSample({"export", "--format", "markdown"}).output;
    EXPECT_THAT(markdown,
                testing::HasSubstr(" |\n| --- | --- | --- | --- | --- | --- | --- | --- | --- |\n| "));
    EXPECT_THAT(markdown,
                testing::HasSubstr("\n| verdix.UserPath | char | 1-by-17 | \"$documents\\\\VERDIX\" | "));
}

TEST(Export, EscapesEachCharacterOfAString)
{
    EXPECT_EQ(vx::tool::csvField("a,b"), "\"a,b\"");
    EXPECT_EQ(vx::tool::csvField("a\nb"), "\"a\nb\"");
    EXPECT_EQ(vx::tool::csvField("say \"x\""), "\"say \"\"x\"\"\"");
    EXPECT_EQ(vx::tool::csvField("=1,2"), "\"'=1,2\"");
    for (const std::string formula : {"=1", "+a", "-a", "-1+2", "@a", "\ta", "\ra", "-nan(a)"}) {
        EXPECT_EQ(vx::tool::csvField(formula), "\"'" + formula + '"');
    }
    for (const char* field : {"-5", "-1.5e-07", "-Inf", "a=1", ""}) {
        EXPECT_EQ(vx::tool::csvField(field), field);
    }
    EXPECT_EQ(vx::tool::markdownText("a|b\\|<c>\n\x1b[`&"), "a\\|b\\\\\\|\\<c\\> \\x1b\\[\\`\\&");
    EXPECT_EQ(vx::tool::markdownCode("`a``\x1b"), "``` `a``\\x1b ```");
    EXPECT_EQ(vx::tool::escapeHtml("<a href=\"'&\">"), "&lt;a href=&quot;&#39;&amp;&quot;&gt;");
    EXPECT_EQ(vx::tool::cssString("a'\\\n\"b"), "'a\\27 \\5c \\0a \"b'");
}

}  // namespace
