// Trees that differ from the baseline in one thing: what a release engineer asks of two releases.

#include <review/json.hpp>
#include <review/tree_diff.hpp>
#include <review/tree_history.hpp>

#include <boost/json/array.hpp>
#include <boost/json/serialize.hpp>
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

namespace json = boost::json;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using tests::runTool;
using vx::review::TreeDocument;

/// The tree of a release.
const std::string baseline = VX_SOURCE_DIR "/docs/baseline/R2026a.json";

/// The baseline, to be changed.
class Tree
{
public:
    json::object& node(const std::string& path) { return find(path)->as_object(); }
    json::array& factoryData(const std::string& path) { return node(path)["value"].at("data").as_array(); }

    void remove(const std::string& path) { nodes().erase(find(path)); }

    /// Another node like this one, at another path.
    void addLike(const std::string& path, const std::string& newPath)
    {
        nodes().insert(find(path), json::value(node(path)))->as_object()["path"] = newPath;
    }

    /// A further release with these changes.
    void addRelease(const std::string& changes)
    {
        releases().push_back(
            vx::review::parseJson(R"({ "index": 6, "release": "R2026b", "changes": [)" + changes + "] }"));
    }

    json::array& releases() { return exported_.at("releaseChanges").as_array(); }

    [[nodiscard]] const json::value& exported() const { return exported_; }

private:
    json::array& nodes() { return exported_.at("nodes").as_array(); }
    json::array::iterator find(const std::string& path)
    {
        const auto found = std::ranges::find(
            nodes(), path, [](const json::value& node) { return std::string(node.at("path").as_string()); });
        EXPECT_NE(found, nodes().end()) << path;
        return found;
    }

    json::value exported_ = vx::review::parseJson(tests::readFile(baseline));
};

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

/// The incompatibilities of a tree that differs from the baseline.
std::vector<std::string> check(const Tree& current, const vx::review::ChangedDefaults& listed = {})
{
    return checkHistory(TreeDocument::read(baseline), TreeDocument(current.exported()), listed);
}

TEST(TreeHistory, ReportsEachIncompatibility)
{
    const std::string lost = "verdix.web.FindPanel";
    Tree gone;
    gone.remove(lost);
    EXPECT_THAT(check(gone), ElementsAre(AllOf(HasSubstr(lost + " is missing"), HasSubstr("tree/web.cpp"),
                                               HasSubstr("migration/release_changes.cpp"))));
    Tree removed = gone;
    removed.addRelease(change("remove", "verdix.web"));
    EXPECT_THAT(check(removed), IsEmpty());
    gone.releases().at(0).at("changes").as_array().push_back(vx::review::parseJson(change("remove", lost)));
    EXPECT_THAT(check(gone), ElementsAre(HasSubstr("is missing"),
                                         HasSubstr("the changes of R2020b are not those of its baseline")));

    Tree astray;
    astray.remove(lost);
    astray.addRelease(change("remove", "verdix.web.Nowhere") + ", " +
                      change("move", lost, "verdix.web.Nowhere"));
    EXPECT_THAT(check(astray),
                ElementsAre(HasSubstr("R2026b: move " + lost + " to verdix.web.Nowhere: the target does not"),
                            HasSubstr("R2026b: remove verdix.web.Nowhere: no release had this path")));

    Tree changed;
    changed.node(lost)["value"].at("data") = "large";
    EXPECT_THAT(check(changed), ElementsAre(HasSubstr(lost + ": the default changed")));
    const tests::TestFolder folder;
    const auto listed = vx::review::readChangedDefaults(
        folder.with("list", "# These were asked for.\n\n  " + lost + "  # twice\n"));
    EXPECT_THAT(check(changed, listed), IsEmpty());
    EXPECT_THAT(check(Tree(), listed),
                ElementsAre(HasSubstr(lost + " is listed in docs/changed-defaults, but")));
}

