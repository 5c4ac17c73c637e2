// Any bytes as what follows a library's code in a bundle file, or as one manifest, whose headers can be
// copied, shown, and written as JSON that reads back the same. The first byte chooses.

#include <boost/json.hpp>

#include <algorithm>
#include <bundle_file.hpp>
#include <fuzz/fuzzing.hpp>
#include <iterator>
#include <optional>
#include <stdexcept>

namespace {

using namespace cppmicroservices;
using fuzz::require;

void readImage(std::string_view appended)
{
    const std::string image = "\x7f"
                              "ELF" +
                              std::string(appended);
    const auto bytes = std::as_bytes(std::span(image));
    const auto archive = findArchive(bytes);
    require(!archive || *archive < bytes.size(), "an archive begins in the file");
    try {
        const auto manifests = readBundleFile(bytes, "lib.so");
        require(archive && !manifests.empty(), "manifests come from an archive");
    } catch (const std::runtime_error& error) {
        require(std::string_view(error.what()).starts_with("lib.so: "), "a refusal names the file",
                error.what());
    }
}

std::optional<BundleManifest> readText(std::string_view text)
{
    try {
        return readManifest(text, "a");
    } catch (const std::runtime_error& error) {
        require(*error.what() != '\0', "a refusal says why");
        return std::nullopt;
    }
}

boost::json::value toJson(const Any& value)
{
    if (const auto* elements = any_cast<std::vector<Any>>(&value)) {
        boost::json::array list;
        std::ranges::transform(*elements, std::back_inserter(list), toJson);
        return list;
    }
    if (const auto* members = any_cast<AnyMap>(&value)) {
        boost::json::object object;
        for (const auto& [name, member] : *members) {
            object[name] = toJson(member);
        }
        return object;
    }
    boost::json::value json;
    const auto isA = [&]<class Type>(const Type* held) {
        if (held != nullptr) {
            json = *held;
        }
        return held != nullptr;
    };
    const bool isKnown = isA(any_cast<std::string>(&value)) || isA(any_cast<bool>(&value)) ||
                         isA(any_cast<int>(&value)) || isA(any_cast<long>(&value)) ||
                         isA(any_cast<unsigned long>(&value)) || isA(any_cast<double>(&value));
    require(isKnown || value.Empty(), "a manifest's values are of few types", value.Type().name());
    return json;
}

/// The parser may miss the nearest double by a unit in the last place.
bool holdsDouble(const Any& value)
{
    const auto* elements = any_cast<std::vector<Any>>(&value);
    const auto* members = any_cast<AnyMap>(&value);
    return any_cast<double>(&value) != nullptr ||
           (elements != nullptr && std::ranges::any_of(*elements, holdsDouble)) ||
           (members != nullptr &&
            std::ranges::any_of(*members, [](const auto& member) { return holdsDouble(member.second); }));
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
    require(copy.ToString() == headers.ToStringNoExcept(), "a value that is no null has a text");
    const std::string json = boost::json::serialize(toJson(copy));
    const auto again = readText(json);
    require(again && (holdsDouble(copy) || again->headers == manifest.headers),
            "headers written as JSON read back the same", json);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    fuzz::Bytes bytes(data, size);
    if (bytes.below(2) == 0) {
        readImage(bytes.rest());
    } else if (const auto manifest = readText(bytes.rest())) {
        checkManifest(*manifest);
    }
    return 0;
}
