// Bundle files that do not work: each gets one line that says which file and why, on either framework.

#include <gmock/gmock.h>

#include <bundle_maker.hpp>
#include <map>
#include <string>
#include <tests/tool/process.hpp>

namespace {

using testing::HasSubstr;
using testing::StartsWith;

std::string manifest(const std::string& component, const std::string& interface)
{
    return R"({"bundle.symbolic_name": "probe", "scr": {"version": 1, "components": [{"implementation-class": ")" +
           component + R"(", "service": {"interfaces": [")" + interface + R"("]}}]}})";
}

/// A library that exports nothing a component needs, with an archive of these files behind it.
std::string makeBundle(const std::string& name, const std::map<std::string, std::string>& files)
{
    return writeTestFile(name, readTestFile(VX_PLAIN_LIBRARY) + makeArchive(files));
}

TEST(BadBundle, IsReportedWithFileAndReason)
{
    const std::string loader = "settings::core::FactorySettingsLoader";
    const struct
    {
        std::string file;
        std::string reason;
    } cases[] = {
        {"/no/such/bundle.so", "No such file or directory"},
        {testing::TempDir(), "is a folder, not a library"},
        {writeTestFile("text.so", "no library at all"), "is not a library"},
        {writeTestFile("short.so", "\x7f"), "is not a library"},
        {writeTestFile("plain.so", readTestFile(VX_PLAIN_LIBRARY)), "zip archive"},
        {makeBundle("no_manifest.so", {{"probe/other.txt", "text"}}), "manifest"},
        {makeBundle("broken_json.so", {{"probe/manifest.json", R"({"bundle.symbolic_name": "probe",)"}}),
         "manifest"},
        {makeBundle("no_component.so", {{"probe/manifest.json", R"({"bundle.symbolic_name": "probe"})"}}),
         "offers no " + loader},
        {makeBundle("other_service.so", {{"probe/manifest.json", manifest("probe::Part", "probe::Other")}}),
         "offers no " + loader},
        {makeBundle("missing_export.so", {{"probe/manifest.json", manifest("probe::Part", loader)}}),
         "names the component probe::Part, but the library does not export NewInstance_probe_Part"},
    };
    for (const auto& bad : cases) {
        SCOPED_TRACE(bad.file);
        const auto run = tests::runTool({"summary", "--bundle", bad.file});
        EXPECT_EQ(run.exitCode, 3);
        EXPECT_EQ(run.output, "");
        EXPECT_THAT(run.errors, StartsWith("vxsettings: bundle "));
        EXPECT_THAT(run.errors, HasSubstr(bad.reason));
        EXPECT_THAT(run.errors, HasSubstr(bad.file.substr(0, bad.file.find_last_not_of('/') + 1)));
        EXPECT_EQ(run.errors.find('\n'), run.errors.size() - 1) << run.errors;
    }
}

TEST(BadBundle, DoctorStillSaysWhatItTried)
{
    const auto run = tests::runTool({"doctor", "--bundle", "/no/such/bundle.so"});
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_THAT(run.output, HasSubstr("bundle file  /no/such/bundle.so"));
}

}  // namespace
