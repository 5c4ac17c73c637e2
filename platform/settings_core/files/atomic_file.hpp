#pragma once

// Atomic replacement of files: a reader sees either the old or the new content, never a part of one, even
// after a crash.

#include <foundation/export.hpp>

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace vx::core {

/// Returns a file's content, or nothing when the file does not exist. Throws std::system_error that names the
/// file.
[[nodiscard]] VX_API std::optional<std::string> readFile(const std::filesystem::path& file);

/// A file that is locked against other writers while it is read and replaced; they wait for the lock.
///
/// The lock is taken on an empty file beside it, ".<name>.lock", because every replacement gives the file
/// itself a new inode. The lock file is never removed: otherwise two writers could hold locks on two
/// different lock files. New content is written to ".<name>.new", which gets the old file's mode and, where
/// permitted, its owner, is flushed and renamed; then the folder is flushed. A ".<name>.new" that a killed
/// writer left behind is overwritten. A symbolic link is followed: its target is replaced.
class VX_API LockedFile
{
public:
    /// Waits for the lock and reads the file. Creates the file's folder if it does not exist. Throws
    /// std::system_error that names the file.
    explicit LockedFile(const std::filesystem::path& file);
    LockedFile(const LockedFile&) = delete;
    LockedFile& operator=(const LockedFile&) = delete;
    ~LockedFile();

    /// Returns the current content, or nothing when the file does not exist yet.
    [[nodiscard]] const std::optional<std::string>& content() const noexcept { return content_; }

    /// Replaces the file's content; does nothing when the content is the same. Throws std::system_error that
    /// names the file. If the error occurs before the rename, the file is unchanged and no temporary file
    /// remains.
    void replace(std::string content);

    /// Writes a copy of the content under another name in the same folder. Returns false, and writes nothing,
    /// when a file of that name exists. Throws std::system_error that names the file.
    [[nodiscard]] bool keepCopy(const std::string& name) const;

    /// Returns the absolute path of the file, symbolic links resolved.
    [[nodiscard]] const std::filesystem::path& path() const noexcept { return file_; }

private:
    std::filesystem::path file_;
    int lock_;
    std::optional<std::string> content_;
};

}  // namespace vx::core
