#pragma once

#include <settings_core/files/json_reader.hpp>

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace vx::core {

class SettingsFile;

/// The paths that a settings file locks, while they are edited. Their order is kept.
class LockedPaths
{
public:
    /// Copies the paths of a file.
    explicit LockedPaths(const SettingsFile& file);

    /// Whether the list has the path itself.
    [[nodiscard]] bool has(std::string_view path) const { return byPath_.contains(path); }
    /// Whether the list has the path, or that of a group above it.
    [[nodiscard]] bool covers(std::string_view path) const;

    /// Replaces a path that the list has by one that it does not have.
    void rename(std::string_view path, const std::string& target);
    /// Appends a path, unless the list has it.
    void add(const std::string& path);
    /// Removes a path that the list has.
    void remove(std::string_view path);

    /// Returns the locked paths at or under this one.
    [[nodiscard]] std::vector<std::string> pathsAtOrUnder(std::string_view path) const;

    /// Returns all paths as a JSON array with the whitespace that the array has in the file.
    [[nodiscard]] std::string text(const SettingsFile& file) const;

private:
    std::vector<std::string> paths_;  // empty: removed
    std::map<std::string, std::size_t, std::less<>> byPath_;
};

}  // namespace vx::core
