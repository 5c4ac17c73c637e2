#pragma once

#include <cppmicroservices/AnyMap.h>
#include <cppmicroservices/BundleVersion.h>

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// A bundle file is a shared library with a zip archive appended. For each bundle in it the archive holds
/// <symbolic name>/manifest.json.
namespace cppmicroservices {

/// A manifest that is larger is refused; real ones have a few hundred bytes.
inline constexpr std::size_t maximumManifestSize = std::size_t{1} << 20U;

/// What a bundle says of itself.
struct BundleManifest
{
    std::string symbolicName;
    BundleVersion version;
    /// The whole manifest: objects are AnyMap, arrays std::vector<Any>, whole numbers int. Null, and whole
    /// numbers beyond int, are left out.
    AnyMap headers;
};

/// Reads the manifests of a bundle file, in the archive's order. Throws std::runtime_error, naming the file
/// and the reason, when it is missing, not a library, or has no readable archive with a valid manifest.
std::vector<BundleManifest> readBundleFile(const std::string& file);

/// The same over the bytes of such a file; the name only serves the messages. Safe with any bytes.
std::vector<BundleManifest> readBundleFile(std::span<const std::byte> bytes, const std::string& file);

/// Reads one manifest. Throws std::runtime_error, with line and column where it is no JSON, when it is not an
/// object, its bundle.symbolic_name is not the expected one, or its bundle.version is no version.
BundleManifest readManifest(std::string_view json, const std::string& symbolicName);

/// Where the archive begins at the end of a file's bytes; nothing when there is none.
std::optional<std::size_t> findArchive(std::span<const std::byte> bytes);

/// True when the bytes begin as a shared library of this system does.
bool isLibrary(std::span<const std::byte> bytes);

}  // namespace cppmicroservices
