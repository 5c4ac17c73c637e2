#pragma once

// Parsing and editing of settings files:
// { "release": "R2022b", "locked": ["<path>", ...], "settings": { "<path>": <value>, ... } }

#include <settings_core/files/json_object_edit.hpp>
#include <settings_core/files/json_reader.hpp>
#include <settings_core/files/text_position.hpp>
#include <settings_core/releases/release_name.hpp>

#include <foundation/export.hpp>

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace vx::core {

class LockedPaths;

/// A parsed settings file. Of duplicate settings, the last one applies.
class VX_API SettingsFile
{
public:
    /// Parses the content of a file; whitespace alone stands for an empty object. Throws ParseError when it
    /// is not JSON, or not an object with an optional object "settings" and an optional array of strings
    /// "locked". Does not check paths, values or release.
    explicit SettingsFile(std::string text);
    /// Moving keeps references to JSON values valid.
    ///@{
    SettingsFile(SettingsFile&&) noexcept = default;
    SettingsFile& operator=(SettingsFile&&) noexcept = default;
    ///@}

    /// Returns the content that was parsed; an empty object for whitespace alone.
    [[nodiscard]] const std::string& text() const noexcept { return *text_; }
    /// Returns the positions in the content.
    [[nodiscard]] const PositionIndex& positions() const noexcept { return positions_; }
    /// Returns the top-level object.
    [[nodiscard]] const JsonValue& root() const noexcept { return root_; }

    /// Returns the value of the member "release", which may be of any kind, or null.
    [[nodiscard]] const JsonValue* release() const noexcept;

    /// Returns the value of the member "locked", an array of strings, or null.
    [[nodiscard]] const JsonValue* lockedValue() const noexcept;

    /// Returns the paths that the file locks, all of kind string.
    [[nodiscard]] const std::vector<JsonValue>& locked() const noexcept;

    /// Returns the settings in the file's order, duplicates included.
    [[nodiscard]] const std::vector<JsonMember>& settings() const noexcept;

    /// Returns the setting at this full path, or null.
    [[nodiscard]] const JsonMember* find(std::string_view path) const noexcept;

private:
    friend class SettingsFileEdit;

    [[nodiscard]] const JsonMember* member(std::string_view name) const noexcept;

    std::unique_ptr<const std::string> text_;  // on the heap: what follows refers to it, also after a move
    PositionIndex positions_;
    JsonValue root_;
    const JsonValue* settings_ = nullptr;
    std::unordered_map<std::string_view, const JsonMember*> byPath_;
};

/// Edits a settings file and preserves every byte that is not part of a change: indentation, line endings,
/// order, notation of numbers. Removing a setting that `set` added restores the original content, except that
/// a file without "settings" keeps an empty one.
class VX_API SettingsFileEdit
{
public:
    /// The file must outlive the edit.
    explicit SettingsFileEdit(const SettingsFile& file);

    /// Whether the edited file has the setting.
    [[nodiscard]] bool has(std::string_view path) const;

    /// Replaces a setting's value with this JSON text, or appends the setting.
    void set(const std::string& path, std::string json);

    /// Removes a setting with all its duplicates. Returns false when the file does not have it.
    bool remove(std::string_view path);

    /// Renames a setting in place. The file must have `path` and must not have `target`.
    void rename(std::string_view path, const std::string& target);

    /// Replaces the value of the member "release", or appends the member.
    void setRelease(std::string_view release);

    /// Replaces the value of the member "locked", which the file must have.
    void setLocked(const LockedPaths& locked);

    /// Returns the paths of the settings in the edited file that are at this path or under it, in the order
    /// of the file.
    [[nodiscard]] std::vector<std::string> pathsAtOrUnder(std::string_view path) const;

    /// Returns the content of the edited file.
    [[nodiscard]] std::string text() const;

private:
    /// Indexes of the members, by path. Of duplicates, the last one applies.
    using Indexes = std::multimap<std::string, std::size_t, std::less<>>;

    [[nodiscard]] Indexes::const_iterator find(std::string_view path) const;

    const SettingsFile& file_;
    Indexes indexes_;
    std::size_t nextIndex_ = 0;
    JsonObjectEdit settings_;
    std::optional<std::string> release_;
    std::optional<std::string> locked_;
    bool changesSettings_ = false;
};

/// Whether a file has no content. Such a settings file has no settings.
[[nodiscard]] VX_API bool isOnlyWhitespace(std::string_view text) noexcept;

/// Returns the content of a new file without settings. An empty release is left out, and so is an empty
/// location of the JSON Schema.
[[nodiscard]] VX_API std::string emptySettingsFile(std::string_view release, std::string_view schema = {});

/// Parses the value of a file's "release"; returns nothing when it is not the name of a release.
[[nodiscard]] VX_API std::optional<ReleaseName> parseRelease(const JsonValue& release);

/// The diagnostic for a "release" that parseRelease rejects.
inline constexpr std::string_view invalidReleaseMessage =
    "is not a release: write R, the year and a or b, such as \"R2022b\"";

}  // namespace vx::core
