// Trees that differ from the baseline in one thing: what a release engineer asks of two releases.

#include <review/json.hpp>
#include <review/release_table.hpp>
#include <review/tree_history.hpp>
#include <review/tree_json.hpp>

#include <boost/algorithm/string/replace.hpp>
#include <gmock/gmock.h>

#include <cstdlib>
#include <fstream>
#include <string>
#include <tests/support/files.hpp>
#include <tests/tool/process.hpp>
#include <utility>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using tests::runTool;
using vx::review::ReleaseTree;

using Edits = std::vector<std::pair<std::string, std::string>>;
using Lines = std::vector<std::string>;

const std::string baseline = R"({
  "root": "v",
  "nodes": [
    { "path": "v.web", "node": "group" },
    { "path": "v.web.Zoom", "value": { "class": "int32", "data": [100] }, "validator": { "kind": "script", "qualifier": "verdix.settings", "function": "mustBeIntegerScalar" }, "valueValidators": [{ "kind": "range", "lower": 10, "upper": null }] },
    { "path": "v.web.Panel", "value": { "class": "char", "data": "a" }, "validator": { "kind": "native", "library": "libl", "function": "check" }, "valueValidators": [{ "kind": "allowedValues", "values": ["a", "b"] }, { "kind": "maximumLength", "length": 9 }] },
    { "path": "v.web.Size", "visibility": "hidden", "value": { "class": "double", "data": ["NaN", -0.5] }, "valueValidators": [{ "kind": "size", "rows": 1, "columns": null }, { "kind": "elementClass", "class": "double" }] },
    { "path": "v.web.proxy", "node": "group", "visibility": "visible" },
    { "path": "v.web.proxy.Host", "readOnly": false, "value": { "class": "cell", "dims": [2, 1], "data": ["x", null] }, "valueValidators": [{ "kind": "size", "rows": 2, "columns": 1 }, { "kind": "size", "rows": 2, "columns": 1 }], "errorHandler": true },
    { "path": "v.web.proxy.Port", "value": { "class": "char", "dims": [2, 1], "data": ["p", "q"] }, "validator": { "kind": "callable", "qualifier": "q", "function": "f" } },
    { "path": "v.web.proxy.Names", "value": { "class": "string", "data": ["n", null] }, "validator": { "kind": "managed", "class": "c", "function": "f" } },
    { "path": "v.web.Mode", "readOnly": true, "runTimeDefault": { "kind": "native", "library": "libm", "function": "mode" }, "additionalFile": true, "computedValue": { "class": "logical", "data": [true] } },
    { "path": "v.web.Tint", "valueValidators": [{ "kind": "colour", "form": "normalised", "words": ["auto"] }], "runTimeDefault": { "kind": "script", "qualifier": "q", "function": "tint" } },
    { "path": "v.web.Other", "node": "alias", "aliasTarget": "v.web.Zoom" }
  ],
  "releaseChanges": [
    { "index": 0, "release": "R2026a", "crossesRootGroups": false, "changes": [{ "operation": "remove", "from": ["v.web.Old"], "to": [] }] }
  ]
})";

ReleaseTree parse(const std::string& text)
{
    return vx::review::parseReleaseTree(text, "tree.json");
}

/// The baseline with each first occurrence replaced.
std::string edited(const Edits& edits)
{
    std::string text = baseline;
    for (const auto& [from, to] : edits) {
        EXPECT_THAT(text, HasSubstr(from));
        boost::algorithm::replace_first(text, from, to);
    }
    return text;
}

/// An edit that appends a release with these rows, "from>to" for a move and "path" for a removal.
std::pair<std::string, std::string> release(const std::string& name, const Lines& rows)
{
    std::string changes;
    for (const std::string& row : rows) {
        const std::size_t end = std::min(row.find('>'), row.size());
        const bool isMove = end < row.size();
        changes += (changes.empty() ? "" : ", ") +
                   ("{ \"operation\": \"" + std::string(isMove ? "move" : "remove")) + "\", \"from\": [\"" +
                   row.substr(0, end) + "\"], \"to\": [" + (isMove ? "\"" + row.substr(end + 1) + "\"" : "") +
                   "] }";
    }
    return {"\n  ]\n}",
            ",\n    { \"index\": 1, \"release\": \"" + name + "\", \"changes\": [" + changes + "] }\n  ]\n}"};
}

