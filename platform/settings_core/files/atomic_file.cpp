#include <settings_core/files/atomic_file.hpp>
#include <settings_core/files/input_file.hpp>

#include <algorithm>
#include <array>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <thread>
#include <utility>
#include <vector>

#include "descriptor.hpp"

namespace vx::core {

namespace {

namespace fs = std::filesystem;

constexpr const char* cannotWrite = "cannot write";
constexpr const char* cannotWriteIn = "cannot write in";

constexpr mode_t userOnly = 0600;
constexpr mode_t readableForAll = 0644;
constexpr mode_t asUmaskSays = 0666;

/// A file that is deleted on destruction unless it was renamed to its final name.
class TemporaryFile
{
public:
    explicit TemporaryFile(fs::path file) : file_(std::move(file)) { ::unlink(file_.c_str()); }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile()
    {
        if (!isRenamed_) {
            ::unlink(file_.c_str());
        }
    }

    [[nodiscard]] const fs::path& path() const noexcept { return file_; }

    void rename(const fs::path& target)
    {
        if (::rename(file_.c_str(), target.c_str()) != 0) {
            failOnErrno(cannotWrite, target);
        }
        isRenamed_ = true;
    }

private:
    fs::path file_;
    bool isRenamed_ = false;
};

/// Returns ".<name><suffix>" in the file's folder.
fs::path hiddenSibling(const fs::path& file, const char* suffix)
{
    return file.parent_path() / ("." + file.filename().string() + suffix);
}

void flush(int descriptor, const fs::path& file)
{
    // A file system that does not support flushing a folder reports EINVAL, which is no error here.
    if (retryOnInterrupt([&] { return ::fsync(descriptor); }) != 0 && errno != EINVAL) {
        failOnErrno("cannot flush to disk", file);
    }
}

void flushFolderOf(const fs::path& file)
{
    const Descriptor folder(file.parent_path(), O_RDONLY | O_DIRECTORY);
    if (folder.isOpen()) {
        flush(folder.get(), file.parent_path());
    }
}

void writeAll(int descriptor, std::string_view content, const fs::path& file)
{
    while (!content.empty()) {
        const ssize_t written =
            retryOnInterrupt([&] { return ::write(descriptor, content.data(), content.size()); });
        if (written < 0) {
            failOnErrno(cannotWrite, file);
        }
        content.remove_prefix(static_cast<std::size_t>(written));
    }
}

void copyOwnerAndMode(const fs::path& from, int descriptor)
{
    struct stat status = {};
    if (::stat(from.c_str(), &status) != 0) {
        return;
    }
    // Only root may change the owner; for other users the new file stays their own, of the old file's group
    // if they are in it. Both are changed before the mode because fchown may clear mode bits.
    if (::fchown(descriptor, status.st_uid, status.st_gid) != 0) {
        [[maybe_unused]] const int ignored = ::fchown(descriptor, static_cast<uid_t>(-1), status.st_gid);
    }
    if (::fchmod(descriptor, status.st_mode & 07777U) != 0) {
        failOnErrno("cannot keep the mode of", from);
    }
}

/// Whether the path names an open descriptor, such as /dev/fd/1: a link that only the system can follow.
bool isDescriptorLink(const fs::path& file)
{
    std::error_code ignored;
    return fs::canonical(file.parent_path(), ignored).native().starts_with("/proc/");
}

/// Returns the absolute path with symbolic links followed, also when the target does not exist yet.
fs::path resolveLinks(const fs::path& file, void (*requireLink)(const fs::path& link))
{
    constexpr int maxLinks = 40;  // the limit of Linux
    fs::path target = fs::absolute(file);
    std::error_code ignored;
    for (int links = 0; links < maxLinks && fs::is_symlink(target, ignored) && !isDescriptorLink(target);
         ++links) {
        requireLink(target);
        target = target.parent_path() / fs::read_symlink(target);
    }
    return target;
}

/// Refuses to write through a link by which another user chooses the file.
void requireOwnLink(const fs::path& link)
{
    struct stat status = {};
    if (::lstat(link.c_str(), &status) == 0 && status.st_uid != ::geteuid() && status.st_uid != 0) {
        throw std::runtime_error("cannot write " + link.string() +
                                 ": it is a symbolic link of another user; name the file that it leads to");
    }
}

fs::path resolveForWriting(const fs::path& file)
{
    return resolveLinks(file, requireOwnLink);
}

/// Creates a file with this content and flushes it to disk. It gets owner and mode of the file that it is to
/// replace, or `mode` if there is none.
void writeNew(const fs::path& file, std::string_view content, const fs::path& replaced, mode_t mode)
{
    const Descriptor written(file, O_WRONLY | O_CREAT | O_EXCL, mode);
    if (!written.isOpen()) {
        failOnErrno(errno == EEXIST ? cannotWrite : cannotWriteIn,
                    errno == EEXIST ? file : file.parent_path());
    }
    copyOwnerAndMode(replaced, written.get());
    writeAll(written.get(), content, replaced);
    flush(written.get(), replaced);
}

void requireWritable(const fs::path& file)
{
    if (::faccessat(AT_FDCWD, file.c_str(), W_OK, AT_EACCESS) != 0 && errno != ENOENT) {
        failOnErrno(cannotWrite, file);
    }
}

void replaceLocked(const fs::path& file, std::string_view content, mode_t mode)
{
    requireWritable(file);
    TemporaryFile temporary(hiddenSibling(file, ".new"));
    writeNew(temporary.path(), content, file, mode);
    temporary.rename(file);
    flushFolderOf(file);
}

void createFolder(const fs::path& folder, FileAccess access)
{
    if (fileKind(folder) == "folder") {
        return;
    }
    createFolder(folder.parent_path(), access);
    if (::mkdir(folder.c_str(), access == FileAccess::user ? 0700 : 0755) != 0 && errno != EEXIST) {
        failOnErrno(cannotWriteIn, folder.parent_path());
    }
}

/// Creates the folder of the file. Refuses what is no file before anything is created beside it.
fs::path prepareFolder(fs::path file, FileAccess access)
{
    requireRegularFile(file);
    createFolder(file.parent_path(), access);
    return file;
}

[[noreturn]] void failOnLockFile(const fs::path& lockFile, const char* reason)
{
    throw std::runtime_error(lockFile.string() + " " + reason +
                             ", so it cannot be a lock file: remove it and try again");
}

/// Refuses what another user may have put in place of the lock file to redirect the writing elsewhere.
void requireLockFile(const struct stat& status, const fs::path& lockFile)
{
    if (!S_ISREG(status.st_mode)) {
        failOnLockFile(lockFile, S_ISLNK(status.st_mode) ? "is a symbolic link" : "is not a regular file");
    }
    if (status.st_uid == ::geteuid() || status.st_uid == 0) {
        return;
    }
    struct stat folder = {};
    if (::stat(lockFile.parent_path().c_str(), &folder) != 0 || status.st_uid != folder.st_uid) {
        failOnLockFile(lockFile, "is of another user");
    }
}

Descriptor openLockFile(const fs::path& lockFile)
{
    struct stat status = {};
    if (::lstat(lockFile.c_str(), &status) == 0) {
        requireLockFile(status, lockFile);  // before it is opened: opening a device may have effects
    }
    // Others may have to wait for it, too, so they may open it.
    Descriptor opened(lockFile, O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK, 0644);
    if (!opened.isOpen()) {
        const int error = errno;
        // Of another user, perhaps root; flock needs read access only.
        Descriptor readOnly(lockFile, O_RDONLY | O_NOFOLLOW | O_NONBLOCK);
        errno = error;
        if (!readOnly.isOpen()) {
            failOnErrno(cannotWriteIn, lockFile.parent_path());
        }
        return readOnly;
    }
    return opened;
}

/// Returns the process that has locked the file, as far as the system tells.
std::string holderOf(const fs::path& lockFile, const struct stat& status)
{
    std::array<char, 64> place{};
    std::snprintf(place.data(), place.size(), "%02x:%02x:%ju", ::major(status.st_dev), ::minor(status.st_dev),
                  static_cast<std::uintmax_t>(status.st_ino));
    std::ifstream locks("/proc/locks");
    for (std::string line; std::getline(locks, line);) {
        // 1: FLOCK  ADVISORY  WRITE 4711 fd:01:1837 0 EOF; those that wait have "->" after the number.
        std::istringstream stream(line);
        const std::vector<std::string> fields(std::istream_iterator<std::string>(stream), {});
        if (fields.size() > 5 && fields[1] == "FLOCK" && fields[5] == place.data()) {
            std::string name;
            if (std::getline(std::ifstream("/proc/" + fields[4] + "/comm"), name)) {
                return "process " + fields[4] + " (" + name + ")";
            }
        }
    }
    return "another process (to find it: fuser " + lockFile.string() + ")";
}

[[noreturn]] void failOnTimeout(const fs::path& file, const std::string& holder,
                                std::chrono::milliseconds timeout)
{
    std::ostringstream message;
    message << "cannot write " << file.string() << ": ";
    if (timeout > std::chrono::milliseconds::zero()) {
        message << "waited " << std::chrono::duration<double>(timeout).count() << " s for " << holder
                << ", which has locked it";
    } else {
        message << "locked by " << holder;
    }
    message << "; try again, or end that process if it hangs";
    throw std::runtime_error(message.str());
}

/// Whether the lock file is still the one that was opened.
bool isCurrent(const fs::path& lockFile, ino_t opened)
{
    struct stat current = {};
    return ::lstat(lockFile.c_str(), &current) == 0 && current.st_ino == opened;
}

}  // namespace

FileLock::FileLock(const fs::path& file, std::chrono::milliseconds timeout)
    : lockFile_(hiddenSibling(file, ".lock"))
{
    constexpr std::chrono::milliseconds step{2};
    const auto deadline = std::chrono::steady_clock::now() + timeout;
    while (descriptor_ == -1) {
        Descriptor opened = openLockFile(lockFile_);
        struct stat own = {};
        ::fstat(opened.get(), &own);
        requireLockFile(own, lockFile_);
        if (retryOnInterrupt([&] { return ::flock(opened.get(), LOCK_EX | LOCK_NB); }) == 0) {
            if (isCurrent(lockFile_, own.st_ino)) {
                descriptor_ = opened.release();
            }
        } else if (errno != EWOULDBLOCK) {
            failOnErrno("cannot lock", file);
        } else if (std::chrono::steady_clock::now() >= deadline) {
            failOnTimeout(file, holderOf(lockFile_, own), timeout);
        } else {
            std::this_thread::sleep_for(step);
        }
    }
}

FileLock::~FileLock()
{
    struct stat own = {};
    if (::fstat(descriptor_, &own) == 0 && isCurrent(lockFile_, own.st_ino)) {
        ::unlink(lockFile_.c_str());
    }
    ::close(descriptor_);
}

LockedFile::LockedFile(const fs::path& file, std::chrono::milliseconds timeout, FileAccess access)
    : access_(access),
      file_(prepareFolder(resolveForWriting(file), access)),
      lock_(file_, timeout),
      content_(readFile(file_))
{}

void LockedFile::requireWritable() const
{
    core::requireWritable(file_);
}

void LockedFile::replace(std::string content)
{
    if (content_ == content) {
        return;
    }
    replaceLocked(file_, content, access_ == FileAccess::user ? userOnly : readableForAll);
    content_ = std::move(content);
}

void LockedFile::remove()
{
    requireWritable();
    if (::unlink(file_.c_str()) != 0 && errno != ENOENT) {
        failOnErrno("cannot remove", file_);
    }
    flushFolderOf(file_);
    content_.reset();
}

bool LockedFile::keepCopy(const std::string& name) const
{
    const fs::path copy = file_.parent_path() / name;
    const TemporaryFile temporary(hiddenSibling(file_, ".new"));
    writeNew(temporary.path(), content_.value_or(""), file_, userOnly);
    if (::link(temporary.path().c_str(), copy.c_str()) == 0) {
        flushFolderOf(file_);
        return true;
    }
    if (errno != EEXIST) {
        failOnErrno(cannotWrite, copy);
    }
    return false;
}

void writeFile(const fs::path& file, std::string_view content, FileAccess access)
{
    const fs::path target = resolveForWriting(file);
    const std::string_view kind = fileKind(target);
    if (kind.empty() || (kind == "regular file" && !isDescriptorLink(target))) {
        const FileLock lock(target, lockTimeout);
        replaceLocked(target, content, access == FileAccess::user ? userOnly : asUmaskSays);
        return;
    }
    const Descriptor stream(target, O_WRONLY | O_APPEND);
    if (!stream.isOpen()) {
        failOnErrno(cannotWrite, file);
    }
    writeAll(stream.get(), content, file);
}

fs::path resolvedPath(const fs::path& file)
{
    std::error_code ignored;
    return fs::weakly_canonical(resolveLinks(file, [](const fs::path&) {}), ignored);
}

bool isSameFile(const fs::path& left, const fs::path& right)
{
    std::error_code ignored;
    const fs::path resolved = resolvedPath(left);
    return fs::equivalent(left, right, ignored) || (!resolved.empty() && resolved == resolvedPath(right));
}

}  // namespace vx::core
