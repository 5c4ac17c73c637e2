#pragma once

// The values of settings through the layers: factory, installation file, personal file. The last one wins.

#include <settings_core/settings_file.hpp>
#include <settings_core/settings_tree.hpp>

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

/// Where a value comes from, the lowest first; a higher layer wins.
enum class Layer : std::uint8_t
{
    factory,
    installation,
    personal
};

/// "factory", "installation" or "personal".
[[nodiscard]] VX_API std::string_view layerName(Layer layer) noexcept;

/// Where the files are; one that does not exist holds no settings.
struct LayerFiles
{
    std::filesystem::path installation;  ///< for all users of a machine
    std::filesystem::path personal;      ///< of one user
};

/// By the base directories of the desktop: verdix/settings.json in $XDG_CONFIG_HOME (~/.config), and in the
/// first of $XDG_CONFIG_DIRS (/etc/xdg) that has it, the first of all when none has.
[[nodiscard]] VX_API LayerFiles defaultLayerFiles();

/// What one layer says of a setting.
struct LayerValue
{
    Layer layer = Layer::factory;  ///< the one that says it
    /// Unassigned where the layer's value cannot be read, or there is none.
    foundation::verdixdata::Array value = {};
    /// "factory value", the function that computed it, or the file.
    std::string source = {};
    /// Why the value does not count: "<file>:<line>:<column>: ..."; empty when it does.
    std::vector<std::string> diagnostics = {};

    /// Whether the value may hold: there is one, and nothing speaks against it.
    [[nodiscard]] bool isValid() const noexcept { return value.isAssigned() && diagnostics.empty(); }
};

/// Reads a settings file; nothing when there is none. Raises std::runtime_error "<file>:<line>:<column>: ..."
/// when it is damaged, std::system_error when it cannot be read.
[[nodiscard]] VX_API std::optional<SettingsFile> loadSettingsFile(const std::filesystem::path& file);

/// The same for a text that was read from this file.
[[nodiscard]] VX_API SettingsFile parseSettingsFile(const std::string& text,
                                                    const std::filesystem::path& file);

/// The layers over a tree, which has to outlive them. Files are read when they are first needed, as
/// loadSettingsFile does; only what they state themselves counts as theirs.
class VX_API Layers
{
public:
    /// Nothing is read yet.
    Layers(const SettingsTree& tree, LayerFiles files) : tree_(tree), files_(std::move(files)) {}

    /// What each layer says that says anything, the lowest first: the last one that counts holds. Of an
    /// alias, what is said of the setting behind it. Raises what resolveSetting raises.
    [[nodiscard]] std::vector<LayerValue> valuesOf(const Node& setting);

    /// The value that holds; a factory value without a value when there is none at all. The faults are those
    /// of every value that was passed over for it.
    [[nodiscard]] LayerValue effective(const Node& setting);

    /// Whether a file states the setting at all.
    [[nodiscard]] bool hasOverride(const Node& setting);

private:
    struct FileLayer
    {
        bool isRead = false;
        std::optional<SettingsFile> file = std::nullopt;
    };

    [[nodiscard]] const std::filesystem::path& fileOf(Layer layer) const noexcept;
    [[nodiscard]] const std::optional<SettingsFile>& fileAt(Layer layer);
    [[nodiscard]] std::optional<LayerValue> valueIn(Layer layer, const Node& setting);

    const SettingsTree& tree_;
    LayerFiles files_;
    std::array<FileLayer, 2> read_;
};

}  // namespace vx::core
