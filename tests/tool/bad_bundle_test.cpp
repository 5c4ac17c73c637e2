// Bundle files that do not work: each gets one line that says which file and why, on either framework.

#include <gmock/gmock.h>

#include <bundle_maker.hpp>
#include <string>
#include <tests/support/files.hpp>
#include <tests/tool/process.hpp>

namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;

TEST(BadBundle, IsReportedWithFileAndReason)
{
    const tests::TestFolder folder;
    const std::string library = tests::readFile(VX_PLAIN_LIBRARY);
    // The library exports nothing that a component needs.
    const auto bundle = [&](const std::string& name, const std::string& manifest) {
        return folder.with(name, library + makeArchive({{"probe/manifest.json", manifest}}));
    };
    const std::string loader = "settings::core::FactorySettingsLoader";
    const std::string component = R"({"bundle.symbolic_name": "probe", "scr": {"version": 1, "components": [
        {"implementation-class": "probe::Part", "service": {"interfaces": [")" +
                                  loader + R"("]}}]}})";
    const std::pair<std::string, std::string> cases[] = {
        {"/no/such/bundle.so", "No such file or directory"},
        {testing::TempDir(), "is a folder, not a library"},
        {folder.with("text.so", "no library at all"), "is not a library"},
        {folder.with("no_manifest.so", library + makeArchive({{"probe/other.txt", "text"}})), "manifest"},
        {bundle("no_component.so", R"({"bundle.symbolic_name": "probe"})"), "offers no " + loader},
        {bundle("missing_export.so", component),
         "names the component probe::Part, but the library does not export NewInstance_probe_Part"},
    };
    for (const auto& [file, reason] : cases) {
        const auto run = tests::runTool({"summary", "--bundle", file});
        const std::string name = file.substr(0, file.find_last_not_of('/') + 1);
        EXPECT_THAT(run, tests::FailsInOneLine(3, AllOf(StartsWith("vxsettings: bundle "), HasSubstr(reason),
                                                        HasSubstr(name))));
    }
    EXPECT_THAT(tests::runTool({"doctor", "--bundle", "/no/such/bundle.so"}).output,
                HasSubstr("bundle file  /no/such/bundle.so"));
    const auto diagnosed = tests::runTool({"doctor", "--json", "--bundle", VX_PLAIN_LIBRARY});
    EXPECT_EQ(diagnosed.exitCode, 3);
    EXPECT_THAT(diagnosed.output, AllOf(HasSubstr(R"("isWell": false)"), HasSubstr(R"("isGood": false)")));
    const std::string kept = folder.with("kept.json", "old content");
    tests::runTool({"export", "--format", "json", "-o", kept, "--bundle", "/no/such/bundle.so"});
    EXPECT_EQ(tests::readFile(kept), "old content");
}

}  // namespace
