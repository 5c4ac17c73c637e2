#include <settings_core/files/atomic_file.hpp>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace vx::core {

namespace {

namespace fs = std::filesystem;

[[noreturn]] void fail(const fs::path& file, const char* what)
{
    throw std::system_error(errno, std::generic_category(), file.string() + ": " + what);
}

/// Calls a system function again for as long as a signal interrupts it.
template <class Call>
auto retryOnInterrupt(Call&& call)
{
    auto result = call();
    while (result == -1 && errno == EINTR) {
        result = call();
    }
    return result;
}

/// An owned file descriptor.
class Descriptor
{
public:
    Descriptor(const fs::path& file, int flags, mode_t mode = 0)
        : descriptor_(retryOnInterrupt([&] { return ::open(file.c_str(), flags | O_CLOEXEC, mode); }))
    {}
    explicit Descriptor(int descriptor) noexcept : descriptor_(descriptor) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor()
    {
        if (isOpen()) {
            ::close(descriptor_);
        }
    }

    [[nodiscard]] bool isOpen() const noexcept { return descriptor_ != -1; }
    [[nodiscard]] int get() const noexcept { return descriptor_; }
    [[nodiscard]] int release() noexcept { return std::exchange(descriptor_, -1); }

private:
    int descriptor_;
};

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
            fail(target, "cannot be replaced");
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
        fail(file, "cannot be flushed to disk");
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
            fail(file, "cannot be written");
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
    // Only root may change the owner; for other users the new file stays their own. The owner is changed
    // before the mode because fchown may clear mode bits.
    [[maybe_unused]] const int ignored = ::fchown(descriptor, status.st_uid, status.st_gid);
    if (::fchmod(descriptor, status.st_mode & 07777U) != 0) {
        fail(from, "cannot keep its mode");
    }
}

/// Returns the absolute path with symbolic links followed, also when the target does not exist yet.
fs::path resolveLinks(const fs::path& file)
{
    constexpr int maxLinks = 40;  // the limit of Linux
    fs::path target = fs::absolute(file);
    for (int links = 0; links < maxLinks && fs::is_symlink(target); ++links) {
        target = target.parent_path() / fs::read_symlink(target);
    }
    return target;
}

/// Creates a file with this content, and with owner and mode of `modeOf`, and flushes it to disk.
void writeNew(const fs::path& file, std::string_view content, const fs::path& modeOf)
{
    const Descriptor written(file, O_WRONLY | O_CREAT | O_EXCL, 0666);
    if (!written.isOpen()) {
        fail(file, "cannot be created");
    }
    copyOwnerAndMode(modeOf, written.get());
    writeAll(written.get(), content, file);
    flush(written.get(), file);
}

int openLock(const fs::path& file)
{
    Descriptor writable(file, O_RDWR | O_CREAT, 0666);
    if (writable.isOpen()) {
        return writable.release();
    }
    // Another user, perhaps root, owns the lock file; flock needs read access only.
    Descriptor readOnly(file, O_RDONLY);
    if (!readOnly.isOpen()) {
        fail(file, "cannot be opened to lock the settings file beside it");
    }
    return readOnly.release();
}

}  // namespace

std::optional<std::string> readFile(const fs::path& file)
{
    const Descriptor opened(file, O_RDONLY);
    if (!opened.isOpen()) {
        if (errno == ENOENT || errno == ENOTDIR) {
            return std::nullopt;
        }
        fail(file, "cannot be read");
    }
    std::string content;
    constexpr std::size_t step = 65536;  // bytes
    for (ssize_t count = 1; count != 0;) {
        const std::size_t size = content.size();
        content.resize(size + step);
        count = retryOnInterrupt([&] { return ::read(opened.get(), content.data() + size, step); });
        if (count < 0) {
            fail(file, "cannot be read");
        }
        content.resize(size + static_cast<std::size_t>(count));
    }
    return content;
}

LockedFile::LockedFile(const fs::path& file) : file_(resolveLinks(file)), lock_(-1)
{
    fs::create_directories(file_.parent_path());
    Descriptor lock(openLock(hiddenSibling(file_, ".lock")));
    if (retryOnInterrupt([&] { return ::flock(lock.get(), LOCK_EX); }) != 0) {
        fail(file_, "cannot be locked");
    }
    content_ = readFile(file_);
    lock_ = lock.release();
}

LockedFile::~LockedFile()
{
    ::close(lock_);
}

void LockedFile::replace(std::string content)
{
    if (content_ == content) {
        return;
    }
    TemporaryFile temporary(hiddenSibling(file_, ".new"));
    writeNew(temporary.path(), content, file_);
    temporary.rename(file_);
    content_ = std::move(content);
    flushFolderOf(file_);
}

bool LockedFile::keepCopy(const std::string& name) const
{
    const fs::path copy = file_.parent_path() / name;
    const TemporaryFile temporary(hiddenSibling(file_, ".new"));
    writeNew(temporary.path(), content_.value_or(""), file_);
    if (::link(temporary.path().c_str(), copy.c_str()) == 0) {
        flushFolderOf(file_);
        return true;
    }
    if (errno != EEXIST) {
        fail(copy, "cannot be created");
    }
    return false;
}

}  // namespace vx::core
