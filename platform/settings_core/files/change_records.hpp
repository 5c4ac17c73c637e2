#pragma once

// Records of the changes of settings files, which allow to undo them.
//
// The changes of a settings file are recorded in the folder undo/<absolute path of the file> under the state
// folder, each in a file whose name is the change's number. It is written, whole or not at all, before the
// settings file is replaced, while that is locked. Therefore the newest record may be of a change that was
// not carried out: the settings file then still has the content before that change.

#include <settings_core/files/atomic_file.hpp>

#include <foundation/export.hpp>

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace vx::core {

/// How many changes of a settings file are kept.
inline constexpr std::size_t keptRecords = 20;

/// A recorded change of a settings file.
struct ChangeRecord
{
    std::string time;                   ///< in UTC, such as "2026-03-01T12:30:00Z"
    std::string command;                ///< that made the change, such as "reset --all"
    std::optional<std::string> before;  ///< content before the change; nothing when there was no file
    std::optional<std::string> after;   ///< content after the change; nothing when the file was removed
};

/// Returns the files of the records of a settings file, newest first. Leaves out the newest one if its change
/// was not carried out, as the file's `content` shows.
[[nodiscard]] VX_API std::vector<std::filesystem::path>
changeRecords(const std::filesystem::path& stateFolder, const std::filesystem::path& file,
              const std::optional<std::string>& content);

/// Reads a record; returns nothing if the file does not exist. Throws std::runtime_error when it is damaged,
/// std::system_error when it cannot be read.
[[nodiscard]] VX_API std::optional<ChangeRecord> readChangeRecord(const std::filesystem::path& record);

/// Records the changes that a command makes.
class VX_API ChangeRecorder
{
public:
    /// `command` is what records call the command; it must not contain a line break, and no value of a
    /// setting, which may be a secret.
    ChangeRecorder(std::filesystem::path stateFolder, std::string command);

    /// Records that the file will get this content, and removes all records but the newest. Throws
    /// std::runtime_error when the change cannot be recorded.
    void record(const LockedFile& file, const std::optional<std::string>& content) const;

    /// Records the change, then replaces the file's content, or removes the file if there is no content. Does
    /// nothing when the content is the same. Throws what record() and LockedFile::replace throw.
    void replace(LockedFile& file, const std::optional<std::string>& content) const;

private:
    std::filesystem::path stateFolder_;
    std::string command_;
};

}  // namespace vx::core
