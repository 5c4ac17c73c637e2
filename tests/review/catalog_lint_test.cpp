#include <review/catalog_file.hpp>
#include <review/catalog_lint.hpp>

#include <verdix/settings/internal/values.hpp>

#include <gmock/gmock.h>

#include <string>
#include <tests/support/files.hpp>
#include <vector>

namespace {

using Properties = settings::core::detail::FactorySettingProperties;

/// The groups "web" and "web.plain", settings in them, one under the root, and an alias.
vx::core::SettingsTree sampleTree()
{
    vx::core::SettingsTree tree("verdix");
    const Properties group{false, false, {}, {}, {}, false, false, {}};
    Properties setting = group;
    setting.factoryValue = verdix::settings::internal::charvec(std::string("on"));
    setting.valueValidators = {{{.allowedValues = {u"on", u"off"}}}};
    tree.root()->createFactorySetting("Top", true, setting);
    const auto web = tree.root()->createFactorySetting("web", false, group);
    web->createFactorySetting("ShowTips", true, setting);
    web->createFactorySetting("Mode", true, setting);
    Properties alias = group;
    alias.setAliasName("verdix.web.Mode");
    web->createFactorySetting("Alias", true, alias);
    web->createFactorySetting("plain", false, group)->createFactorySetting("Last", true, setting);
    return tree;
}

std::vector<std::string> lint(const tests::TestFolder& folder)
{
    std::vector<std::string> lines;
    for (const auto& diagnostic : vx::review::lintCatalog(sampleTree(), folder / "catalog")) {
        lines.push_back(formatDiagnostic(diagnostic));
    }
    return lines;
}

TEST(CatalogLint, HoldsCatalogAndTreeTogether)
{
    const tests::TestFolder folder;
    EXPECT_THAT(lint(folder), testing::ElementsAre(testing::HasSubstr("there is no catalog")));
    const std::string longSentence = std::string(120, 'x') + ".";
    tests::writeFile(folder / "catalog/en/root.json",
                     R"({"verdix.Top": {"title": "Uppermost", "sentence": "Uppermost."},
"verdix.web": {"sentence": ")" +
                         longSentence + "\"}}");
    tests::writeFile(folder / "catalog/en/web.json", R"({
"verdix.web.Mode": {"sentence": "Turns \u00fcbersicht on", "keywords": ["Mode", "turns on", "modes"],
                    "values": {"on": "x", "no": "y"}, "note": "x"},
"verdix.web.ShowTips": {"sentence": "Shows the tip of the web."},
"verdix.web.Alias": {"sentence": "Is short."},
"verdix.web.plainn": {}})");
    tests::writeFile(folder / "catalog/de/web.json", R"({"verdix.web.Mode": {"sentence": ")" + longSentence +
                                                         R"(", "title": "Art"},
"verdix.web.Mode": {}})");
    tests::writeFile(folder / "catalog/en/synonyms.json", "[]");
    tests::writeFile(folder / "catalog/en/gone.json", "{}");
    tests::writeFile(folder / "catalog/undescribed", "verdix.web.plain\nverdix.web.Mode\nverdix.none\n");
    EXPECT_THAT(
        lint(folder),
        testing::ElementsAre(
            "catalog/de/web.json:2:1: verdix.web.Mode: is not in tree order, or is here twice: move or "
            "remove it",
            "catalog/en/gone.json: is not the file of an area of the tree: rename or remove it",
            "catalog/en/root.json:1:2: verdix.Top: the sentence only repeats the title: say what a user "
            "gets, "
            "or remove it",
            "catalog/en/root.json:2:1: verdix.web: belongs in web.json: move it",
            "catalog/en/root.json:2:1: verdix.web: the sentence has 121 characters: shorten it to 120",
            "catalog/en/web.json:2:1: verdix.web.Mode: unknown member \"note\": title, sentence, keywords "
            "and "
            "values are known",
            "catalog/en/web.json:2:1: verdix.web.Mode: the keyword \"Mode\" repeats the path or the "
            "sentence: "
            "remove it",
            "catalog/en/web.json:2:1: verdix.web.Mode: the keyword \"turns on\" repeats the path or the "
            "sentence: remove it",
            "catalog/en/web.json:2:1: verdix.web.Mode: the constraint does not allow \"no\", which "
            "\"values\" "
            "describes",
            "catalog/en/web.json:2:1: verdix.web.Mode: the sentence does not end with a period: add one",
            "catalog/en/web.json:4:1: verdix.web.ShowTips: is not in tree order, or is here twice: move or "
            "remove it",
            "catalog/en/web.json:4:1: verdix.web.ShowTips: the sentence only repeats the title: say what a "
            "user gets, or remove it",
            "catalog/en/web.json:5:1: verdix.web.Alias: is an alias, which the catalog does not describe: "
            "remove it",
            "catalog/en/web.json:6:1: verdix.web.plainn: is not a group or setting of the tree: correct or "
            "remove it; did you mean verdix.web.plain?",
            "catalog/undescribed:2: verdix.web.Mode: is not in tree order, or is here twice: move or remove "
            "it",
            "catalog/undescribed:2: verdix.web.Mode: has a sentence: remove this line",
            "catalog/undescribed:3: verdix.none: is not a group or setting of the tree: correct or remove it",
            "catalog/en/web.json: verdix.web.plain.Last: has no sentence: say what it does, or add the path "
            "to "
            "catalog/undescribed if that is not known"));
    tests::writeFile(folder / "catalog/en/web.json", "{\n\"verdix.web.Mode\": {\"keywords\": 1}}");
    EXPECT_THAT(lint(folder), testing::Contains("catalog/en/web.json:2:33: expected an array"));
}

TEST(CatalogFile, SplitsNamesIntoTitles)
{
    for (const auto& [name, title] :
         std::vector<std::pair<std::string, std::string>>{{"ShowLineNumbers", "Show Line Numbers"},
                                                          {"editor", "Editor"},
                                                          {"ShowHtmlTagsInURL", "Show HTML Tags in URL"},
                                                          {"OfSignIn", "Of Sign In"},
                                                          {"CSSFile", "CSS File"},
                                                          {"WindowID2", "Window ID 2"},
                                                          {"startup_plugins", "Startup Plugins"},
                                                          {"Utf8", "UTF 8"}})
    {
        EXPECT_EQ(vx::review::makeTitle(name), title);
    }
}

}  // namespace
