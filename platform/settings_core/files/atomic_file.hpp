#pragma once

// Atomic replacement of files: a reader sees either the old or the new content, never a part of one, even
// after a crash.
//
// New content is written to ".<name>.new" beside the file, flushed and renamed; then the folder is flushed.
// It gets the mode of the old file and, where permitted, its owner and group. A symbolic link is followed:
// its target is replaced. A file that the user may not write is refused, though renaming would replace it.
//
// Meanwhile ".<name>.lock", an empty file, is locked, because every replacement gives the file itself a new
// inode. Who gets the lock removes the lock file when done; who waited for it looks whether the lock file is
// still the one that was locked. What a killed process leaves of either file is used by the next writer.

#include <foundation/export.hpp>

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace vx::core {

/// How long a writer waits for others before it gives up.
inline constexpr std::chrono::milliseconds lockTimeout{10'000};

/// An exclusive lock on a file, against other writers.
class VX_API FileLock
{
public:
    /// Waits for the lock. Throws std::runtime_error that says who holds it when it is not released in time,
    /// or when the lock file is not a regular file of the user, of root or of the folder's owner; throws
    /// std::system_error when there can be no lock file.
    FileLock(const std::filesystem::path& file, std::chrono::milliseconds timeout);
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;
    ~FileLock();

private:
    std::filesystem::path lockFile_;
    int descriptor_ = -1;
};

/// For whom a new file, and the new folders above it, are.
enum class FileAccess : std::uint8_t
{
    user,     ///< modes 600 and 700
    everyone  ///< to read: modes 644 and 755, less what the umask takes away
};

/// A settings file that is locked against other writers while it is read and replaced.
class VX_API LockedFile
{
public:
    /// Waits for the lock and reads the file. Creates the file's folder if it does not exist. `access` is
    /// that of what is created. Throws what readFile and FileLock throw.
    explicit LockedFile(const std::filesystem::path& file, std::chrono::milliseconds timeout = lockTimeout,
                        FileAccess access = FileAccess::user);

    /// Returns the current content, or nothing when the file does not exist yet.
    [[nodiscard]] const std::optional<std::string>& content() const noexcept { return content_; }

    /// Throws std::system_error that names the file when there is one that the user may not write.
    void requireWritable() const;

    /// Replaces the file's content; does nothing when the content is the same. Throws std::system_error that
    /// names the file. If the error occurs before the rename, the file is unchanged and no temporary file
    /// remains.
    void replace(std::string content);

    /// Removes the file, if it exists. Throws std::system_error that names the file.
    void remove();

    /// Writes a copy of the content under another name in the same folder. Returns false, and writes nothing,
    /// when a file of that name exists. Throws std::system_error that names the file.
    [[nodiscard]] bool keepCopy(const std::string& name) const;

    /// Returns the absolute path of the file, symbolic links resolved.
    [[nodiscard]] const std::filesystem::path& path() const noexcept { return file_; }

private:
    FileAccess access_;
    std::filesystem::path file_;
    FileLock lock_;
    std::optional<std::string> content_;
};

/// Replaces a file that a user named, or creates it: for everyone with the mode that the process gives new
/// files. What is not a regular file (a device, a FIFO), and a descriptor such as /dev/stdout, is written
/// directly. Throws like LockedFile.
VX_API void writeFile(const std::filesystem::path& file, std::string_view content,
                      FileAccess access = FileAccess::everyone);

/// Returns the one path of the file that would be replaced by writing: absolute, with symbolic links
/// followed. Empty when the system does not tell.
[[nodiscard]] VX_API std::filesystem::path resolvedPath(const std::filesystem::path& file);

/// Whether writing to one of the files would replace the other; neither need exist.
[[nodiscard]] VX_API bool isSameFile(const std::filesystem::path& left, const std::filesystem::path& right);

}  // namespace vx::core
