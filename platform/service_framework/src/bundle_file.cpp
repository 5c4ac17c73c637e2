#include <boost/json/basic_parser_impl.hpp>
#include <cppmicroservices/Constants.h>

#include <algorithm>
#include <array>
#include <bundle_file.hpp>
#include <cerrno>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <system_error>
#include <unzip.h>
#include <utility>

namespace cppmicroservices {

namespace {

namespace json = boost::json;

using Archive = std::unique_ptr<void, int (*)(unzFile)>;

/// Throws std::runtime_error unless the file is a shared library that can be read.
void requireLibrary(const std::string& file)
{
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error)) {
        throw std::runtime_error(error ? error.message() : "not a regular file");
    }
    std::ifstream stream(file, std::ios::binary);
    if (!stream) {
        throw std::runtime_error(std::generic_category().message(errno));
    }
    std::array<char, 4> start{};
    stream.read(start.data(), start.size());
    if (std::string_view(start.data(), start.size()) != "\x7f"
                                                        "ELF")
    {
        throw std::runtime_error("not a shared library");
    }
}

/// Throws std::runtime_error when a status of the zip library is an error.
void checkZipStatus(int status)
{
    if (status < 0) {
        throw std::runtime_error(status == UNZ_CRCERROR ? "its checksum is wrong"
                                                        : "it cannot be read: the zip archive is damaged");
    }
}

/// Returns the contents of the current entry of an archive.
std::string readEntry(unzFile archive)
{
    checkZipStatus(unzOpenCurrentFile(archive));
    // The size stated in the archive cannot be trusted, so it is not used to allocate memory.
    std::string content;
    std::array<char, 4096> block{};
    for (;;) {
        const int count = unzReadCurrentFile(archive, block.data(), block.size());
        checkZipStatus(count);
        if (count == 0) {
            checkZipStatus(unzCloseCurrentFile(archive));
            return content;
        }
        content.append(block.data(), static_cast<std::size_t>(count));
        if (content.size() > maximumManifestSize) {
            throw std::runtime_error("it is larger than " + std::to_string(maximumManifestSize) + " bytes");
        }
    }
}

/// Returns the name of the current entry of an archive.
std::string entryName(unzFile archive)
{
    unz_file_info64 entry;
    checkZipStatus(unzGetCurrentFileInfo64(archive, &entry, nullptr, 0, nullptr, 0, nullptr, 0));
    std::string name(entry.size_filename, '\0');
    checkZipStatus(
        unzGetCurrentFileInfo64(archive, &entry, name.data(), entry.size_filename, nullptr, 0, nullptr, 0));
    return name;
}

std::vector<BundleManifest> readArchive(const std::string& file)
{
    // Finds the archive from the end of the file, whatever precedes it.
    const Archive archive(unzOpen64(file.c_str()), unzClose);
    if (!archive) {
        throw std::runtime_error("the library has no intact zip archive with a bundle manifest appended");
    }
    std::vector<BundleManifest> manifests;
    int found = unzGoToFirstFile(archive.get());
    for (; found == UNZ_OK; found = unzGoToNextFile(archive.get())) {
        const std::string entry = entryName(archive.get());
        const std::string symbolicName = entry.substr(0, entry.find('/'));
        if (symbolicName.empty() || entry != symbolicName + "/manifest.json") {
            continue;
        }
        try {
            manifests.push_back(readManifest(readEntry(archive.get()), symbolicName));
        } catch (const std::runtime_error& error) {
            throw std::runtime_error(entry + ": " + error.what());
        }
    }
    if (found != UNZ_END_OF_LIST_OF_FILE) {
        throw std::runtime_error("the zip archive cannot be read: its directory is damaged");
    }
    if (manifests.empty()) {
        throw std::runtime_error("the zip archive holds no <symbolic name>/manifest.json");
    }
    return manifests;
}

/// A Boost.JSON parser handler that builds the headers of a manifest. Leaves out null values, integers
/// outside the range of int, and the % that marks a string for translation.
class HeaderBuilder
{
public:
    static constexpr std::size_t max_object_size = static_cast<std::size_t>(-1);
    static constexpr std::size_t max_array_size = max_object_size;
    static constexpr std::size_t max_key_size = max_object_size;
    static constexpr std::size_t max_string_size = max_object_size;

    /// Returns the headers after parsing; null when the JSON is not an object.
    AnyMap* Headers() { return any_cast<AnyMap>(&root_); }

