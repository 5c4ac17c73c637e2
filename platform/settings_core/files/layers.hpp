#pragma once

// The effective values of settings: factory value, installation files, personal file; the last one wins.

#include <settings_core/diagnostic.hpp>
#include <settings_core/files/settings_file.hpp>
#include <settings_core/tree/settings_tree.hpp>

#include <foundation/export.hpp>
#include <foundation/verdixdata/array.hpp>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace vx::core {

/// Where a value comes from, lowest layer first; the value of a higher layer overrides.
enum class Origin : std::uint8_t
{
    factory,
    installation,
    personal
};

/// Returns "factory", "installation" or "personal".
[[nodiscard]] VX_API std::string_view originName(Origin origin) noexcept;

/// The settings files of the layers. A file that does not exist has no settings.
struct LayerFiles
{
    std::vector<std::filesystem::path> installation;  ///< for all users of the machine; the first one wins
    std::filesystem::path personal;                   ///< of the current user
};

/// The value of a setting in one layer.
struct LayerValue
{
    Origin origin = Origin::factory;  ///< of the value
    /// Unassigned if the value could not be parsed or computed, or there is none.
    foundation::verdixdata::Array value = {};
    std::filesystem::path file = {};  ///< that the value is in; empty for a factory value
    std::string computedBy = {};      ///< function that computed the factory value; empty if none did
    /// Why the value is invalid; empty for a valid value.
    std::vector<Diagnostic> diagnostics = {};

    /// Whether there is a value and it satisfies its constraints. Invalid values are ignored.
    [[nodiscard]] bool isValid() const noexcept { return value.isAssigned() && diagnostics.empty(); }
};

/// Returns the value to show where it was not asked for: masked if it is of a settings file, and secret.
[[nodiscard]] VX_API LayerValue shownValue(const Node& setting, LayerValue value);

/// Reads and parses a settings file; returns nothing when it does not exist. Throws std::runtime_error
/// "<file>:<line>:<column>: ..." when it is damaged, std::system_error when it cannot be read.
[[nodiscard]] VX_API std::optional<SettingsFile> loadSettingsFile(const std::filesystem::path& file);

/// Parses content that was read from `file`. Throws like loadSettingsFile.
[[nodiscard]] VX_API SettingsFile parseSettingsFile(const std::string& content,
                                                    const std::filesystem::path& file);

/// A path of a setting or group that an installation file locks: no layer above that file overrides it.
struct SettingLock
{
    std::filesystem::path file;  ///< that locks the path
    std::string path;            ///< full path in that file
};

/// A change of a setting's effective value.
struct EffectiveChange
{
    const Node* setting = nullptr;  ///< never an alias
    LayerValue before = {};         ///< as `effective` returned it
    LayerValue after = {};          ///< as `effective` returns it now
};

/// New content of a settings file.
struct FileContent
{
    std::size_t file = 0;                                ///< index in Layers::files()
    std::optional<SettingsFile> content = std::nullopt;  ///< nothing if the file does not exist
};

/// The layers over a tree, which must outlive them. Each file is read once, by the first operation that needs
/// it; every operation throws what loadSettingsFile throws.
class VX_API Layers
{
public:
    /// Does not read the files yet. Without files, factory values are the only ones.
    Layers(const SettingsTree& tree, LayerFiles files);

    /// Returns the values of all layers that have one, lowest layer first; the last valid one is the
    /// effective value. Those that a lock excludes have a diagnostic. For an alias, the values of its target.
    /// Throws what resolveSetting throws.
    [[nodiscard]] std::vector<LayerValue> valuesOf(const Node& setting);

    /// Returns the effective value, with the diagnostics of every value that was ignored. When no layer has a
    /// valid value, returns the factory layer with an unassigned value. Accepts aliases and throws like
    /// valuesOf.
    [[nodiscard]] LayerValue effective(const Node& setting);

    /// Whether a file has a value for the setting, valid or not.
    [[nodiscard]] bool hasOverride(const Node& setting);

    /// Returns the lock on a setting or group, nothing if there is none. Of several locks on it and on its
    /// groups, that of the lowest layer applies.
    [[nodiscard]] std::optional<SettingLock> lockOf(const Node& node);

    /// Returns the lock that keeps the setting or group from being overridden in one of the files.
    [[nodiscard]] std::optional<SettingLock> lockAgainst(const std::filesystem::path& file, const Node& node);

    /// A settings file of a layer.
    struct FileLayer
    {
        Origin origin;                                       ///< installation or personal
        std::filesystem::path path;                          ///< of the file
        bool isRead = false;                                 ///< whether `content` is known
        std::optional<SettingsFile> content = std::nullopt;  ///< nothing if the file does not exist
    };

    /// Returns the layers of the files, lowest first, all read.
    [[nodiscard]] const std::vector<FileLayer>& files();

    /// Returns the value of a setting in one of these layers, if it has one.
    [[nodiscard]] std::optional<LayerValue> valueIn(const FileLayer& layer, const Node& setting);

    /// Returns the paths of the files, lowest layer first, and reads none.
    [[nodiscard]] std::vector<std::filesystem::path> paths() const;

    /// Replaces the content of the file with this index, which is then not read.
    void setContent(std::size_t file, std::optional<SettingsFile> content);

    /// Replaces the contents of files, and returns the settings for which `isWanted` holds and whose
    /// effective value is now another, by path. Only evaluates settings that old and new content set
    /// differently, and those that a file sets under a path of which the lock has changed.
    std::vector<EffectiveChange> replaceContents(std::vector<FileContent> contents,
                                                 const std::function<bool(const Node&)>& isWanted);

private:
    /// Indexes in layers_ of the lowest layer that locks a path.
    using Locks = std::map<std::string, std::size_t, std::less<>>;
    using NodesByPath = std::map<std::string_view, const Node*>;

    [[nodiscard]] const Locks& locks();
    [[nodiscard]] const Locks::value_type* lowestLock(const Node& node);
    void addAffected(const FileContent& replacement, NodesByPath& affected);
    void addSettingsUnder(const std::set<std::string, std::less<>>& paths, NodesByPath& settings);

    const SettingsTree& tree_;
    std::vector<FileLayer> layers_;  ///< of files, lowest first
    std::optional<Locks> locks_;
};

}  // namespace vx::core
