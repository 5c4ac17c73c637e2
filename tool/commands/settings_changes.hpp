#pragma once

// What the commands have in common that change settings in a settings file.

#include <settings_core/files/atomic_file.hpp>
#include <settings_core/files/settings_editor.hpp>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include "host/session.hpp"
#include "render/output.hpp"

namespace CLI {
class App;
}

namespace vx::tool {

/// The option by which a user chooses the settings file to change.
class Scope
{
public:
    void addOption(CLI::App& command);

    /// Returns the personal file; or of the installation files the first one that exists, or else the first.
    [[nodiscard]] std::filesystem::path fileIn(const core::LayerFiles& layers) const;

    /// Returns who may read the file if it is new.
    [[nodiscard]] core::FileAccess access() const noexcept;

private:
    [[nodiscard]] bool isInstallation() const noexcept { return name_ == "installation"; }

    std::string name_ = "personal";
};

/// The options of every command that changes settings.
struct ChangeOptions
{
    Scope scope = {};
    bool isDryRun = false;
};

void addChangeOptions(CLI::App& command, ChangeOptions& options);

/// A settings file that a command changes.
struct ChangedFile
{
    /// `command` is what records call the command.
    ChangedFile(LazySession& lazy, const ChangeOptions& options, const std::string& command);

    std::filesystem::path file;
    core::SettingsEditor editor;
    core::FileAccess access;  ///< of the file if it is new
    bool isDryRun;
};

/// Returns "1 setting", "2 settings" or, with an adjective, "2 unknown settings".
[[nodiscard]] std::string countSettings(std::size_t count, const char* adjective = "");

/// Returns the number of changes that leave the file as it is.
[[nodiscard]] std::size_t countUnchanged(const core::AppliedChanges& applied);

/// Returns "2 settings set in FILE, 1 unchanged", where `done` is "set in".
[[nodiscard]] std::string summarize(const core::AppliedChanges& applied, const ChangedFile& changed,
                                    const char* done);

/// Writes each change on a line. A single change is told with its file; several are followed by the summary,
/// and so is a single one if it has a summary of its own.
void writeChanges(const core::AppliedChanges& applied, const ChangedFile& changed, const std::string& summary,
                  Output& out);

/// Returns `path`, `before` and `after`.
[[nodiscard]] boost::json::object changeJson(const core::AppliedChange& change);

/// Returns `changes`, `file` and `isWritten`. What changed nothing is left out of the list.
[[nodiscard]] boost::json::object changesJson(const core::AppliedChanges& applied,
                                              const ChangedFile& changed);

/// Gives hints at new values that are not the effective ones, and at secrets in a file that all users can
/// read.
void giveHints(const core::AppliedChanges& applied, const ChangedFile& changed);

}  // namespace vx::tool
