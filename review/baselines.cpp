#include "baselines.hpp"

#include <boost/crc.hpp>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <regex>
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
        if (error != std::errc() || stop != end || name[dot + 1] < '1' || name[dot + 1] > '9') {
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

class FolderReader
{
public:
    explicit FolderReader(const fs::path& folder) : result_{folder.string(), {}, {}}
    {
        readChecksums((folder / checksumFile).string());
    }

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
            if (!hasRecordedSum(file, content)) {
                continue;  // a damaged file may not even be a tree
            }
            result_.list.push_back({file.stem().string(), version.first, version.second > 0, file.string(),
                                    parseReleaseTree(content, file.string())});
            checkRelease(result_.list.back());
        }
        for (const auto& [name, sum] : checksums_) {
            report((fs::path(result_.folder) / name).string(),
                   "is missing, but its checksum is recorded: restore the baseline");
        }
        return std::move(result_);
    }

private:
    void report(std::string file, std::string message, std::size_t line = 0)
    {
        result_.diagnostics.push_back({"", std::move(message), {.file = std::move(file), .line = line}});
    }

    void readChecksums(const std::string& file)
    {
        const std::regex form("[0-9]+ [0-9]+ [^ \\r]+");
        std::istringstream lines(contentOf(file));
        std::string text;
        for (std::size_t line = 1; std::getline(lines, text); ++line) {
            const std::size_t nameBegin = text.rfind(' ') + 1;
            if (!std::regex_match(text, form)) {
                report(file, "is no line as from cksum(1): restore it", line);
            } else if (!checksums_.emplace(text.substr(nameBegin), text.substr(0, nameBegin - 1)).second) {
                report(file, text.substr(nameBegin) + " has a checksum already: remove this line", line);
            }
        }
    }

    /// A tree that was exported later may have changes of later releases.
    void checkRelease(const Baseline& baseline)
    {
        const auto newest = core::newestRelease(baseline.content.releaseChanges);
        if (newest && baseline.release < *newest) {
            report(baseline.file, "has release changes of " + formatReleaseName(*newest) +
                                      ", a later release: restore the baseline, or export it from the "
                                      "branch of its own release");
        }
    }

    bool hasRecordedSum(const fs::path& file, const std::string& content)
    {
        const auto recorded = checksums_.find(file.filename().string());
        if (recorded == checksums_.end()) {
            report(file.string(), std::string("has no line in ") + checksumFile +
                                      ": publish releases with scripts/release.sh, which records it");
            return false;
        }
        const bool isSame = recorded->second == checksumOf(content);
        if (!isSame) {
            report(file.string(),
                   "differs from the published baseline: restore it, as users have that release");
        }
        checksums_.erase(recorded);
        return isSame;
    }

    Baselines result_;
    std::map<std::string, std::string> checksums_;  // with sizes, of files that were not read yet
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
    single.list.push_back({name, version ? version->first : *newest, version && version->second > 0,
                           fileOrFolder, std::move(content)});
    return single;
}

core::ReleaseName releaseAfter(const core::ReleaseName& release) noexcept
{
    return release.half == 'a' ? core::ReleaseName{release.year, 'b'}
                               : core::ReleaseName{release.year + 1, 'a'};
}

}  // namespace vx::review
