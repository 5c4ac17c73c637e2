#include <gmock/gmock.h>

#include <filesystem>
#include <string>
#include <tests/support/files.hpp>
#include <tests/tool/process.hpp>
#include <vector>

namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

/// The command in a folder of its own, beside a catalog that the test writes.
class Catalog : public testing::Test
{
protected:
    Catalog()
    {
        const fs::path built = fs::path(VX_TOOL_FILE).parent_path().parent_path();
        fs::remove_all(folder_);
        fs::create_directories(folder_ / "bin");
        fs::create_hard_link(VX_TOOL_FILE, folder_ / "bin/vxsettings");
        fs::create_directory_symlink(built / "lib", folder_ / "lib");
    }
    void TearDown() override { fs::remove_all(folder_); }

    void write(const std::string& name, const std::string& entries) const
    {
        tests::writeFile(folder_ / ("share/verdix/catalog/" + name), "{" + entries + "}");
    }

    [[nodiscard]] tests::ToolRun run(const std::vector<std::string>& arguments,
                                     const std::string& language = "LC_ALL=C") const
    {
        return tests::runTool(arguments, {"LC_ALL=", "LC_MESSAGES=", "LANG=", language},
                              folder_ / "bin/vxsettings");
    }

    [[nodiscard]] std::string describe(const std::string& language) const
    {
        return run({"describe", "web.UseProxy"}, language).output;
    }

    /// In the build folder, since programs can always run there.
    const fs::path folder_ =
        fs::absolute(testing::UnitTest::GetInstance()->current_test_info()->name() + std::string("_folder"));
};

TEST_F(Catalog, SpeaksTheLanguageOfTheUser)
{
    EXPECT_THAT(describe("LC_ALL=C"), AllOf(HasSubstr("Web: Use Proxy"), Not(HasSubstr("meaning"))));
    write("en/web.json",
          R"("verdix.web": {"title": "Net"}, "verdix.web.UseProxy": {"sentence": "English."})");
    write("de/web.json",
          R"("verdix.web": {"title": "Netz"}, "verdix.web.UseProxy": {"title": "Vermittler"})");
    write("de_AT/web.json", R"("verdix.web.UseProxy": {"title": "Vermittlung"})");
    for (const char* language : {"LC_ALL=C", "LC_ALL=POSIX", "LC_ALL=", "LC_ALL=fr_FR", "LC_ALL=../de"}) {
        EXPECT_THAT(describe(language), HasSubstr("Net: Use Proxy\n  meaning     English.\n")) << language;
    }
    EXPECT_THAT(describe("LC_ALL=de_DE.UTF-8"), HasSubstr("Netz: Vermittler\n  meaning     English.\n"));
    EXPECT_THAT(describe("LC_MESSAGES=de_AT@euro"), HasSubstr("Netz: Vermittlung\n"));
    EXPECT_THAT(describe("LANG=de"), HasSubstr("Netz: Vermittler\n"));
}

TEST_F(Catalog, ADamagedFileIsIgnoredWithAHint)
{
    write("en/web.json", "\n\"verdix.web.UseProxy\": {\"sentence\": 1}");
    write("en/editor.json", "");
    const auto damaged = run({"describe", "web.UseProxy"});
    EXPECT_EQ(damaged.exitCode, 0);
    EXPECT_THAT(damaged.output, HasSubstr("Web: Use Proxy"));
    EXPECT_THAT(damaged.errors,
                HasSubstr("catalog/en/web.json:2:37: expected a string; the file is ignored\n"));
    EXPECT_EQ(run({"describe", "web.UseProxy"}, "LANG=en_US.UTF-8").errors, damaged.errors);
    EXPECT_THAT(run({"describe", "editor"}).errors, IsEmpty());
    EXPECT_THAT(run({"list", "web.*"}).errors, IsEmpty());
    const auto doctor = run({"doctor"}, "LC_ALL=de_DE.UTF-8");
    EXPECT_EQ(doctor.exitCode, 1);
    EXPECT_THAT(doctor.output, AllOf(HasSubstr("language de     no translation\n"),
                                     HasSubstr("catalog/en/web.json:2:37"), Not(HasSubstr("editor.json"))));
}

TEST_F(Catalog, FeedsSchemaPageTableAndCompletion)
{
    write("en/commandwindow.json", R"("verdix.commandwindow.NumericFormat": {"sentence": "A|B.",
"keywords": ["<digits>"], "values": {"long": "more"}})");
    const std::string schema = run({"export", "--format", "json-schema"}).output;
    EXPECT_THAT(schema,
                HasSubstr(R"("title": "Commandwindow: Numeric Format", "description": "A|B. A string, )"));
    EXPECT_THAT(schema, HasSubstr(R"(longEng.\n\n- `long`: more", "default")"));
    EXPECT_THAT(schema, HasSubstr(R"("enumDescriptions": ["", "more", "")"));
    EXPECT_THAT(run({"export", "--format", "markdown"}).output, HasSubstr(" | A\\|B. |\n"));
    EXPECT_THAT(run({"export", "--format", "html"}).output,
                AllOf(HasSubstr(R"("keywords": ["\u003cdigits>"])"), HasSubstr(">A|B.</p></th>")));
    EXPECT_THAT(run({"complete", "--", "set", "commandwindow.NumericFormat", "l"}).output,
                HasSubstr("long\tmore\n"));
}

}  // namespace
