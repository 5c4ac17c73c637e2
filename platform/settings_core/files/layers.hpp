#pragma once

// The effective values of settings: factory value, installation file, personal file; the last one wins.

#include <settings_core/diagnostic.hpp>
#include <settings_core/files/settings_file.hpp>
#include <settings_core/tree/settings_tree.hpp>

#include <foundation/export.hpp>
#include <foundation/verdixdata/array.hpp>

#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vx::core {

/// The origin of a value, lowest layer first; the value of a higher layer overrides.
enum class Layer : std::uint8_t
{
    factory,
    installation,
    personal
};

/// Returns "factory", "installation" or "personal".
[[nodiscard]] VX_API std::string_view layerName(Layer layer) noexcept;

/// The settings files of the layers. A file that does not exist has no settings.
struct LayerFiles
{
    std::filesystem::path installation;  ///< for all users of the machine
    std::filesystem::path personal;      ///< of the current user
};

/// Returns the personal settings file of the XDG base directories: verdix/settings.json in $XDG_CONFIG_HOME
/// (default ~/.config, with the home of the user database where HOME is not set). Throws std::runtime_error
/// when HOME is relative, or no home is known: the working folder never takes its place.
[[nodiscard]] VX_API std::filesystem::path defaultPersonalFile();

/// Returns the installation settings file of the XDG base directories: verdix/settings.json in the first
/// folder of $XDG_CONFIG_DIRS (default /etc/xdg) that has this file; if none has, in the first folder.
[[nodiscard]] VX_API std::filesystem::path defaultInstallationFile();

/// The value of a setting in one layer.
struct LayerValue
{
    Layer layer = Layer::factory;  ///< that holds the value
    /// Unassigned if the value could not be parsed or computed, or there is none.
    foundation::verdixdata::Array value = {};
    /// The file, "factory value", or the function that computed the value.
    std::string source = {};
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

/// The layers over a tree, which must outlive them. Each file is read once, by the first operation that needs
/// it; every operation throws what loadSettingsFile throws.
class VX_API Layers
{
public:
    /// Does not read the files yet.
    Layers(const SettingsTree& tree, LayerFiles files) : tree_(tree), files_(std::move(files)) {}

    /// Returns the values of all layers that have one, lowest layer first; the last valid one is the
    /// effective value. For an alias, the values of its target. Throws what resolveSetting throws.
    [[nodiscard]] std::vector<LayerValue> valuesOf(const Node& setting);

    /// Returns the effective value, with the diagnostics of every value that was ignored as invalid. When no
    /// layer has a valid value, returns the factory layer with an unassigned value. Accepts aliases and
    /// throws like valuesOf.
    [[nodiscard]] LayerValue effective(const Node& setting);

    /// Whether a file has a value for the setting, valid or not.
    [[nodiscard]] bool hasOverride(const Node& setting);

private:
    struct FileLayer
    {
        bool isLoaded = false;
        std::optional<SettingsFile> file = std::nullopt;
    };

    [[nodiscard]] const std::filesystem::path& fileOf(Layer layer) const noexcept;
    [[nodiscard]] const std::optional<SettingsFile>& fileAt(Layer layer);
    [[nodiscard]] std::optional<LayerValue> valueIn(Layer layer, const Node& setting);

    const SettingsTree& tree_;
    LayerFiles files_;
    std::array<FileLayer, 2> fileLayers_;
};

}  // namespace vx::core