/// The edits that give a node another path.
std::pair<std::string, std::string> renamed(const std::string& from, const std::string& to)
{
    return {"\"path\": \"" + from + '"', "\"path\": \"" + to + '"'};
}

/// What history and lint say about a tree that follows the baseline.
Lines check(const Edits& edits, const std::string& changedSettings = {})
{
    const tests::TestFolder folder;
    const auto baselines = vx::review::readBaselines(folder.with("R2026a.json", baseline));
    const ReleaseTree live = parse(edited(edits));
    auto changed = vx::review::readChangedSettings(folder.with("changed-settings", changedSettings));
    changed.file = "changed-settings";
    Lines found;
    for (const auto& diagnostics : {checkHistory(baselines, live, changed),
                                    vx::review::checkReleaseTable(live.tree, live.releaseChanges)})
    {
        for (const auto& diagnostic : diagnostics) {
            found.push_back(vx::core::formatDiagnostic(diagnostic));
        }
    }
    return found;
}

TEST(TreeHistory, TheLiveTreeContinuesThePublishedOnes)
{
    const std::string docs = VX_SOURCE_DIR "/docs/";
    const auto run = runTool(
        {"history", "--baseline", docs + "baseline", "--changed-settings", docs + "changed-settings"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.output + run.errors + runTool({"lint"}).output, "");
}

TEST(TreeHistory, NamesEachWrongReleaseChange)
{
    const std::string table = "migration/release_changes.cpp: ";
    const auto zoom = renamed("v.web.Zoom", "v.web.Scale");
    const Edits noTarget = {{"v.web.Zoom\" }\n", "v.web.Scale\" }\n"}};  // of the alias
    const struct
    {
        Edits edits;
        Lines starts;
    } cases[] = {
        {{zoom}, {"tree/web.cpp: v.web.Zoom: is missing, and no later release change"}},
        {{zoom, release("R2026b", {"v.web.Zoom>v.web.Scale"})}, {}},
        {{zoom, release("R2026b", {"v.web"})},
         {table + "v.web: R2026b moved or removed it, but it is still in the tree"}},
        {{zoom, release("R2026b", {"v.web.Zoom>v.web.Step", "v.web.Step>v.web.Scale"})}, {}},
        {{zoom, release("R2026b", {"v.web.Step>v.web.Scale", "v.web.Zoom>v.web.Step"})},
         {table + "R2026b: move v.web.Step to v.web.Scale: no release had the path v.web.Step",
          table + "R2026b: move v.web.Zoom to v.web.Step: the target does not exist",
          table + "v.web.Zoom: R2026b moved it to v.web.Step, which does not exist"}},
        {{zoom, release("R2026b", {"v.web.Zoom>v.web.Panel"})},
         {table + "v.web.Panel: R2026b gives it the values of v.web.Zoom, but the last release has it"}},
        {{zoom, renamed("v.web.Panel", "v.web.Pane"),
          release("R2026b", {"v.web.Zoom>v.web.Pane", "v.web.Panel>v.web.Scale"})},
         {table +
              "v.web.Pane: R2026b gives it the values of v.web.Zoom, but its name is more like v.web.Panel",
          table + "v.web.Scale: R2026b gives it the values of v.web.Panel",
          "tree/web.cpp: v.web.Pane: class changed: 100 (int32, 1-by-1) -> \"a\" (char, 1-by-1); constraint ",
          "tree/web.cpp: v.web.Scale: class changed"}},
        {{zoom, release("R2026b", {"v.web.Zoom>v.web.Scale", "v.web.Zoom"})},
         {table + "v.web.Zoom: R2026b lists it twice"}},
        {{zoom, renamed("v.web.proxy.Port", "v.web.Port"),
          release("R2026b", {"v.web.Zoom>v.web.Port", "v.web.proxy.Port>v.web.Port"})},
         {"tree/web.cpp: v.web.Port: class",
          table + "v.web.proxy.Port: R2026b moves it to v.web.Port, and v.web.Zoom, too"}},
        {{renamed("v.web.proxy.Port", "v.web.Port"),
          release("R2026b", {"v.web.proxy", "v.web.proxy.Port>v.web.Port"})},
         {table + "v.web.proxy: R2026b moved or removed it, but",
          table + "v.web.proxy.Port: R2026b moves it after it removed v.web.proxy, so that its values"}},
        {{{"\"v.web.Zoom\", \"value\"", "\"v.web.Scale\", \"readOnly\": true, \"value\""},
          release("R2026b", {"v.web.Zoom>v.web.Scale"})},
         {table + "R2026b: move v.web.Zoom to v.web.Scale: the target is read-only",
          "tree/web.cpp: v.web.Scale: read-only changed: default -> true"}},
        {{{"\"visibility\": \"visible\"", "\"visibility\": \"hidden\""},
          renamed("v.web.Zoom", "v.web.proxy.Zoom"),
          {"{ \"path\": \"v.web.proxy.Zoom\"",
           "{ \"path\": \"v.web.Scale\", \"node\": \"group\", \"visibility\": "
           "\"hidden\" },\n    { \"path\": \"v.web.Scale.Zoom\""},
          release("R2026b", {"v.web.Zoom>v.web.Scale.Zoom"})},
         {"tree/web.cpp: v.web.Scale.Zoom: effective-visibility changed: visible -> hidden",
          "tree/web.cpp: v.web.proxy: visibility changed: visible -> hidden"}},
        {{release("R2026b", {"v.web.proxy>v.web.proxies"})},
         {table + "R2026b: move v.web.proxy to v.web.proxies: the target does not exist",
          table + "R2026b: move v.web.proxy to v.web.proxies: the source is a group",
          table + "v.web.proxy: R2026b moved or removed it, but", table + "v.web.proxy: R2026b moved it to"}},
        {{zoom, release("R2026b", {"v.web.Zoom>v.web.proxy"})},
         {table + "R2026b: move v.web.Zoom to v.web.proxy: the target is a group"}},
        {{release("R2026b", {"v.web.Size>v.web.Size", "web.Old"})},
         {table + "R2026b: remove web.Old: no release had the path web.Old",
          table + "v.web.Size: R2026b brings it back, but no earlier change",
          table + "web.Old: is no full path: begin it with \"v.\" in the list of R2026b"}},
        {{{"\"path\": \"v.web.Zoom\"", "\"path\": \"v.web.Old\""},
          release("R2026b", {"v.web.Zoom", "v.web.Old>v.web.Old"})},
         {}},
        {{zoom, release("R2027a", {"v.web.Zoom>v.web.Scale"})},
         {table + "R2027a: the release after R2026a is R2026b"}},
        {{zoom, release("R2025b", {"v.web.Zoom>v.web.Scale"})},
         {table + "R2025b: is published, so that its changes are final: add changes to the list of R2026b",
          table + "R2025b: does not follow R2026a, which precedes it in the table"}},
        {{zoom, release("2026b", {"v.web.Zoom>v.web.Scale"})}, {table + "2026b: is no release name"}},
        {{zoom,
          {"\"v.web.Old\"], \"to\": [] }", "\"v.web.Old\"], \"to\": [] }, { \"operation\": \"move\", "
                                           "\"from\": [\"v.web.Zoom\"], \"to\": [\"v.web.Scale\"] }"}},
         {"tree/web.cpp: v.web.Zoom: is missing", table + "R2026a: its changes are not those that were"}},
    };
    for (const auto& [edits, starts] : cases) {
        std::vector<testing::Matcher<std::string>> expected;
        for (const std::string& start : starts) {
            expected.emplace_back(testing::StartsWith(start));
        }
        EXPECT_THAT(check(edits), testing::ElementsAreArray(expected)) << edited(edits);
    }
}

TEST(TreeHistory, RequiresAReasonForEachKindOfDifference)
{
    const struct
    {
        std::pair<std::string, std::string> edit;
        std::string difference;  ///< "path: kind changed: before -> after"
    } cases[] = {
        {{"\"data\": [100]", "\"data\": [90]"}, "v.web.Zoom: default changed: 100 -> 90"},
        {{"\"int32\"", "\"double\""},
         "v.web.Zoom: class changed: 100 (int32, 1-by-1) -> 100 (double, 1-by-1)"},
        {{"[\"NaN\", -0.5]", "[1]"},
         "v.web.Size: size changed: [NaN -0.5] (double, 1-by-2) -> 1 (double, 1-by-1)"},
        {{"\"data\": [\"n\", null]", "\"data\": [\"n\", \"\"]"}, "v.web.proxy.Names: default changed: "},
        {{"\"upper\": null", "\"upper\": 500"},
         "v.web.Zoom: constraint changed: a whole number at least 10 -> a whole number from 10 to 500"},
        {{"[\"a\", \"b\"]", "[\"a\", \"c\"]"},
         "v.web.Panel: constraint changed: also allows: c; no longer allows: b"},
        {{", { \"kind\": \"elementClass\", \"class\": \"double\" }", ""},
         "v.web.Size: constraint changed: [{kind: \"size\", rows: 1, columns: null}, {kind: "
         "\"elementClass\""},
        {{"\"auto\"", "\"none\""}, "v.web.Tint: constraint changed: "},
        {{"\"function\": \"check\"", "\"function\": \"test\""},
         "v.web.Panel: validator changed: {kind: \"native\", library: \"libl\", function: \"check\"} -> "},
        {{", \"errorHandler\": true", ""}, "v.web.proxy.Host: error-handler changed: present -> none"},
        {{"\"mode\"", "\"Mode\""}, "v.web.Mode: run-time-default changed: "},
        {{"[true] }", "[false] }"},
         "v.web.Mode: computed-value changed: true (logical, 1-by-1) -> false (logical, 1-by-1)"},
        {{", \"visibility\": \"visible\"", ""}, "v.web.proxy: visibility changed: visible -> default"},
        {{"\"readOnly\": false, ", ""}, "v.web.proxy.Host: read-only changed: false -> default"},
        {{"\"v.web.Zoom\" }", "\"v.web.Size\" }"},
         "v.web.Other: alias-target changed: v.web.Zoom -> v.web.Size"},
        {{", \"additionalFile\": true", ""}, "v.web.Mode: additional-file changed: true -> false"},
        {{"\"node\": \"alias\", \"aliasTarget\": \"v.web.Zoom\"", "\"node\": \"setting\""},
         "v.web.Other: node changed: alias -> setting"},
    };
    for (const auto& [edit, difference] : cases) {
        const Lines found = check({edit});
        ASSERT_FALSE(found.empty()) << difference;
        EXPECT_THAT(found.front(), testing::StartsWith("tree/web.cpp: " + difference));
        const std::string path = difference.substr(0, difference.find(':'));
        const std::string rest = difference.substr(path.size() + 2);
        const std::string kind = rest.substr(0, rest.find(' '));
        const bool isAlias = kind == "node";  // also has no target any more
        EXPECT_THAT(check({edit}, path + "  " + kind + (isAlias ? ",alias-target" : "") + "  Asked for.\n"),
                    IsEmpty());
    }
    EXPECT_THAT(check({renamed("v.web.Zoom", "v.web.Swap"), renamed("v.web.Size", "v.web.Zoom"),
                       renamed("v.web.Swap", "v.web.Size")}),
                testing::Contains(
                    HasSubstr("; order changed: after Panel -> first in its group; if that is intended, "
                              "add the line \"v.web.Size  class,constraint,validator,visibility,order  "
                              "REASON\" to changed-settings, otherwise fix it")));
}

TEST(TreeHistory, ChecksTheListOfChangedSettings)
{
    EXPECT_THAT(check({{"[100]", "[90]"}},
                      "# why\n\nv.web.Zoom default,default  x\nv.web.Zoom  defalt  x\n"
                      "v.web.Zom  default\nv.web.Zoom\nv.web.Size order  x\n"
                      "v.web.Panel  order\nv.web.Old  order  x\nv.web.Size  order,  a\x1b"),
                ElementsAre("changed-settings:3: v.web.Zoom: default is listed twice: remove it here",
                            HasSubstr("changed-settings:4: v.web.Zoom: unknown kind \"defalt\"; did you mean "
                                      "default? Kinds: moved, node, class, "),
                            "changed-settings:5: v.web.Zom: is not in the tree; did you mean v.web.Zoom?",
                            HasSubstr("changed-settings:6: v.web.Zoom: the line needs kinds and a reason"),
                            "changed-settings:7: v.web.Size: order is listed but did not change: remove it",
                            "changed-settings:8: v.web.Panel: order is listed but did not change: remove it",
                            HasSubstr("changed-settings:8: v.web.Panel: the line needs a reason"),
                            "changed-settings:9: v.web.Old: is not in the tree: it was removed in R2026a; "
                            "remove this line",
                            HasSubstr("changed-settings:10: v.web.Size: order is listed but did not"),
                            HasSubstr("changed-settings:10: v.web.Size: a comma must be between two kinds"),
                            HasSubstr("changed-settings:10: v.web.Size: the reason has characters")));
}

TEST(Baselines, AreRecordedOnceAndInARow)
{
    const tests::TestFolder folder;
    const std::string next =
        edited({renamed("v.web.Zoom", "v.web.Scale"), release("R2026b", {"v.web.Zoom>v.web.Scale"})});
    const auto write = [&folder](const std::string& name, const std::string& text) {
        std::ofstream(folder / name) << text;
    };
    write("R2026a.json", baseline);
    write("R2026a.1.json", edited({renamed("v.web.Tint", "v.web.Late")}));
    write("R2027a.json", next);
    const auto runInFolder = [&folder](const std::string& command) {
        ASSERT_EQ(std::system(("cd '" + std::string(folder / "") + "' && " + command).c_str()), 0);
    };
    runInFolder("cksum R*.json >checksums");
    const auto messages = [&folder](const std::string& live) {
        Lines found;
        for (const auto& [path, message, position] :
             checkHistory(vx::review::readBaselines(folder / ""), parse(live), {"list", {}}))
        {
            found.push_back(position.file.substr(position.file.rfind('/') + 1) + " " + path + " " + message);
        }
        return found;
    };
    EXPECT_THAT(
        messages(next),
        ElementsAre(HasSubstr("R2026a.1.json v.web.Tint lost since R2026a: no release change mentions it"),
                    HasSubstr("R2027a.json  does not follow R2026a.1: the baseline of R2026b is missing"),
                    HasSubstr("web.cpp v.web.Late is missing, and no later")));
    write("R2026a.json", "cut");
    write("R2026a.01.json", baseline);
    write("R2025b.json", next);
    runInFolder(
        "cksum R2025b.json >>checksums; cksum R2025b.json >>checksums; echo 1 2 R2020a.json >>checksums; "
        "echo 1 2 >>checksums; rm R2027a.json");
    EXPECT_THAT(messages(next), testing::UnorderedElementsAre(
                                    HasSubstr("checksums  R2025b.json has a checksum already"),
                                    HasSubstr("checksums  is no line as from cksum(1)"),
                                    HasSubstr("R2026a.01.json  is no baseline"),
                                    HasSubstr("R2025b.json  has release changes of R2026b, a later"),
                                    HasSubstr("R2026a.json  differs from the published"),
                                    HasSubstr("R2020a.json  is missing, but its"),
                                    HasSubstr("R2027a.json  is missing, but its")));
}

TEST(Baselines, AndExportedTreesAreReadBackExactly)
{
    std::string text;
    vx::review::appendJson(text, baselineJson(parse(baseline)));
    std::string again;
    vx::review::appendJson(again, baselineJson(parse(text)));
    EXPECT_EQ(text, again);
    for (const std::string part : {"\"dims\": [2, 1], \"data\": [\"x\", null]", "[\"NaN\", -0.5]",
                                   "\"computedValue\": { \"class\": \"logical\", \"data\": [true] }",
                                   "\"words\": [\"auto\"]", "\"kind\": \"callable\""})
    {
        EXPECT_THAT(text, HasSubstr(part));
    }
    const tests::TestFolder folder;
    const std::string exported = folder.with("full.json", runTool({"export", "--format", "json"}).output);
    const std::string brief = folder.with("brief.json", runTool({"export", "--format", "baseline"}).output);
    for (const auto& difference :
         compareTrees(vx::review::readReleaseTree(exported), vx::review::readReleaseTree(brief)))
    {
        EXPECT_EQ(kindLabel(difference.kind), "computed-value") << difference.path;
    }
}

TEST(ReleaseTree, SaysWhereAFileIsWrong)
{
    const auto node = [](const std::string& members) {
        return R"({ "root": "v", "nodes": [ { "path": "v.A", )" + members + R"( } ], "releaseChanges": [] })";
    };
    const std::pair<std::string, const char*> cases[] = {
        {"{\n  \"nodes\": [ { \"path\" 3 } ] }",
         "f:2:23: not an exported tree: expected \":\" after a name; create one with: "},
        {"\xEF\xBB\xBF{\"nodes\": [ {", "f:1:14: not an exported tree: expected a name in double quotes"},
        {"{} {}", "f:1:4: not an exported tree: expected nothing after the value"},
        {R"({ "root": "v", "nodes": {} })", "f:1:25: not an exported tree: expected an array"},
        {R"({ "root": "v", "nodes": [ { } ] })", "expected a member \"path\""},
        {R"({ "root": "v", "nodes": [ { "path": "w.b" } ] })", "expected a path in a group that precedes it"},
        {R"({ "root": "v", "nodes": [ { "path": "v" } ] })", "expected a path in a group that precedes it"},
        {R"({ "root": "v", "nodes": [ { "path": "v.a" }, { "path": "v.a" } ] })", "expected another path: "},
        {R"({ "root": "v", "nodes": [], "releaseChanges": [ { "release": "R", "changes": [ { "operation": "remove", "from": [], "to": [] } ] } ] })",
         "f:1:80: not an exported tree: expected a move or removal of one path; it has no source"},
        {node(R"("value": { "class": "int", "data": [] })"), "expected the name of a class"},
        {node(R"("value": { "class": "int8", "data": [128] })"), "expected a whole number from -128 to 127"},
        {node(R"("value": { "class": "double", "data": ["nan"] })"), "expected a number, \"NaN\", \"Inf\""},
        {node(R"("value": { "class": "double", "dims": [4294967295, 4294967295, 9, 0], "data": [1] })"),
         "expected the dimensions of an array with 1 elements"},
        {node(R"("value": { "class": "double", "dims": [4294967295, 4294967295, 9], "data": [1] })"),
         "expected the dimensions of an array with 1 elements"},
        {node(R"("valueValidators": [{ "kind": "rank" }])"), "a constraint; unknown kind \"rank\""},
        {node(R"("valueValidators": [{ "kind": "range", "lower": "1" }])"),
         "a constraint; lower: expected a number"},
        {node(R"("valueValidators": [{ "kind": "maximumLength", "length": 0.5 }])"),
         "length: expected a whole"},
        {node(R"("validator": { "kind": "rule", "function": "f" })"),
         "\"script\", \"native\" or \"managed\""},
    };
    for (const auto& testCase : cases) {
        EXPECT_THAT([&] { static_cast<void>(vx::review::parseReleaseTree(testCase.first, "f")); },
                    testing::ThrowsMessage<std::runtime_error>(HasSubstr(testCase.second)));
    }
}

TEST(ReviewCommands, WriteReleaseNotesAndFailForLostSettings)
{
    const tests::TestFolder folder;
    const std::string older = folder.with("R2026a.json", baseline);
    const std::string newer =
        folder.with("new.json", edited({renamed("v.web.Zoom", "v.web.Scale"),
                                        {"[\"a\", \"b\"]", "[\"a\", \"*\"]"},
                                        {"[100]", "[90]"},
                                        {"[\"NaN\", -0.5]", "[1, 2]"},
                                        renamed("v.web.Tint", "v.Tint"),
                                        {"\"hidden\"", "\"default\""},
                                        renamed("v.web.proxy.Names", "v.web.proxy.Hosts"),
                                        release("R2026b", {"v.web.Zoom>v.web.Scale", "v.web.Tint"})}));
    const std::string changed = folder.with("changed-settings", "v.web.Scale  default  Eyes <age>.\n");

    const auto notes = runTool({"diff", older, newer, "--format", "markdown", "--changed-settings", changed});
    EXPECT_EQ(notes.exitCode, 1);
    EXPECT_EQ(notes.output, "#### root\n\n- Added `Tint`\n\n#### web\n\n- Added `web.proxy.Hosts`\n"
                            "- Renamed `web.Zoom` to `web.Scale`\n- Removed `web.Tint`\n"
                            "- Lost `web.proxy.Names`: no release change mentions it\n"
                            "- `web.Scale`: default is now 90 (before: 100). Eyes \\<age\\>.\n"
                            "- `web.Size`: default is now \\[1 2\\] (before: \\[NaN -0.5\\]); visibility is "
                            "now default (before: hidden)\n"
                            "- `web.Panel`: also allows: \\*; no longer allows: b\n");
    EXPECT_THAT(runTool({"diff", older, newer}).output,
                testing::AllOf(HasSubstr("lost        v.web.proxy.Names  no release change mentions it\n"),
                               HasSubstr("default     v.web.Scale        100 -> 90\n")));
    const auto history = runTool({"history", "--baseline", older, "--tree", newer});
    EXPECT_EQ(history.exitCode, 1);
    EXPECT_THAT(history.output, testing::StartsWith("tree/web.cpp: v.web.proxy.Names: is missing"));
    EXPECT_THAT(
        runTool({"diff", older, folder / "none"}),
        tests::FailsInOneLine(1, HasSubstr("cannot read " + std::string(folder / "none") + ": No such")));
}

}  // namespace
