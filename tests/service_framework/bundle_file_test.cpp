#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <bundle_file.hpp>
#include <bundle_maker.hpp>
#include <tests/support/files.hpp>

using namespace cppmicroservices;

namespace {

const std::string library = "\x7f"
                            "ELF and the rest of a library";

std::vector<BundleManifest> read(const std::string& content)
{
    static const tests::TestFolder folder;
    return readBundleFile(folder.with("lib.so", content));
}

TEST(BundleFile, readsEachManifest)
{
    const auto manifests =
        read(library + makeArchive({{"a/manifest.json", R"({
        "bundle.symbolic_name": "a", "bundle.version": "1.2.3.beta"})"},
                                    {"a/other.txt", "x"},
                                    {"a/deep/manifest.json", "no json"},
                                    {"b/manifest.json", R"({"bundle.symbolic_name": "b"})"}}));
    ASSERT_EQ(manifests.size(), 2U);
    EXPECT_EQ(manifests[0].symbolicName, "a");
    EXPECT_EQ(manifests[0].version.ToString(), "1.2.3.beta");
    EXPECT_EQ(manifests[1].version, BundleVersion::EmptyVersion());
}

TEST(BundleFile, saysWhatIsWrong)
{
    const auto expectFailure = [](const std::string& content, const std::string& failure) {
        EXPECT_THAT([&] { return read(content); },
                    testing::ThrowsMessage<std::runtime_error>(testing::EndsWith("/lib.so: " + failure)));
    };
    const std::string good = makeArchive({{"a/manifest.json", R"({"bundle.symbolic_name": "a"})"}});
    expectFailure("", "not a shared library");
    expectFailure(good, "not a shared library");
    expectFailure(library, "the library has no intact zip archive with a bundle manifest appended");
    expectFailure(library + makeArchive({{"a/readme", "x"}}),
                  "the zip archive holds no <symbolic name>/manifest.json");
    std::string damaged = makeArchive({{"a/readme", "x"}, {"b/readme", "x"}});
    damaged[damaged.rfind("PK\x01\x02")] = 'Q';
    expectFailure(library + damaged, "the zip archive cannot be read: its directory is damaged");
    std::string wrongSum = good;
    ++wrongSum[wrongSum.find("PK\x03\x04") + 14];
    ++wrongSum[wrongSum.rfind("PK\x01\x02") + 16];
    expectFailure(library + wrongSum, "a/manifest.json: its checksum is wrong");
    const std::string noVersion =
        "\" is not a version: write major.minor.micro.qualifier, such as 1.2.3.beta";
    const std::string elsewhere = ", but the archive has the manifest under \"a\"";
    const std::pair<std::string, std::string> manifests[] = {
        {"{\n \"a\": oops }", "line 2, column 7: syntax error"},
        {"{\"a\": 1", "line 1, column 8: incomplete JSON"},
        {"{} x", "line 1, column 4: unexpected content after the manifest"},
        {"[]", "the manifest is not a JSON object"},
        {"{}", "the manifest does not give bundle.symbolic_name"},
        {R"({"bundle.symbolic_name": "b"})", "bundle.symbolic_name is \"b\"" + elsewhere},
        {R"({"bundle.symbolic_name": [1, 2]})", "bundle.symbolic_name is \"[1,2]\"" + elsewhere},
        {R"({"bundle.symbolic_name": "a", "bundle.version": "1-2"})", "bundle.version: \"1-2" + noVersion},
        {R"({"bundle.symbolic_name": "a", "bundle.version": "1.2.3.x y"})",
         "bundle.version: \"1.2.3.x y" + noVersion},
        {R"({"bundle.symbolic_name": "a", "x": -1e999})",
         "a number is too large: write one of at most 1.8e308 in size"},
        {R"({"bundle.symbolic_name": "a", "x": 1, "X": 2})", "the key \"X\" is given more than once"},
        {R"({"bundle.symbolic_name": "a", "x": {"y": 1, "y": 1}})", "the key \"y\" is given more than once"},
        {std::string(maximumManifestSize + 1, ' '), "it is larger than 1048576 bytes"},
        {std::string(100000, '['), "line 1, column 33: too deep"},
    };
    for (const auto& [text, failure] : manifests) {
        expectFailure(library + makeArchive({{"a/manifest.json", text}}), "a/manifest.json: " + failure);
    }
}

}  // namespace
