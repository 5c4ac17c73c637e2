#include "baselines.hpp"

#include <boost/crc.hpp>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <utility>

namespace vx::review {

namespace {

namespace fs = std::filesystem;

constexpr const char* checksumFile = "checksums";

/// The release of a baseline, and the number of the patch release; 0 for the release itself.
using Version = std::pair<core::ReleaseName, int>;

/// Parses "R2026a" or "R2026a.1".
std::optional<Version> parseVersion(const std::string& name)
{
    const std::size_t dot = std::min(name.find('.'), name.size());
    const auto release = core::parseReleaseName(name.substr(0, dot));
    int patch = 0;
    if (!release) {
        return std::nullopt;
    }
    if (dot < name.size()) {
        const char* const end = name.data() + name.size();
        const auto [stop, error] = std::from_chars(name.data() + dot + 1, end, patch);
        if (error != std::errc() || stop != end || patch < 1) {
            return std::nullopt;
        }
    }
    return Version(*release, patch);
}

/// Returns checksum and size of a file's content as cksum(1) prints them.
std::string checksumOf(std::string_view content)
{
    boost::crc_optimal<32, 0x04C11DB7, 0, 0xFFFFFFFF, false, false> crc;
    crc.process_bytes(content.data(), content.size());
    for (std::size_t rest = content.size(); rest != 0; rest >>= 8U) {
        crc.process_byte(static_cast<unsigned char>(rest & 0xFFU));
    }
    return std::to_string(crc.checksum()) + " " + std::to_string(content.size());
}

/// Returns the recorded checksum and size of each file name.
std::map<std::string, std::string> readChecksums(const std::string& file)
{
    std::map<std::string, std::string> checksums;
    std::istringstream lines(contentOf(file));
    for (std::string sum, size, name; lines >> sum >> size >> name;) {
        checksums[name] = sum + " " + size;  // NOLINT(performance-inefficient-string-concatenation)
    }
    return checksums;
}

class FolderReader
{
public:
    explicit FolderReader(const fs::path& folder)
        : result_{folder.string(), {}, {}}, checksums_(readChecksums((folder / checksumFile).string()))
    {}

    Baselines run() &&
    {
        std::map<Version, fs::path> files;
        for (const auto& entry : fs::directory_iterator(result_.folder)) {
            const fs::path& file = entry.path();
            if (const auto version = parseVersion(file.stem().string());
                version && file.extension() == ".json") {
                files.emplace(*version, file);
            } else if (file.filename() != checksumFile) {
                report(file.string(), "is no baseline: name it after its release, as in R2026a.json");
            }
        }
        for (const auto& [version, file] : files) {
            const std::string content = contentOf(file.string());
            checkSum(file, content);
            result_.list.push_back(
                {file.stem().string(), version.first, parseReleaseTree(content, file.string())});
        }
        for (const auto& [name, sum] : checksums_) {
            report((fs::path(result_.folder) / name).string(),
                   "is missing, but its checksum is recorded: restore the baseline");
        }
        return std::move(result_);
    }

private:
    void report(std::string file, std::string message)
    {
        result_.diagnostics.push_back({"", std::move(message), {.file = std::move(file)}});
    }

    void checkSum(const fs::path& file, const std::string& content)
    {
        const auto recorded = checksums_.find(file.filename().string());
        if (recorded == checksums_.end()) {
            report(file.string(), std::string("has no line in ") + checksumFile +
                                      ": publish releases with scripts/release.sh, which records it");
            return;
        }
        if (recorded->second != checksumOf(content)) {
            report(file.string(),
                   "differs from the published baseline: restore it, as users have that release");
        }
        checksums_.erase(recorded);
    }

    Baselines result_;
    std::map<std::string, std::string> checksums_;  // of files that were not read yet
};

}  // namespace

Baselines readBaselines(const std::string& fileOrFolder)
{
    if (fs::is_directory(fileOrFolder)) {
        return FolderReader(fileOrFolder).run();
    }
    Baselines single;
    ReleaseTree content = readReleaseTree(fileOrFolder);
    const auto newest = core::newestRelease(content.releaseChanges);
    const std::string name = fs::path(fileOrFolder).stem().string();
    const auto version = parseVersion(name);
    if (!version && !newest) {
        throw std::runtime_error(fileOrFolder + ": names no release: rename it, as in R2026a.json");
    }
    single.list.push_back({name, version ? version->first : *newest, std::move(content)});
    return single;
}

core::ReleaseName releaseAfter(const core::ReleaseName& release) noexcept
{
    return release.half == 'a' ? core::ReleaseName{release.year, 'b'}
                               : core::ReleaseName{release.year + 1, 'a'};
}

}  // namespace vx::review