    bool on_document_begin(json::error_code&) { return true; }
    bool on_document_end(json::error_code&) { return true; }
    bool on_object_begin(json::error_code&)
    {
        return Begin(AnyMap(AnyMap::UNORDERED_MAP_CASEINSENSITIVE_KEYS));
    }
    bool on_object_end(std::size_t, json::error_code&) { return End(); }
    bool on_array_begin(json::error_code&) { return Begin(std::vector<Any>()); }
    bool on_array_end(std::size_t, json::error_code&) { return End(); }
    bool on_key_part(json::string_view part, std::size_t, json::error_code&) { return Append(part); }
    bool on_key(json::string_view part, std::size_t, json::error_code&)
    {
        Append(part);
        open_.back().key = std::exchange(partial_, {});
        return true;
    }
    bool on_string_part(json::string_view part, std::size_t, json::error_code&) { return Append(part); }
    bool on_string(json::string_view part, std::size_t, json::error_code&)
    {
        Append(part);
        std::string value = std::exchange(partial_, {});
        return Add(value.starts_with('%') ? value.substr(1) : std::move(value));
    }
    bool on_number_part(json::string_view, json::error_code&) { return true; }
    bool on_int64(std::int64_t number, json::string_view, json::error_code&)
    {
        return !std::in_range<int>(number) || Add(static_cast<int>(number));
    }
    bool on_uint64(std::uint64_t, json::string_view, json::error_code&) { return true; }
    bool on_double(double number, json::string_view, json::error_code&)
    {
        // The parser returns infinity for a number with too large an exponent.
        if (!std::isfinite(number)) {
            throw std::runtime_error("a number is too large: write one of at most 1.8e308 in size");
        }
        return Add(number);
    }
    bool on_bool(bool value, json::error_code&) { return Add(value); }
    bool on_null(json::error_code&) { return true; }
    bool on_comment_part(json::string_view, json::error_code&) { return true; }
    bool on_comment(json::string_view, json::error_code&) { return true; }

private:
    /// An unfinished object or array. In an object, key belongs to the next value.
    struct Open
    {
        Any value;
        std::string key;
    };

    bool Append(json::string_view part)
    {
        partial_.append(part.data(), part.size());
        return true;
    }

    bool Begin(Any value)
    {
        open_.push_back({std::move(value), {}});
        return true;
    }

    bool End()
    {
        Any value = std::move(open_.back().value);
        open_.pop_back();
        return Add(std::move(value));
    }

    bool Add(Any value)
    {
        if (open_.empty()) {
            root_ = std::move(value);
        } else if (auto* const list = any_cast<std::vector<Any>>(&open_.back().value)) {
            list->push_back(std::move(value));
        } else if (!any_cast<AnyMap>(&open_.back().value)->emplace(open_.back().key, std::move(value)).second)
        {
            throw std::runtime_error("the key \"" + open_.back().key + "\" is given more than once");
        }
        return true;
    }

    Any root_;
    std::vector<Open> open_;
    std::string partial_;  // the key or string read so far
};

AnyMap parseHeaders(std::string_view content)
{
    json::basic_parser<HeaderBuilder> parser{json::parse_options()};
    json::error_code error;
    const std::size_t parsed = parser.write_some(false, content.data(), content.size(), error);
    if (error || parsed != content.size()) {
        const std::string_view before = content.substr(0, parsed);
        const auto line = 1 + std::ranges::count(before, '\n');
        const std::size_t lineStart = before.rfind('\n') + 1;
        throw std::runtime_error("line " + std::to_string(line) + ", column " +
                                 std::to_string(before.size() - lineStart + 1) + ": " +
                                 (error ? error.message() : "unexpected content after the manifest"));
    }
    AnyMap* headers = parser.handler().Headers();
    if (!headers) {
        throw std::runtime_error("the manifest is not a JSON object");
    }
    return std::move(*headers);
}

BundleVersion versionIn(const AnyMap& headers)
{
    const auto found = headers.find(Constants::BUNDLE_VERSION);
    if (found == headers.end()) {
        return BundleVersion::EmptyVersion();
    }
    const auto* version = any_cast<std::string>(&found->second);
    if (!version) {
        throw std::runtime_error(Constants::BUNDLE_VERSION + " is not a string");
    }
    try {
        return {*version};
    } catch (const std::invalid_argument& error) {
        throw std::runtime_error(Constants::BUNDLE_VERSION + ": " + error.what());
    }
}

}  // namespace

BundleManifest readManifest(std::string_view content, const std::string& symbolicName)
{
    AnyMap headers = parseHeaders(content);
    const auto name = headers.find(Constants::BUNDLE_SYMBOLICNAME);
    if (name == headers.end()) {
        throw std::runtime_error("the manifest does not give " + Constants::BUNDLE_SYMBOLICNAME);
    }
    if (name->second != symbolicName) {
        throw std::runtime_error(Constants::BUNDLE_SYMBOLICNAME + " is \"" + name->second.ToString() +
                                 "\", but the archive has the manifest under \"" + symbolicName + "\"");
    }
    BundleVersion version = versionIn(headers);
    return {symbolicName, std::move(version), std::move(headers)};
}

std::vector<BundleManifest> readBundleFile(const std::string& file)
{
    try {
        requireLibrary(file);
        return readArchive(file);
    } catch (const std::runtime_error& error) {
        throw std::runtime_error(file + ": " + error.what());
    }
}

}  // namespace cppmicroservices
