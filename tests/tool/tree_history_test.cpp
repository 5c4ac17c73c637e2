// Comparing trees: what a release engineer asks of two releases, with documents that are wrong in one thing.

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <set>
#include <sstream>
#include <string>
#include <tests/support/files.hpp>
#include <tests/tool/process.hpp>
#include <vector>

namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using tests::runTool;

/// The tree of a release.
const std::string baseline = VX_SOURCE_DIR "/docs/baseline/R2026a.json";

/// An exported tree as text, a node a line, to be doctored.
class Document
{
public:
    Document()
    {
        std::istringstream file(tests::readFile(baseline));
        for (std::string line; std::getline(file, line);) {
            lines_.push_back(line);
        }
    }

    /// The line of the node at this path.
    std::string& node(const std::string& path) { return *find("\"path\": \"" + path + "\""); }

    void remove(const std::string& path) { lines_.erase(find("\"path\": \"" + path + "\"")); }

    /// Another node like this one, at another path.
    void addLike(const std::string& path, const std::string& newPath)
    {
        const auto line = find("\"path\": \"" + path + "\"");
        std::string& copy = *lines_.insert(line, std::string(*line));
        copy.replace(copy.find(path), path.size(), newPath);
    }

    /// A further release with one change.
    void addRelease(const std::string& change)
    {
        find("\"index\": 5")
            ->append(R"(,
    { "index": 6, "release": "R2026b", "crossesRootGroups": false, "changes": [)" +
                     change + "] }");
    }

    /// The line of the release.
    std::string& release(const std::string& name) { return *find("\"release\": \"" + name + "\""); }

    [[nodiscard]] std::string write() const
    {
        std::string text;
        for (const auto& line : lines_) {
            text.append(line).append("\n");
        }
        return folder().with("tree.json", text);
    }

    static const tests::TestFolder& folder()
    {
        static const tests::TestFolder folder;
        return folder;
    }

private:
    std::vector<std::string>::iterator find(const std::string& text)
    {
        const auto line = std::ranges::find_if(
            lines_, [&](const std::string& candidate) { return candidate.find(text) != std::string::npos; });
        EXPECT_NE(line, lines_.end()) << text;
        return line;
    }

    std::vector<std::string> lines_;
};

void replace(std::string& text, const std::string& from, const std::string& to)
{
    ASSERT_NE(text.find(from), std::string::npos) << from << " in " << text;
    text.replace(text.find(from), from.size(), to);
}

std::string change(const std::string& operation, const std::string& from, const std::string& to = {})
{
    return "{ \"operation\": \"" + operation + "\", \"from\": [\"" + from + "\"], \"to\": [" +
           (to.empty() ? "" : "\"" + to + "\"") + "] }";
}

TEST(TreeHistory, TheLiveTreeCarriesTheBaselineForward)
{
    std::filesystem::path last;
    for (const auto& file : std::filesystem::directory_iterator(VX_SOURCE_DIR "/docs/baseline")) {
        last = std::max(last, file.path());
    }
    std::istringstream changes(runTool({"changes"}).output);
    std::set<std::string> later;
    for (std::string release; changes >> release; std::getline(changes, release)) {
        if (release > last.stem() && release.starts_with("R2")) {
            later.insert(release);
        }
    }
    EXPECT_LE(later.size(), 1U) << *later.begin()
                                << " is published, and its tree is not in docs/baseline: save it there with "
                                   "vxsettings export --format json, and empty docs/changed-defaults";
    const auto run = runTool(
        {"history", "--baseline", last, "--changed-defaults", VX_SOURCE_DIR "/docs/changed-defaults"});
    EXPECT_EQ(run.exitCode, 0) << run.output << run.errors;
    EXPECT_EQ(runTool({"lint"}).output, "");
}

/// What `history` says of a current tree that differs from the baseline.
std::string faultsOf(const Document& current, const std::string& listed = {})
{
    const auto run = runTool({"history", "--baseline", baseline, "--tree", current.write(),
                              "--changed-defaults", Document::folder().with("list", listed)});
    EXPECT_EQ(run.exitCode, run.output.starts_with("ok") ? 0 : 1) << run.errors;
    return run.output;
}

TEST(TreeHistory, EachQuestionCanFail)
{
    const std::string lost = "verdix.web.FindPanel";
    Document gone;
    gone.remove(lost);
    EXPECT_THAT(faultsOf(gone), AllOf(HasSubstr(lost + " is missing"), HasSubstr("tree/web.cpp"),
                                      HasSubstr("migration/release_changes.cpp")));
    gone.addRelease(change("remove", "verdix.web"));
    EXPECT_THAT(faultsOf(gone), testing::StartsWith("ok"));

    Document astray;
    astray.remove(lost);
    astray.addRelease(change("move", lost, "verdix.web.Nowhere"));
    EXPECT_THAT(faultsOf(astray),
                HasSubstr("R2026b: move " + lost + " to verdix.web.Nowhere: the target does not exist"));

    Document twice;
    twice.addRelease(change("move", "verdix.web.Former", "verdix.web.Interim") + ", " +
                     change("move", "verdix.web.Interim", lost));
    EXPECT_THAT(faultsOf(twice), AllOf(HasSubstr("to verdix.web.Interim: the target does not exist"),
                                       Not(HasSubstr("move verdix.web.Interim to " + lost))));

    Document invented;
    invented.addRelease(change("remove", "verdix.web.NeverWas"));
    EXPECT_THAT(faultsOf(invented),
                HasSubstr("R2026b: remove verdix.web.NeverWas: no release had this path"));

    Document changed;
    replace(changed.node(lost), "\"small\"", "\"large\"");
    EXPECT_THAT(faultsOf(changed), HasSubstr(lost + ": the default changed"));
    EXPECT_THAT(faultsOf(changed, lost + "  # asked for\n"), testing::StartsWith("ok"));
    EXPECT_THAT(faultsOf(Document(), lost), HasSubstr(lost + " is listed in docs/changed-defaults, but"));

    Document rewritten;
    replace(rewritten.release("R2020b"), "DelimiterOptionsTyping", "DelimiterOptions");
    EXPECT_THAT(faultsOf(rewritten), HasSubstr("the changes of R2020b are not those of its baseline"));
}

TEST(TreeDiff, TellsKindsOfDifferencesApart)
{
    Document newer;
    newer.remove("verdix.web.FindPanel");
    newer.remove("verdix.web.UseProxy");
    newer.remove("verdix.web.zoom");
    newer.addLike("verdix.web.ProxyHost", "verdix.web.Host");
    newer.remove("verdix.web.ProxyHost");
    newer.addLike("verdix.web.ProxyPort", "verdix.web.Fresh|Port");
    newer.addRelease(change("remove", "verdix.web.UseProxy") + ", " +
                     change("move", "verdix.web.ProxyHost", "verdix.web.Host"));
    replace(newer.node("verdix.web.MaxFileSize"), "1500000", "2000000");
    replace(newer.node("verdix.web.SystemBrowser"), "\"default\"", "\"hidden\"");
    replace(newer.node("verdix.web.ProxyUsername"), "mustBeStringScalar", "mustBe|Anything");
    replace(newer.node("verdix.ui.figure.Colormap"), "0.125,", "1.25e-1,");
    const std::string file = newer.write();

    const auto text = runTool({"diff", baseline, file});
    EXPECT_EQ(text.exitCode, 1) << "a setting is lost";
    std::istringstream lines(text.output);
    std::vector<std::string> found;
    for (std::string kind, path, rest; lines >> kind >> path && std::getline(lines, rest);) {
        found.push_back(kind.append(" ").append(path));
    }
    EXPECT_THAT(found, testing::ElementsAre("added verdix.web.Fresh|Port", "moved verdix.web.Host",
                                            "removed verdix.web.UseProxy", "removed verdix.web.zoom",
                                            "lost verdix.web.FindPanel", "default verdix.web.MaxFileSize",
                                            "validator verdix.web.ProxyUsername",
                                            "visibility verdix.web.SystemBrowser"));
    EXPECT_THAT(runTool({"diff", baseline, file, "--format", "json"}).output,
                HasSubstr("\"change\": \"moved\", \"path\": \"verdix.web.Host\", \"before\": "
                          "\"verdix.web.ProxyHost\", \"after\": \"R2026b\""));
    const std::string markdown = runTool({"diff", baseline, file, "--format", "markdown"}).output;
    EXPECT_THAT(markdown,
                HasSubstr("\n| moved | `verdix.web.Host` | from verdix.web.ProxyHost in R2026b |\n"));
    EXPECT_THAT(markdown, HasSubstr("mustBe\\|Anything"));
}

TEST(TreeDiff, SaysWhereADocumentIsWrong)
{
    const std::string file = Document::folder().with("broken.json", "{\n  \"nodes\": [ { \"path\": 3 } ] }");
    EXPECT_THAT(runTool({"diff", file, baseline}).errors,
                HasSubstr(file + ":2:24: not an exported tree: expected a text"));
    EXPECT_THAT(runTool({"diff", baseline, "/no/such/tree.json"}).errors,
                HasSubstr("no such file: /no/such/tree.json"));
}

}  // namespace
