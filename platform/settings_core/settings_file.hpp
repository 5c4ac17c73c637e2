#pragma once

// The text of a settings file: { "release": "R2022b", "settings": { "<path>": <value>, ... } }

#include <settings_core/json_object_edit.hpp>
#include <settings_core/json_reader.hpp>
#include <settings_core/release_name.hpp>

#include <foundation/export.hpp>

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace vx::core {

/// A settings file as it was read. Of a setting that is given twice, the last counts.
class VX_API SettingsFile
{
public:
    /// Reads the text. Raises ParseError where it is not JSON, or not an object with an object "settings"
    /// (which may be missing). Values and the release are taken as they come.
    explicit SettingsFile(std::string text);
    /// What is read moves along with the text that it refers to.
    ///@{
    SettingsFile(SettingsFile&&) noexcept = default;
    SettingsFile& operator=(SettingsFile&&) noexcept = default;
    ///@}

    /// The text as it was read.
    [[nodiscard]] const std::string& text() const noexcept { return *text_; }
    /// The object that the text holds.
    [[nodiscard]] const JsonValue& root() const noexcept { return root_; }

    /// The member "release" as it is, or null.
    [[nodiscard]] const JsonValue* release() const noexcept;

    /// The settings in the file's order.
    [[nodiscard]] const std::vector<JsonMember>& settings() const noexcept;

    /// The setting at this full path, or null.
    [[nodiscard]] const JsonMember* find(std::string_view path) const noexcept;

private:
    friend class SettingsFileEdit;

    [[nodiscard]] const JsonMember* member(std::string_view name) const noexcept;

    std::unique_ptr<const std::string> text_;  // what is read refers to it, whoever moves
    JsonValue root_;
    const JsonValue* settings_ = nullptr;
    std::unordered_map<std::string_view, const JsonMember*> byPath_;
};

/// Changes to a settings file's text. Every byte that is not part of a change stays as it is: indentation,
/// line ends, order, spelling of numbers. What `set` adds, `remove` takes away to the byte; only a file that
/// had no "settings" keeps an empty one.
class VX_API SettingsFileEdit
{
public:
    /// The file has to outlive the edit.
    explicit SettingsFileEdit(const SettingsFile& file);

    /// Whether the setting is in the file, with the changes made until now.
    [[nodiscard]] bool has(std::string_view path) const;

    /// Replaces the setting's value, or adds the setting at the end.
    void set(const std::string& path, std::string json);

    /// Removes the setting, as often as it is given; false when it is not.
    bool remove(std::string_view path);

    /// Gives the setting another path in its place; the other must not be in the file.
    void rename(std::string_view path, const std::string& target);

    /// Replaces the member "release", or adds it at the end.
    void setRelease(std::string_view release);

    /// The paths of the settings, with the changes made until now.
    [[nodiscard]] const std::vector<std::string>& paths() const noexcept { return paths_; }

    /// The file's text with the changes.
    [[nodiscard]] std::string text() const;

private:
    [[nodiscard]] std::size_t indexOf(std::string_view path) const;

    const SettingsFile& file_;
    std::vector<std::string> paths_;
    JsonObjectEdit settings_;
    std::optional<std::string> release_;
    bool changesSettings_ = false;
};

/// The text of a file with no settings yet, which does not say its release when that is empty.
[[nodiscard]] VX_API std::string emptySettingsFile(std::string_view release);

/// The release that a file's "release" names; nothing when that is no release's name.
[[nodiscard]] std::optional<ReleaseName> parseRelease(const JsonValue& release);

/// What to say where it is none.
inline constexpr std::string_view invalidReleaseMessage =
    "is no release: write R, the year and a or b, such as \"R2022b\"";

}  // namespace vx::core
