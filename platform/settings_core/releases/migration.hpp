#pragma once

// Migrates settings files of older releases.

#include <settings_core/files/settings_file.hpp>
#include <settings_core/releases/release_name.hpp>

#include <settings/core/settings_file_change.hpp>

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace vx::core {

struct Diagnostic;
class SettingsTree;

/// A change that a migration makes to one setting of a file, or to one of the paths that the file locks.
struct MigrationEvent
{
    /// The kinds of changes.
    enum class Kind : std::uint8_t
    {
        moved,       ///< renamed to `target`, value unchanged
        targetKept,  ///< dropped: the file already has `target`, whose value stays
        removed,     ///< dropped: the release has no such setting
        converted,   ///< same path, value in the class of the setting of the newest release
        lockMoved,   ///< an entry of "locked" renamed to `target`, or dropped because that is locked already
        lockAdded,   ///< `target` added to "locked", because the group that `path` leaves is locked
        lockRemoved  ///< an entry of "locked" dropped: the release has no such path
    };

    Kind kind;            ///< of the change
    std::string release;  ///< that made the change: "R2022b"; for `converted` the one migrated to
    std::string path;     ///< of the setting before the change
    std::string target;   ///< path of the move; empty for the removed and the converted

    std::string before = {};  ///< the old value as JSON, as it was in the file; only for `converted`
    std::string after = {};   ///< the new value as JSON; only for `converted`
};

/// The result of migrating a settings file.
struct Migration
{
    /// Release of the file before; nothing when it names none, which means older than all releases.
    std::optional<ReleaseName> from;
    ReleaseName to;                           ///< release of the file afterwards
    std::vector<MigrationEvent> events = {};  ///< oldest release first, conversions last
    std::size_t untouched = 0;                ///< number of settings without an event
    std::string text = {};                    ///< content of the file afterwards
};

/// The releases to apply; by default all that are newer than the file's own.
struct MigrationRange
{
    std::optional<ReleaseName> from = std::nullopt;  ///< overrides the file's own release
    std::optional<ReleaseName> to = std::nullopt;    ///< last release to apply; default: the published one
    /// The last published release; default: the newest in the table. A later one in the table is in
    /// preparation.
    std::optional<ReleaseName> published = std::nullopt;
};

/// Applies the changes of every release after `from` up to and including `to`, oldest first, and sets the
/// file's release to `to`. A moved setting keeps its position and the source text of its value; a setting
/// that is already in the file is never replaced. Removing a group removes all settings in it. Locks follow
/// the settings that they lock, also those that leave a locked group.
///
/// In a file that is migrated to the newest release, the one that the tree describes, the values that the
/// tree's settings reject are then converted if that loses nothing: false to 0, 12 to "12", "a" to ["a"].
///
/// Throws ParseError, with an offset in the file, for a duplicate setting or an invalid release name;
/// std::runtime_error when the file or `to` is newer than the table, or the file newer than `to`.
[[nodiscard]] VX_API Migration migrateSettings(const SettingsFile& file, const SettingsTree& tree,
                                               const ::settings::core::ReleaseChangeTable& table,
                                               const MigrationRange& range = {});

/// Returns diagnostics about the invalid values in the migrated file, which stay there and are ignored.
/// Paths that the tree does not have are not checked: they may belong to another product. Values are checked
/// against the tree even if the file was migrated to an older release, as it is the tree that ignores them.
[[nodiscard]] VX_API std::vector<Diagnostic>
checkMigratedValues(const Migration& migration, const std::filesystem::path& file, const SettingsTree& tree,
                    const ::settings::core::ReleaseChangeTable& table);

}  // namespace vx::core
