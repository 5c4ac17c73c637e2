#pragma once

#include <cppmicroservices/AnyMap.h>
#include <cppmicroservices/BundleVersion.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// A bundle file is a shared library with a zip archive appended. For each bundle in it the archive holds
/// <symbolic name>/manifest.json.
namespace cppmicroservices {

/// Maximum size of a manifest in bytes. Real ones have a few hundred.
inline constexpr std::size_t maximumManifestSize = std::size_t{1} << 20U;

/// The contents of a bundle's manifest.json.
struct BundleManifest
{
    std::string symbolicName;
    BundleVersion version;
    /// The whole manifest: objects are AnyMap, arrays std::vector<Any>, integers int. Null values and
    /// integers outside the range of int are left out.
    AnyMap headers;
};

/// Reads the manifests in a bundle file, in the order of the archive. Throws std::runtime_error, naming the
/// file and the reason, when the file is missing or not a shared library, or has no readable archive with a
/// valid manifest.
std::vector<BundleManifest> readBundleFile(const std::string& file);

/// Parses a manifest. Throws std::runtime_error when it is malformed JSON (with line and column) or not an
/// object, bundle.symbolic_name is not symbolicName, or bundle.version is not a version.
BundleManifest readManifest(std::string_view content, const std::string& symbolicName);

}  // namespace cppmicroservices
