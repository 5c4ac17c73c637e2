#pragma once

#include <settings_core/diagnostic.hpp>
#include <settings_core/files/change_records.hpp>
#include <settings_core/files/layers.hpp>
#include <settings_core/releases/release_name.hpp>
#include <settings_core/tree/node.hpp>
#include <settings_core/tree/settings_tree.hpp>
#include <settings_core/values/value_parsing.hpp>

#include <foundation/verdixdata/array.hpp>
#include <settings/core/settings_file_change.hpp>

#include <cstddef>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace vx::core {

struct ValidChange;

/// A value as a user writes it.
struct ValueText
{
    std::string text;                      ///< in the notation
    Notation notation = Notation::script;  ///< of the text
    Position position = {};                ///< of the text, for diagnostics
};

/// A change of one setting in a settings file.
struct SettingChange
{
    std::string path;  ///< may omit the root; an alias stands for its target
    /// The override to write, converted to the setting's class where that loses nothing; without a value, the
    /// override is removed.
    std::variant<std::monostate, foundation::verdixdata::Array, ValueText> value;
    Position position = {};  ///< of the path, for diagnostics
};

/// Thrown for changes that cannot be made, none of which is then made.
class VX_API InvalidChanges : public std::runtime_error
{
public:
    /// The message consists of the diagnostics, one per line.
    explicit InvalidChanges(std::vector<Diagnostic> diagnostics);

    /// Returns what is wrong, in the order of the changes. Of a secret, it tells neither the value nor what
    /// is wrong with it.
    [[nodiscard]] const std::vector<Diagnostic>& diagnostics() const noexcept { return diagnostics_; }

private:
    std::vector<Diagnostic> diagnostics_;
};

/// What a change does to one setting.
struct AppliedChange
{
    std::string path;               ///< full path
    const Node* setting = nullptr;  ///< null for a setting that only the file has
    bool isChange = true;           ///< false if the file had this override already, or none to remove
    LayerValue before = {};         ///< effective before the change; unassigned if `setting` is null
    LayerValue after = {};          ///< effective after the change; unassigned if `setting` is null
};

/// What an operation does to a settings file.
struct AppliedChanges
{
    /// In the order of the changes; of a reset, in the file's order. None if there is no file to remove from.
    std::vector<AppliedChange> settings = {};
    std::size_t unknownLeft = 0;  ///< overrides left by a reset because the tree does not have the settings
    std::size_t lockedLeft = 0;   ///< overrides left by a reset because the settings are locked
    bool isWritten = false;       ///< whether the file was replaced
};

/// How an editor works; by default on a file that stands alone.
struct EditorOptions
{
    /// The layers that the file is part of: their locks hold, and they determine the effective values. If the
    /// file is none of the installation files, it is the personal one.
    LayerFiles layers = {};
    /// That a new file names; by default the newest in the table.
    std::optional<ReleaseName> release = std::nullopt;
    /// Records each change.
    std::optional<ChangeRecorder> recorder = std::nullopt;
    /// Neither writes nor locks the file, so that the result tells what would be done.
    bool isDryRun = false;
};

/// Changes the overrides in one settings file, many at once or one. A file that does not exist is created
/// with the newest release: for everyone to read if it is an installation file. In an existing file, every
/// byte that is not part of the change is preserved. The file is replaced atomically, once for each
/// operation, and other writers wait meanwhile. The tree and the release table must outlive the editor.
///
/// The operations throw, and change nothing, in these cases: InvalidChanges; std::runtime_error for a damaged
/// file; std::system_error when a file cannot be read or written.
class VX_API SettingsEditor
{
public:
    /// `file` need not exist.
    SettingsEditor(const SettingsTree& tree, const ::settings::core::ReleaseChangeTable& releases,
                   std::filesystem::path file, EditorOptions options = {});

    /// Returns what is wrong with the changes: unknown paths, groups and unresolved aliases, settings that
    /// are changed twice, read-only or locked against the file, invalid values.
    [[nodiscard]] std::vector<Diagnostic> check(const std::vector<SettingChange>& changes) const;

    /// Makes all changes, or none if check() finds anything.
    AppliedChanges apply(const std::vector<SettingChange>& changes);

    /// Removes the override of a setting, or all overrides in a group. What the file holds there besides the
    /// settings of the tree is left; but a setting that only the file has is removed if `path` names it.
    /// Locked settings are left, and a locked `path` is refused. Throws UnknownPath if neither the tree nor
    /// the file has anything there, and what resolveSetting throws for an alias.
    AppliedChanges reset(std::string_view path);
    /// Removes all overrides of settings of the tree, like reset().
    AppliedChanges resetAll();
    /// Removes what the file holds besides settings of the tree, everywhere or, if `path` is not empty, only
    /// there.
    AppliedChanges resetUnknown(std::string_view path);

private:
    template <class MakeChanges>
    AppliedChanges carryOut(bool createsFile, MakeChanges makeChanges);
    template <class Concerned, class Removed>
    AppliedChanges removeFrom(Concerned isConcerned, Removed isRemoved);
    [[nodiscard]] AppliedChange describeChange(const ValidChange& change, const SettingsFile& file,
                                               Layers& layers) const;
    [[nodiscard]] LayerValue effectiveWith(const std::optional<foundation::verdixdata::Array>& override,
                                           const Node& setting, Layers& layers) const;
    [[nodiscard]] const Node* knownSetting(std::string_view path) const;
    void requireUnlocked(const Node& node) const;
    void replace(LockedFile& file, const std::string& content) const;

    const SettingsTree& tree_;
    const ::settings::core::ReleaseChangeTable& releases_;
    std::filesystem::path file_;
    EditorOptions options_;
};

}  // namespace vx::core
