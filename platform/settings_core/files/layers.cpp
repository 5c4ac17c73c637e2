#include <settings_core/files/input_file.hpp>
#include <settings_core/files/layers.hpp>
#include <settings_core/files/stored_value.hpp>
#include <settings_core/files/text_position.hpp>
#include <settings_core/tree/path_lookup.hpp>
#include <settings_core/tree/secret_settings.hpp>
#include <settings_core/values/run_time_default.hpp>

#include <foundation/verdixdata/text.hpp>
#include <verdix/settings/internal/values.hpp>

#include <algorithm>
#include <array>
#include <iterator>
#include <stdexcept>
#include <utility>

namespace vx::core {

namespace {

namespace fs = std::filesystem;

LayerValue factoryValueOf(const Node& setting)
{
    LayerValue factory;
    try {
        DefaultValue value = defaultValue(setting);
        factory.value = std::move(value.value);
        factory.computedBy = std::move(value.computedBy);
    } catch (const std::runtime_error& error) {
        factory.diagnostics.push_back({setting.getFullName(), error.what()});
    }
    return factory;
}

using Paths = std::set<std::string, std::less<>>;

Paths lockedPaths(const std::optional<SettingsFile>& file)
{
    Paths paths;
    if (file) {
        for (const JsonValue& path : file->locked()) {
            paths.insert(foundation::verdixdata::toUtf8(decodedString(path)));
        }
    }
    return paths;
}

/// Calls `visit` with the path of each setting that `file` sets, and `other` does not set in the same words.
template <class Visit>
void forEachDifference(const std::optional<SettingsFile>& file, const std::optional<SettingsFile>& other,
                       const Visit& visit)
{
    if (!file) {
        return;
    }
    for (const JsonMember& listed : file->settings()) {
        const JsonMember* theirs = other ? other->find(listed.name) : nullptr;
        if (theirs == nullptr || theirs->value.text != file->find(listed.name)->value.text) {
            visit(listed.name);
        }
    }
}

}  // namespace

std::string_view originName(Origin origin) noexcept
{
    constexpr std::array<std::string_view, 3> names{"factory", "installation", "personal"};
    return names[static_cast<std::size_t>(origin)];
}

LayerValue shownValue(const Node& setting, LayerValue value)
{
    if (value.origin != Origin::factory && value.value.isAssigned() && isSecret(setting.fullName())) {
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

Layers::Layers(const SettingsTree& tree, LayerFiles files) : tree_(tree)
{
    for (auto file = files.installation.rbegin(); file != files.installation.rend(); ++file) {
        layers_.push_back({Origin::installation, std::move(*file)});
    }
    if (!files.personal.empty()) {
        layers_.push_back({Origin::personal, std::move(files.personal)});
    }
}

const Layers::Locks& Layers::locks()
{
    if (!locks_) {
        Locks locks;
        for (std::size_t index = 0; index < files().size(); ++index) {
            const auto& [origin, path, isRead, content] = layers_[index];
            if (origin != Origin::installation) {
                continue;
            }
            for (const std::string& locked : lockedPaths(content)) {
                locks.try_emplace(locked, index);
            }
        }
        locks_ = std::move(locks);
    }
    return *locks_;
}

const Layers::Locks::value_type* Layers::lowestLock(const Node& setting)
{
    const Locks::value_type* lowest = nullptr;
    if (locks().empty()) {
        return lowest;
    }
    for (const Node* node = &setting; node != nullptr; node = node->parent()) {
        const auto lock = locks_->find(node->fullName());
        if (lock != locks_->end() && (lowest == nullptr || lock->second < lowest->second)) {
            lowest = &*lock;
        }
    }
    return lowest;
}

std::optional<SettingLock> Layers::lockOf(const Node& node)
{
    const Locks::value_type* lock = lowestLock(node);
    return lock == nullptr ? std::nullopt
                           : std::optional(SettingLock{layers_[lock->second].path, lock->first});
}

std::optional<SettingLock> Layers::lockAgainst(const fs::path& file, const Node& node)
{
    const Locks::value_type* lock = lowestLock(node);
    const auto layer = std::ranges::find(layers_, file, &FileLayer::path);
    const bool isAbove = lock != nullptr && lock->second < static_cast<std::size_t>(layer - layers_.begin());
    return isAbove ? lockOf(node) : std::nullopt;
}

const std::vector<Layers::FileLayer>& Layers::files()
{
    for (FileLayer& layer : layers_) {
        if (!layer.isRead) {
            layer.content = loadSettingsFile(layer.path);
            layer.isRead = true;
        }
    }
    return layers_;
}

std::optional<LayerValue> Layers::valueIn(const FileLayer& layer, const Node& setting)
{
    const std::optional<SettingsFile>& file = layer.content;
    const JsonMember* member = file ? file->find(setting.fullName()) : nullptr;
    if (member == nullptr) {
        return std::nullopt;
    }
    StoredValue stored = readStoredValue(setting, *member, layer.path, file->positions());
    if (const auto lock = lockAgainst(layer.path, setting)) {
        stored.diagnostics.insert(stored.diagnostics.begin(),
                                  {setting.getFullName(),
                                   "has no effect: " + lock->path + " is locked by " + lock->file.string(),
                                   file->positions().at(member->offset, layer.path)});
    }
    return LayerValue{layer.origin, std::move(stored.value), layer.path, {}, std::move(stored.diagnostics)};
}

std::vector<LayerValue> Layers::valuesOf(const Node& node)
{
    const Node& setting = resolveSetting(tree_, node);
    std::vector<LayerValue> values;
    if (LayerValue factory = factoryValueOf(setting);
        factory.value.isAssigned() || !factory.diagnostics.empty()) {
        values.push_back(std::move(factory));
    }
    for (const FileLayer& layer : files()) {
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
    const auto ignore = [&ignored](LayerValue& value) {
        std::ranges::move(value.diagnostics, std::back_inserter(ignored));
    };
    std::optional<LayerValue> value;
    for (auto layer = files().rbegin(); layer != layers_.rend() && !value; ++layer) {
        value = valueIn(*layer, setting);
        if (value && !value->isValid()) {
            ignore(*value);
            value.reset();
        }
    }
    if (!value) {
        value = factoryValueOf(setting);
        ignore(*value);
    }
    value->diagnostics = std::move(ignored);
    return *std::move(value);
}

bool Layers::hasOverride(const Node& setting)
{
    return std::ranges::any_of(files(), [&](const FileLayer& layer) {
        return layer.content && layer.content->find(setting.fullName()) != nullptr;
    });
}

std::vector<fs::path> Layers::paths() const
{
    std::vector<fs::path> paths;
    std::ranges::transform(layers_, std::back_inserter(paths), &FileLayer::path);
    return paths;
}

void Layers::setContent(std::size_t file, std::optional<SettingsFile> content)
{
    layers_[file].content = std::move(content);
    layers_[file].isRead = true;
    locks_.reset();
}

void Layers::addSettingsUnder(const Paths& paths, NodesByPath& settings)
{
    const auto isUnder = [&paths](const Node* node) {
        while (node != nullptr && !paths.contains(node->fullName())) {
            node = node->parent();
        }
        return node != nullptr;
    };
    for (const FileLayer& layer : files()) {
        forEachDifference(layer.content, std::nullopt, [&](std::string_view path) {
            if (const Node* node = tree_.find(path); isUnder(node)) {
                settings.emplace(node->fullName(), node);
            }
        });
    }
}

void Layers::addAffected(const FileContent& replacement, NodesByPath& affected)
{
    const FileLayer& layer = files()[replacement.file];
    const auto& before = layer.content;
    const auto& after = replacement.content;
    const auto add = [&](std::string_view path) {
        if (const Node* node = tree_.find(path)) {
            affected.emplace(node->fullName(), node);
        }
    };
    forEachDifference(before, after, add);
    forEachDifference(after, before, add);
    if (layer.origin == Origin::installation) {
        Paths changed;
        std::ranges::set_symmetric_difference(lockedPaths(before), lockedPaths(after),
                                              std::inserter(changed, changed.end()));
        if (!changed.empty()) {
            addSettingsUnder(changed, affected);
        }
    }
}

std::vector<EffectiveChange> Layers::replaceContents(std::vector<FileContent> contents,
                                                     const std::function<bool(const Node&)>& isWanted)
{
    NodesByPath affected;
    for (const FileContent& replacement : contents) {
        addAffected(replacement, affected);
    }
    std::vector<EffectiveChange> changes;
    for (const auto& [path, node] : affected) {
        if (node->kind() == NodeKind::setting && isWanted(*node)) {
            changes.push_back({node, effective(*node)});
        }
    }
    for (FileContent& replacement : contents) {
        setContent(replacement.file, std::move(replacement.content));
    }
    for (EffectiveChange& change : changes) {
        change.after = effective(*change.setting);
    }
    std::erase_if(changes,
                  [](const EffectiveChange& change) { return change.before.value == change.after.value; });
    return changes;
}

}  // namespace vx::core
