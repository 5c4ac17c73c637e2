#pragma once

// Carries settings files of older releases forward.

#include <settings_core/release_name.hpp>
#include <settings_core/settings_file.hpp>

#include <settings/core/settings_file_change.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vx::core {

struct FileFault;
class SettingsTree;

/// What a release did to one setting of a file.
struct MigrationEvent
{
    /// What happened.
    enum class Kind : std::uint8_t
    {
        moved,       ///< to `target`, with its value as it was written
        targetKept,  ///< dropped, because what it would have moved to is in the file already
        removed      ///< dropped, because the release did away with it
    };

    Kind kind;            ///< what happened
    std::string release;  ///< that did it: "R2022b"
    std::string path;     ///< of the setting, before
    std::string target;   ///< empty for what was removed
};

/// How a settings file is carried forward.
struct Migration
{
    /// Nothing for a file that does not say: it is older than all.
    std::optional<ReleaseName> from;
    ReleaseName to;                           ///< the release of the text afterwards
    std::vector<MigrationEvent> events = {};  ///< in the order in which they happened
    std::size_t untouched = 0;                ///< settings that no event is about
    std::string text = {};                    ///< of the file afterwards
};

/// Which releases to apply, in place of all that are newer than the file's own.
struct MigrationRange
{
    std::optional<ReleaseName> from = std::nullopt;  ///< the release to take the file for
    std::optional<ReleaseName> to =
        std::nullopt;  ///< the last release to apply; the newest of the table when left out
};

/// Applies the changes of every release after `from`, up to and with `to`, the oldest first, and makes `to`
/// the file's release. A setting moves in its place, with its value as it is written; one that is in the file
/// already is never replaced. Removing a group removes all settings in it.
///
/// Raises ParseError, with an offset in the file, when a setting is given twice or the release is no release,
/// std::runtime_error when the file or `to` is newer than the table, or the file newer than `to`.
[[nodiscard]] VX_API Migration migrateSettings(const SettingsFile& file,
                                               const ::settings::core::ReleaseChangeTable& table,
                                               const MigrationRange& range = {});

/// What the settings that moved have against their values. Such values stay in the file, and do not count.
[[nodiscard]] VX_API std::vector<FileFault>
checkMovedValues(const Migration& migration, const SettingsTree& tree,
                 const ::settings::core::ReleaseChangeTable& table);

}  // namespace vx::core
