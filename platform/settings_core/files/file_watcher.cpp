#include "file_watcher.hpp"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <iterator>
#include <string_view>
#include <sys/inotify.h>
#include <system_error>
#include <utility>

namespace vx::core {

namespace {

namespace fs = std::filesystem;

/// Not IN_MODIFY: between truncating and closing a file, its content is not meant to be read.
constexpr std::uint32_t events =
    IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_CLOSE_WRITE | IN_ATTRIB | IN_ONLYDIR;

/// Puts the names of a path in front of those that are still to be looked up. The next one is the last.
void pushNames(const fs::path& path, std::vector<fs::path>& names)
{
    const fs::path relative = path.relative_path();
    const std::vector<fs::path> parts(relative.begin(), relative.end());
    names.insert(names.end(), parts.rbegin(), parts.rend());
}

/// Whether the event is that of a new file without content, which its writer has not closed yet.
bool isToBeWritten(const inotify_event& event, const fs::path& path)
{
    std::error_code ignored;
    return (event.mask & (IN_CREATE | IN_ISDIR)) == IN_CREATE &&
           fs::is_regular_file(fs::symlink_status(path, ignored)) && fs::is_empty(path, ignored);
}

}  // namespace

FileWatcher::FileWatcher(std::vector<fs::path> files)
    : files_(std::move(files)), problems_(files_.size()), inotify_(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
{
    if (!inotify_.isOpen()) {
        throw std::system_error(errno, std::generic_category(),
                                "cannot watch files (see /proc/sys/fs/inotify/max_user_instances)");
    }
    std::ranges::transform(files_, files_.begin(), [](const fs::path& file) { return fs::absolute(file); });
    followAll();
}

std::set<std::size_t> FileWatcher::takeChanged()
{
    std::set<std::size_t> changed;
    alignas(inotify_event) std::array<char, 16384> buffer;
    const auto read = [&] { return ::read(inotify_.get(), buffer.data(), buffer.size()); };
    for (ssize_t size = 0; (size = retryOnInterrupt(read)) > 0;) {
        for (ssize_t offset = 0; offset < size;) {
            const auto& event = *reinterpret_cast<const inotify_event*>(buffer.data() + offset);
            addFiles(event, changed);
            offset += static_cast<ssize_t>(sizeof event + event.len);
        }
    }
    if (!changed.empty()) {
        followAll();
    }
    return changed;
}

void FileWatcher::addFiles(const inotify_event& event, std::set<std::size_t>& changed) const
{
    if ((event.mask & IN_Q_OVERFLOW) != 0) {  // events were dropped
        for (std::size_t file = 0; file < files_.size(); ++file) {
            changed.insert(file);
        }
        return;
    }
    const std::string_view name =
        event.len == 0 ? "" : event.name;  // none: the folder itself changed or is gone
    for (const Lookup& lookup : lookups_) {
        const bool isOnTheWay = lookup.folder == event.wd && (name.empty() || name == lookup.name);
        if (isOnTheWay && !isToBeWritten(event, lookup.folderPath / lookup.name)) {
            changed.insert(lookup.file);
        }
    }
}

void FileWatcher::followAll()
{
    const std::vector<Lookup> before = std::exchange(lookups_, {});
    for (std::size_t file = 0; file < files_.size(); ++file) {
        follow(file);
    }
    std::set<int> unused;
    std::ranges::transform(before, std::inserter(unused, unused.end()), &Lookup::folder);
    for (const Lookup& lookup : lookups_) {
        unused.erase(lookup.folder);
    }
    for (const int folder : unused) {
        ::inotify_rm_watch(inotify_.get(), folder);  // fails if the folder is gone
    }
}

void FileWatcher::follow(std::size_t file)
{
    constexpr int maxLinks = 40;  // the limit of Linux
    std::vector<fs::path> names;
    pushNames(files_[file], names);
    fs::path folder = files_[file].root_path();
    for (int links = 0; !names.empty() && links <= maxLinks;) {
        const fs::path name = std::move(names.back());
        names.pop_back();
        // Watched before it is looked at: what changes after that is noticed.
        watch(folder, name.string(), file);
        std::error_code ignored;
        const fs::path path = folder / name;
        switch (fs::symlink_status(path, ignored).type()) {
        case fs::file_type::directory:
            folder = path;
            break;
        case fs::file_type::symlink: {
            const fs::path target = fs::read_symlink(path, ignored);
            pushNames(target, names);
            folder = target.is_absolute() ? target.root_path() : folder;
            ++links;
            break;
        }
        default:  // the file, or the path ends here
            return;
        }
    }
}

void FileWatcher::watch(const fs::path& folder, const std::string& name, std::size_t file)
{
    problems_[file].clear();  // what matters is the last folder: most that hold others change rarely
    const int watched = ::inotify_add_watch(inotify_.get(), folder.c_str(), events);
    if (watched != -1) {
        lookups_.push_back({watched, folder, name, file});
    } else if (errno != ENOENT && errno != ENOTDIR) {  // it was there: the folder above tells what happened
        problems_[file] = "cannot watch " + folder.string() + ": " + std::generic_category().message(errno) +
                          (errno == ENOSPC ? " (see /proc/sys/fs/inotify/max_user_watches)" : "");
    }
}

}  // namespace vx::core
