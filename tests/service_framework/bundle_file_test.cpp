#include <gtest/gtest.h>

#include <bundle_file.hpp>
#include <bundle_maker.hpp>

using namespace cppmicroservices;

namespace {

const std::string library = "\x7f"
                            "ELF and the rest of a library";

std::vector<BundleManifest> read(const std::string& content)
{
    return readBundleFile(std::as_bytes(std::span(content)), "lib.so");
}

std::string failureOf(const std::string& content)
{
    try {
        read(content);
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "nothing";
}

std::string failureOfManifest(const std::string& text)
{
    return failureOf(library + makeArchive({{"a/manifest.json", text}}));
}

TEST(BundleFile, readsEachManifestWithItsTypes)
{
    const auto manifests =
        read(library + makeArchive({{"a/manifest.json", R"({
        "bundle.symbolic_name": "a", "bundle.version": "1.2.3.beta", "none": null, "large": 3000000000,
        "list": [1, 2.5, true, "x"], "object": {"key": -7}})"},
                                    {"a/other.txt", "x"},
                                    {"a/deep/manifest.json", "no json"},
                                    {"b/manifest.json", R"({"bundle.symbolic_name": "b"})"}}));
    ASSERT_EQ(manifests.size(), 2U);
    EXPECT_EQ(manifests[0].symbolicName, "a");
    EXPECT_EQ(manifests[0].version.ToString(), "1.2.3.beta");
    EXPECT_EQ(manifests[1].version, BundleVersion::EmptyVersion());
    const AnyMap& headers = manifests[0].headers;
    EXPECT_EQ(headers.count("none"), 0U);
    EXPECT_EQ(headers.at("LARGE"), 3000000000L);
    EXPECT_EQ(headers.at("list"), (std::vector<Any>{1, 2.5, true, std::string("x")}));
    EXPECT_EQ(any_cast<AnyMap>(headers.at("object")).at("key"), -7);
}

TEST(BundleFile, saysWhatIsWrong)
{
    const std::string good = makeArchive({{"a/manifest.json", R"({"bundle.symbolic_name": "a"})"}});
    EXPECT_EQ(failureOf(""), "lib.so: not a shared library");
    EXPECT_EQ(failureOf(good), "lib.so: not a shared library");
    EXPECT_EQ(failureOf(library), "lib.so: the library has no zip archive with a bundle manifest appended");
    EXPECT_EQ(failureOf(library + makeArchive({{"a/readme", "x"}})),
              "lib.so: the zip archive holds no <symbolic name>/manifest.json");
    EXPECT_EQ(failureOfManifest("{\n \"a\": oops }"),
              "lib.so: a/manifest.json: line 2, column 7: syntax error");
    EXPECT_EQ(failureOfManifest("{\"a\": 1"), "lib.so: a/manifest.json: line 1, column 8: incomplete JSON");
    EXPECT_EQ(failureOfManifest("{} x"),
              "lib.so: a/manifest.json: line 1, column 4: text after the manifest's end");
    EXPECT_EQ(failureOfManifest("[]"), "lib.so: a/manifest.json: the manifest is not a JSON object");
    EXPECT_EQ(failureOfManifest("{}"),
              "lib.so: a/manifest.json: the manifest does not give bundle.symbolic_name");
    EXPECT_EQ(failureOfManifest(R"({"bundle.symbolic_name": "b"})"),
              "lib.so: a/manifest.json: bundle.symbolic_name is \"b\", but the archive has the manifest "
              "under \"a\"");
    EXPECT_EQ(failureOfManifest(R"({"bundle.symbolic_name": [1, null]})"),
              "lib.so: a/manifest.json: bundle.symbolic_name is \"[1,]\", but the archive has the manifest "
              "under \"a\"");
    EXPECT_EQ(failureOfManifest(R"({"bundle.symbolic_name": "a", "x": -1e999})"),
              "lib.so: a/manifest.json: a number is too large: write one of at most 1.8e308 in size");
    EXPECT_EQ(failureOfManifest(R"({"bundle.symbolic_name": "a", "x": 1, "X": 2})"),
              "lib.so: a/manifest.json: the key \"X\" is given more than once");
    EXPECT_EQ(failureOfManifest(std::string(maximumManifestSize + 1, ' ')),
              "lib.so: a/manifest.json: it is larger than 1048576 bytes");
}

TEST(BundleFile, survivesDamage)
{
    const std::string good =
        library + makeArchive({{"a/manifest.json", R"({"bundle.symbolic_name": "a", "list": [1, 2, 3]})"}});
    for (std::size_t length = 0; length < good.size(); ++length) {
        EXPECT_NE(failureOf(good.substr(0, length)), "nothing") << length;
    }
    for (std::size_t i = library.size(); i < good.size(); ++i) {
        for (const char flip : {'\x01', '\x80', '\xff'}) {
            std::string damaged = good;
            damaged[i] = static_cast<char>(damaged[i] ^ flip);
            try {
                EXPECT_EQ(read(damaged).size(), 1U);
            } catch (const std::runtime_error& error) {
                EXPECT_TRUE(std::string(error.what()).starts_with("lib.so: ")) << error.what();
            }
        }
    }
    EXPECT_NE(failureOfManifest(std::string(100000, '[')), "nothing");
}

}  // namespace
