#pragma once

#include <settings_core/files/change_records.hpp>
#include <settings_core/releases/release_name.hpp>
#include <settings_core/tree/node.hpp>
#include <settings_core/tree/settings_tree.hpp>

#include <foundation/verdixdata/array.hpp>
#include <settings/core/settings_file_change.hpp>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace vx::core {

/// Thrown for a value that a setting rejects. The message names the setting, the value, the violated
/// constraints and the allowed values; of a secret, it tells neither the value nor what is wrong with it.
class VX_API InvalidValue : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// The notation in which a user writes a value.
enum class Notation : std::uint8_t
{
    script,  ///< the scripting language's, see parseValue
    json     ///< JSON as in settings files, see parseJsonValue
};

/// What a reset does to the settings of a file.
struct ResetCount
{
    std::size_t removed = 0;      ///< taken out of the file
    std::size_t unknownLeft = 0;  ///< left in the file because the tree does not have them

    /// Whether both counts are equal.
    [[nodiscard]] bool operator==(const ResetCount&) const = default;
};

/// Changes the values in one settings file. A file that does not exist is created with the newest release. In
/// an existing file, every byte that is not part of the change is preserved. The file is replaced atomically,
/// and other writers wait meanwhile. The tree and the release table must outlive the editor.
///
/// The operations throw, and change nothing, in these cases: UnknownPath; std::runtime_error for a group, an
/// unresolved alias, a read-only setting or a damaged file; InvalidValue; std::system_error when the file
/// cannot be read or written.
class VX_API SettingsEditor
{
public:
    /// `file` need not exist. A new file names `release`, by default the newest in the table. The recorder,
    /// if there is one, records each change.
    SettingsEditor(const SettingsTree& tree, const ::settings::core::ReleaseChangeTable& releases,
                   std::filesystem::path file, std::optional<ReleaseName> release = std::nullopt,
                   std::optional<ChangeRecorder> recorder = std::nullopt);

    /// Writes an override for a setting and returns the setting. The value is converted to the setting's
    /// class where that loses nothing. The path may omit the root; an alias stands for its target.
    ///@{
    const Node& set(std::string_view path, foundation::verdixdata::Array value);
    const Node& set(std::string_view path, std::string_view value, Notation notation);
    ///@}

    /// Removes the override of a setting, or all overrides in a group. What the file holds there besides the
    /// settings of the tree is left; but a setting that only the file has is removed if `path` names it.
    ResetCount reset(std::string_view path);
    /// Removes all overrides of settings of the tree.
    ResetCount resetAll();
    /// Removes what the file holds besides settings of the tree, everywhere or, if `path` is not empty, only
    /// there.
    ResetCount resetUnknown(std::string_view path);

private:
    [[nodiscard]] const Node& editableSetting(std::string_view path) const;
    void store(const Node& setting, const foundation::verdixdata::Array& value);
    template <class Concerned, class Removed>
    ResetCount removeFrom(Concerned isConcerned, Removed isRemoved);
    [[nodiscard]] bool isKnown(std::string_view path) const;
    void replace(LockedFile& file, const std::string& content) const;

    const SettingsTree& tree_;
    const ::settings::core::ReleaseChangeTable& releases_;
    std::filesystem::path file_;
    std::optional<ReleaseName> release_;
    std::optional<ChangeRecorder> recorder_;
};

}  // namespace vx::core
