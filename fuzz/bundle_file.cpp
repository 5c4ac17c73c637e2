// Any bytes as what follows a library's code in a bundle file, or as one manifest, whose headers can be
// copied and converted to a string. The first byte chooses.

#include <bundle_file.hpp>
#include <filesystem>
#include <fstream>
#include <fuzz/fuzzing.hpp>
#include <optional>
#include <stdexcept>
#include <string>
#include <sys/mman.h>

namespace {

using namespace cppmicroservices;
using fuzz::require;

void readImage(std::string_view appended)
{
    static const int memory = memfd_create("lib.so", 0);
    static const std::string file = "/proc/self/fd/" + std::to_string(memory);
    std::filesystem::resize_file(file, 0);
    std::ofstream(file, std::ios::binary) << "\x7f"
                                             "ELF"
                                          << appended;
    try {
        require(!readBundleFile(file).empty(), "a bundle file has a manifest");
    } catch (const std::runtime_error& error) {
        require(std::string_view(error.what()).starts_with(file + ": "), "a refusal names the file",
                error.what());
    }
}

std::optional<BundleManifest> parse(std::string_view string)
{
    try {
        return readManifest(string, "a");
    } catch (const std::runtime_error& error) {
        require(*error.what() != '\0', "a refusal says why");
        return std::nullopt;
    }
}

void checkManifest(const BundleManifest& manifest)
{
    require(manifest.symbolicName == "a" && manifest.headers.at("bundle.symbolic_name") == std::string("a"),
            "a manifest has the name that was asked for");
    require(BundleVersion(manifest.version.ToString()) == manifest.version, "a version reads back",
            manifest.version.ToString());
    const Any headers = manifest.headers;
    const Any copy = headers;
    require(copy == headers && copy.Type() == headers.Type(), "a copy is equal");
    require(copy.ToString() == headers.ToStringNoExcept(), "a value that is not empty converts to a string");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    fuzz::Bytes bytes(data, size);
    if (bytes.below(2) == 0) {
        readImage(bytes.rest());
    } else if (const auto manifest = parse(bytes.rest())) {
        checkManifest(*manifest);
    }
    return 0;
}
