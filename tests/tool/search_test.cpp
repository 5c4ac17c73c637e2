#include <boost/json/parse.hpp>
#include <gmock/gmock.h>

#include <algorithm>
#include <fstream>
#include <string>
#include <tests/tool/process.hpp>
#include <vector>

namespace {

struct Match
{
    std::string path;
    std::string rank;
};

/// Searches the tree of the product with its catalog.
std::vector<Match> search(const std::string& query)
{
    const tests::ToolRun run = tests::runTool({"search", "--json", query}, {"LC_ALL=C"});
    EXPECT_EQ(run.exitCode, 0) << query << ": " << run.errors;
    const auto document = boost::json::parse(run.output);
    std::vector<Match> matches;
    for (const auto& match : document.at("matches").as_array()) {
        matches.push_back({match.at("path").as_string().c_str(), match.at("rank").as_string().c_str()});
    }
    return matches;
}

TEST(Search, FindsWhatPeopleAskFor)
{
    std::ifstream phrases(VX_SEARCH_PHRASES);
    int count = 0;
    for (std::string line; std::getline(phrases, line); ++count) {
        const std::size_t arrow = line.find(" -> ");
        const std::string accepted = line.substr(arrow + 3) + ",";
        std::vector<Match> first = search(line.substr(0, arrow));
        first.resize(std::min<std::size_t>(first.size(), 3));
        EXPECT_TRUE(std::ranges::any_of(first, [&](const Match& match) {
            return accepted.find(" " + match.path + ",") != std::string::npos;
        })) << line;
    }
    EXPECT_EQ(count, 20);
}

TEST(Search, FindsWordsInOtherFormsAndPlaces)
{
    const struct
    {
        std::string query;
        std::string path;
        std::string rank;
    } cases[] = {
        {"VERDIX.commandwindow.numericformat", "commandwindow.NumericFormat", "exact"},
        {"command window", "commandwindow", "exact"},
        {"editor.suggestions.ShowTips", "suggestions.ShowTips", "old path"},
        {"wrapl", "commandwindow.WrapLines", "prefix"},
        {"boxpat", "toolboxpathcache.EnableToolboxPathCache", "substring"},
        {"confirming exits", "confirmationdialogs.VerdixExitConfirm", "word"},
        {"collapse sections", "editor.codefolding.FoldSections", "word"},
        {"softwrap", "commandwindow.WrapLines", "word"},
        {"linenumbers", "editor.displaysettings.ShowLineNumbers", "word"},  // as a hidden setting is called
        {"heap size of the java", "external.interfaces.java.HeapSize", "word"},
        {"firewall", "web.ProxyHost", "keyword"},
        {"recoverable", "DeleteFilesPermanently", "sentence"},
        {"show the time of execution", "desktop.commandhistory.ShowExecutionTime",
         "word"},  // hidden, as all good matches
        {"shortEng", "commandwindow.NumericFormat", "value"},
        {"numericfromat", "commandwindow.NumericFormat", "spelled alike"},
        {"pssword", "web.ProxyPassword", "spelled alike"},
    };
    for (const auto& [query, path, rank] : cases) {
        const Match best = search(query).at(0);
        EXPECT_EQ(best.path, "verdix." + path) << query;
        EXPECT_EQ(best.rank, rank) << query;
    }
    EXPECT_THAT(tests::runTool({"search", "findfiles.GoToFileEnabled"}).errors,
                testing::HasSubstr("no such path: findfiles.GoToFileEnabled; it was removed in R2021a\n"));
}

}  // namespace
