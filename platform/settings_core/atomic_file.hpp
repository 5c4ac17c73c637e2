#pragma once

// Files that are replaced as a whole: whoever reads one, at whatever moment and after whatever crash, finds
// the old or the new content.

#include <foundation/export.hpp>

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace vx::core {

/// A file's content; nothing when there is no such file. Raises std::system_error with the file's name.
[[nodiscard]] VX_API std::optional<std::string> readFile(const std::filesystem::path& file);

/// A file that one writer at a time may change, from reading it until it is replaced; others wait meanwhile.
///
/// The lock is on an empty file beside it, ".<name>.lock", because the file itself is another one after every
/// change; it is never removed, which would let two writers hold two locks. A new content is written to
/// ".<name>.new", flushed, given the old file's mode and, where that is allowed, its owner, and renamed; then
/// the folder is flushed. What a killed writer leaves of it, the next one overwrites. Of a symbolic link the
/// target is replaced.
class VX_API LockedFile
{
public:
    /// Waits for the lock; makes the folder where there is none. Raises std::system_error with the file's
    /// name.
    explicit LockedFile(const std::filesystem::path& file);
    LockedFile(const LockedFile&) = delete;
    LockedFile& operator=(const LockedFile&) = delete;
    ~LockedFile();

    /// The content as of now; nothing when there is no file yet.
    [[nodiscard]] const std::optional<std::string>& content() const noexcept { return content_; }

    /// Replaces the file unless it has this content already. When this raises std::system_error, with the
    /// file's name, before the rename, the file is as before and nothing is left beside it.
    void replace(std::string content);

    /// Keeps the content under another name in the same folder, unless that name is taken: false then. Raises
    /// std::system_error with the file's name.
    [[nodiscard]] bool keepCopy(const std::string& name) const;

    /// The file itself: where links lead to, with its folder.
    [[nodiscard]] const std::filesystem::path& path() const noexcept { return file_; }

private:
    std::filesystem::path file_;
    int lock_;
    std::optional<std::string> content_;
};

}  // namespace vx::core
