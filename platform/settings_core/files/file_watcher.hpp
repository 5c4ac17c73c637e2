#pragma once

// Notification of changes of files, with inotify.

#include <cstddef>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "descriptor.hpp"

struct inotify_event;

namespace vx::core {

/// Tells which of some files may have changed, whether they are written, replaced by renaming, removed, or
/// reached through folders and symbolic links that change or do not exist yet.
///
/// A path is looked up one name after the other, each in a folder; a symbolic link leads to further names.
/// Each of these folders is watched for the one name that is looked up in it, as far as the path exists. When
/// any of the names changes, the path is looked up anew. A file that is written in place has changed when its
/// writer closes it. Changes that another machine makes on a network file system are not seen.
class FileWatcher
{
public:
    /// Watches from now on. Throws std::system_error when the system has no instance of inotify left.
    explicit FileWatcher(std::vector<std::filesystem::path> files);

    /// Returns a descriptor that is readable when takeChanged() may have something to return.
    [[nodiscard]] int descriptor() const noexcept { return inotify_.get(); }

    /// Returns the indexes of the files that may have changed since the last call. Content that is read after
    /// that is at least as new as the changes that it returns.
    [[nodiscard]] std::set<std::size_t> takeChanged();

    /// Returns why changes of the file with this index are not noticed; empty if they are.
    [[nodiscard]] const std::string& problem(std::size_t file) const { return problems_[file]; }

private:
    /// A name that is looked up in a folder on the way to a file.
    struct Lookup
    {
        int folder;  ///< watch descriptor
        std::filesystem::path folderPath;
        std::string name;
        std::size_t file;
    };

    void followAll();
    void follow(std::size_t file);
    void watch(const std::filesystem::path& folder, const std::string& name, std::size_t file);
    void addFiles(const inotify_event& event, std::set<std::size_t>& changed) const;

    std::vector<std::filesystem::path> files_;
    std::vector<std::string> problems_;
    Descriptor inotify_;
    std::vector<Lookup> lookups_;
};

}  // namespace vx::core
