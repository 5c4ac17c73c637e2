#include <settings_core/files/change_records.hpp>
#include <settings_core/files/input_file.hpp>
#include <settings_core/files/layers.hpp>
#include <settings_core/files/stored_value.hpp>
#include <settings_core/files/text_position.hpp>
#include <settings_core/tree/path_lookup.hpp>
#include <settings_core/tree/secret_settings.hpp>
#include <settings_core/values/run_time_default.hpp>

#include <verdix/settings/internal/values.hpp>

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <pwd.h>
#include <stdexcept>
#include <unistd.h>
#include <utility>

namespace vx::core {

namespace {

namespace fs = std::filesystem;

std::string_view environment(const char* variable)
{
    const char* value = std::getenv(variable);
    return value == nullptr ? std::string_view() : std::string_view(value);
}

fs::path settingsIn(const fs::path& folder)
{
    return folder / "verdix" / "settings.json";
}

/// The XDG specification says to ignore relative paths.
bool isUsable(std::string_view folder)
{
    return folder.starts_with('/');
}

/// Returns the user's home in the user database, or an empty string.
std::string databaseHome()
{
    std::vector<char> strings(16384);
    passwd entry = {};
    passwd* found = nullptr;
    while (::getpwuid_r(::geteuid(), &entry, strings.data(), strings.size(), &found) == ERANGE) {
        strings.resize(2 * strings.size());
    }
    return found == nullptr ? std::string() : found->pw_dir;
}

/// `wayOut` says what to do without a home.
fs::path homeFolder(const std::string& wayOut)
{
    const std::string_view variable = environment("HOME");
    if (!variable.empty() && !isUsable(variable)) {
        throw std::runtime_error("HOME is not an absolute path: " + std::string(variable) + wayOut);
    }
    std::string home = variable.empty() ? databaseHome() : std::string(variable);
    if (!isUsable(home)) {
        throw std::runtime_error("no folder of your own: HOME is not set, and user " +
                                 std::to_string(::geteuid()) + " has no home in the user database" + wayOut);
    }
    return home;
}

LayerValue factoryValueOf(const Node& setting)
{
    LayerValue factory;
    try {
        DefaultValue value = defaultValue(setting);
        factory.value = std::move(value.value);
        factory.source = std::move(value.source);
    } catch (const std::runtime_error& error) {
        factory.diagnostics.push_back({setting.getFullName(), error.what()});
    }
    return factory;
}

}  // namespace

std::string_view layerName(Layer layer) noexcept
{
    constexpr std::array<std::string_view, 3> names{"factory", "installation", "personal"};
    return names[static_cast<std::size_t>(layer)];
}

fs::path defaultPersonalFile()
{
    const std::string_view folder = environment("XDG_CONFIG_HOME");
    return settingsIn(
        isUsable(folder)
            ? fs::path(folder)
            : homeFolder("; set HOME or XDG_CONFIG_HOME, or name the file with --personal FILE") / ".config");
}

fs::path defaultStateFolder()
{
    const std::string_view folder = environment("XDG_STATE_HOME");
    return (isUsable(folder) ? fs::path(folder)
                             : homeFolder("; set HOME or XDG_STATE_HOME") / ".local/state") /
           "verdix";
}

fs::path defaultInstallationFile()
{
    std::string_view folders = environment("XDG_CONFIG_DIRS");
    fs::path first;
    while (!folders.empty()) {
        const std::string_view folder = folders.substr(0, folders.find(':'));
        folders.remove_prefix(std::min(folder.size() + 1, folders.size()));
        std::error_code ignored;
        if (isUsable(folder) && fs::exists(settingsIn(folder), ignored)) {
            return settingsIn(folder);
        }
        first = first.empty() && isUsable(folder) ? settingsIn(folder) : first;
    }
    return first.empty() ? settingsIn("/etc/xdg") : first;
}

LayerValue shownValue(const Node& setting, LayerValue value)
{
    if (value.layer != Layer::factory && value.value.isAssigned() && isSecret(setting.fullName())) {
        value.value = verdix::settings::internal::charvec(std::string(maskedValue));
    }
    return value;
}

SettingsFile parseSettingsFile(const std::string& content, const fs::path& file)
{
    try {
        return SettingsFile(content);
    } catch (const ParseError& error) {
        throw std::runtime_error(
            formatDiagnostic({"", error.what(), positionAt(content, error.offset(), file)}));
    }
}

std::optional<SettingsFile> loadSettingsFile(const fs::path& file)
{
    const std::optional<std::string> content = readFile(file);
    return content ? std::optional(parseSettingsFile(*content, file)) : std::nullopt;
}

const fs::path& Layers::fileOf(Layer layer) const noexcept
{
    return layer == Layer::personal ? files_.personal : files_.installation;
}

const std::optional<SettingsFile>& Layers::fileAt(Layer layer)
{
    FileLayer& cached = fileLayers_[layer == Layer::personal ? 1 : 0];
    if (!cached.isLoaded) {
        cached.file = loadSettingsFile(fileOf(layer));
        cached.isLoaded = true;
    }
    return cached.file;
}

std::optional<LayerValue> Layers::valueIn(Layer layer, const Node& setting)
{
    const std::optional<SettingsFile>& file = fileAt(layer);
    const JsonMember* member = file ? file->find(setting.fullName()) : nullptr;
    if (member == nullptr) {
        return std::nullopt;
    }
    StoredValue stored = readStoredValue(setting, *member, fileOf(layer), file->positions());
    return LayerValue{layer, std::move(stored.value), fileOf(layer).string(), std::move(stored.diagnostics)};
}

std::vector<LayerValue> Layers::valuesOf(const Node& node)
{
    const Node& setting = resolveSetting(tree_, node);
    std::vector<LayerValue> values;
    if (LayerValue factory = factoryValueOf(setting);
        factory.value.isAssigned() || !factory.diagnostics.empty()) {
        values.push_back(std::move(factory));
    }
    for (const Layer layer : {Layer::installation, Layer::personal}) {
        if (auto value = valueIn(layer, setting)) {
            values.push_back(*std::move(value));
        }
    }
    return values;
}

LayerValue Layers::effective(const Node& node)
{
    const Node& setting = resolveSetting(tree_, node);
    std::vector<Diagnostic> ignored;
    std::optional<LayerValue> value;
    for (const Layer layer : {Layer::personal, Layer::installation, Layer::factory}) {
        value = layer == Layer::factory ? factoryValueOf(setting) : valueIn(layer, setting);
        if (value && value->isValid()) {
            break;
        }
        if (value) {
            std::ranges::move(value->diagnostics, std::back_inserter(ignored));
        }
    }
    value->diagnostics = std::move(ignored);
    return *std::move(value);
}

bool Layers::hasOverride(const Node& setting)
{
    const auto isIn = [&](Layer layer) {
        const auto& file = fileAt(layer);
        return file && file->find(setting.fullName()) != nullptr;
    };
    return isIn(Layer::personal) || isIn(Layer::installation);
}

}  // namespace vx::core