TEST(TreeDiff, TellsKindsOfDifferencesApart)
{
    Tree newer;
    newer.remove("verdix.web.FindPanel");
    newer.remove("verdix.web.UseProxy");
    newer.addLike("verdix.web.ProxyHost", "verdix.web.Host");
    newer.remove("verdix.web.ProxyHost");
    newer.addLike("verdix.web.ProxyPort", "verdix.web.Fresh");
    newer.addRelease(change("remove", "verdix.web.UseProxy") + ", " +
                     change("move", "verdix.web.ProxyHost", "verdix.web.Host"));
    newer.node("verdix.web.MaxFileSize")["value"].at("data") = json::array{2e6};
    newer.node("verdix.commandwindow.WindowSize")["value"].at("data") = json::array{180.0, 45};  // as before
    newer.node("verdix.web.SystemBrowser")["visibility"] = "hidden";
    newer.node("verdix.web.ProxyUsername")["validator"] = nullptr;

    std::vector<std::string> found;
    for (const auto& [kind, path, before, after] :
         compareTrees(TreeDocument::read(baseline), TreeDocument(newer.exported())))
    {
        found.push_back(std::string(kindLabel(kind)) + " " + path + ": " + before + " -> " + after);
    }
    EXPECT_THAT(found,
                ElementsAre("added verdix.web.Fresh:  -> ",
                            "moved verdix.web.Host: verdix.web.ProxyHost -> R2026b",
                            "removed verdix.web.UseProxy:  -> R2026b", "lost verdix.web.FindPanel:  -> ",
                            "default verdix.web.MaxFileSize: "
                            "value {class: \"double\", dims: [1, 1], data: [1500000]} -> "
                            "value {class: \"double\", dims: [1, 1], data: [2000000]}",
                            HasSubstr("validator verdix.web.ProxyUsername: validator {kind: \"script\""),
                            "visibility verdix.web.SystemBrowser: visibility \"default\" -> "
                            "visibility \"hidden\""));
}

TEST(TreeDocument, SaysWhereAFileIsWrong)
{
    const std::pair<const char*, const char*> cases[] = {
        {"{\n  \"nodes\": [ { \"path\" 3 } ] }",
         ":2:23: not an exported tree: expected \":\" after a name; create one with: "},
        {"\xEF\xBB\xBF{\"nodes\": [ {", ":1:14: not an exported tree: expected a name in double quotes"},
        {"{} {}", ":1:4: not an exported tree: expected nothing after the value"},
        {R"({ "nodes": {} })", ": not an exported tree: nodes: expected an array"},
        {R"({ "nodes": [ { "path": "b" } ] })", ": nodes[0]: expected a member \"node\""},
        {R"({ "nodes": [], "releaseChanges": [ { "release": "R", "changes": [ { "from": [] } ] } ] })",
         ": releaseChanges[0].changes[0].from: expected a path"},
    };
    const tests::TestFolder folder;
    for (const auto& [text, message] : cases) {
        const std::string file = folder.with("tree.json", text);
        EXPECT_THAT([&] { static_cast<void>(TreeDocument::read(file)); },
                    testing::ThrowsMessage<std::runtime_error>(HasSubstr(message)));
    }
}

TEST(ReviewCommands, ExitWithOneIfASettingIsLost)
{
    Tree newer;
    newer.remove("verdix.web.FindPanel");
    newer.node("verdix.web.MaxFileSize")["aliasTarget"] = "a|b";
    const tests::TestFolder folder;
    const std::string file = folder.with("tree.json", json::serialize(newer.exported()));

    const auto diff = runTool({"diff", baseline, file});
    EXPECT_EQ(diff.exitCode, 1);
    EXPECT_THAT(diff.output,
                testing::StartsWith("lost     verdix.web.FindPanel    no release change mentions it\n"));
    EXPECT_EQ(runTool({"diff", baseline, file, "--format", "markdown"}).output,
              "| change | path | details |\n|---|---|---|\n"
              "| lost | `verdix.web.FindPanel` | no release change mentions it |\n"
              "| default | `verdix.web.MaxFileSize` | aliasTarget null -> aliasTarget \"a\\|b\" |\n");

    const auto history = runTool({"history", "--baseline", baseline, "--tree", file});
    EXPECT_EQ(history.exitCode, 1);
    EXPECT_THAT(history.output, testing::StartsWith("error  verdix.web.FindPanel is missing"));
    EXPECT_THAT(runTool({"diff", baseline, folder / "none"}),
                tests::FailsInOneLine(
                    1, HasSubstr("cannot read " + std::string(folder / "none") + ": No such file")));
}

}  // namespace
