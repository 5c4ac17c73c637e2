#include <settings_core/constraints/constraints.hpp>
#include <settings_core/files/atomic_file.hpp>
#include <settings_core/files/input_file.hpp>
#include <settings_core/files/settings_editor.hpp>
#include <settings_core/files/settings_file.hpp>
#include <settings_core/files/stored_value.hpp>
#include <settings_core/releases/release_history.hpp>
#include <settings_core/tree/path_lookup.hpp>
#include <settings_core/values/value_parsing.hpp>

#include <algorithm>
#include <utility>

#include "change_validation.hpp"

namespace vx::core {

namespace {

using foundation::verdixdata::Array;

std::string joinLines(const std::vector<Diagnostic>& diagnostics)
{
    std::string lines;
    for (const Diagnostic& diagnostic : diagnostics) {
        lines += (lines.empty() ? "" : "\n") + formatDiagnostic(diagnostic);
    }
    return lines;
}

std::string nameOf(const std::optional<ReleaseName>& release)
{
    return release ? formatReleaseName(*release) : std::string();
}

std::string toJson(const Node& setting, const Array& value)
{
    return valueToJson(value, constraintOf(setting.properties()));
}

bool isInstallationFile(const LayerFiles& layers, const std::filesystem::path& file)
{
    return std::ranges::find(layers.installation, file) != layers.installation.end();
}

}  // namespace

InvalidChanges::InvalidChanges(std::vector<Diagnostic> diagnostics)
    : std::runtime_error(joinLines(diagnostics)), diagnostics_(std::move(diagnostics))
{}

SettingsEditor::SettingsEditor(const SettingsTree& tree, const ::settings::core::ReleaseChangeTable& releases,
                               std::filesystem::path file, EditorOptions options)
    : tree_(tree), releases_(releases), file_(std::move(file)), options_(std::move(options))
{
    if (!isInstallationFile(options_.layers, file_)) {
        options_.layers.personal = file_;
    }
}

std::vector<Diagnostic> SettingsEditor::check(const std::vector<SettingChange>& changes) const
{
    Layers layers(tree_, options_.layers);
    ChangeValidation validation(tree_, releases_, layers, file_);
    std::ranges::for_each(changes, [&](const SettingChange& change) { validation.add(change); });
    return std::move(validation.diagnostics());
}

AppliedChanges SettingsEditor::apply(const std::vector<SettingChange>& changes)
{
    Layers layers(tree_, options_.layers);
    ChangeValidation validation(tree_, releases_, layers, file_);
    std::ranges::for_each(changes, [&](const SettingChange& change) { validation.add(change); });
    if (!validation.diagnostics().empty()) {
        throw InvalidChanges(std::move(validation.diagnostics()));
    }
    const bool hasValues = std::ranges::any_of(
        validation.changes(), [](const ValidChange& change) { return change.value.has_value(); });
    return carryOut(hasValues, [&](const SettingsFile& /*file*/, Layers& /*current*/,
                                   AppliedChanges& /*applied*/) { return std::move(validation.changes()); });
}

/// Makes the changes that `makeChanges` returns for the content of the file.
template <class MakeChanges>
AppliedChanges SettingsEditor::carryOut(bool createsFile, MakeChanges makeChanges)
{
    AppliedChanges applied;
    if (!createsFile && !readFile(file_)) {  // a lock would create the folder
        return applied;
    }
    std::optional<LockedFile> locked;
    if (!options_.isDryRun) {
        locked.emplace(file_, lockTimeout,
                       isInstallationFile(options_.layers, file_) ? FileAccess::everyone : FileAccess::user);
    }
    const std::optional<std::string> content = locked ? locked->content() : readFile(file_);
    if (!createsFile && !content) {  // removed meanwhile by another process
        return applied;
    }
    const std::string before =
        isOnlyWhitespace(content.value_or(""))
            ? emptySettingsFile(nameOf(options_.release ? options_.release : newestRelease(releases_)))
            : *content;
    const SettingsFile file = parseSettingsFile(before, file_);
    Layers layers(tree_, options_.layers);  // read under the lock
    SettingsFileEdit edit(file);
    for (const ValidChange& change : makeChanges(file, layers, applied)) {
        const AppliedChange& done = applied.settings.emplace_back(describeChange(change, file, layers));
        if (!done.isChange) {
            continue;
        }
        if (change.value) {
            edit.set(change.path, toJson(*change.setting, *change.value));
        } else {
            edit.remove(change.path);
        }
    }
    const std::string text = edit.text();
    applied.isWritten = locked && text != before;
    if (applied.isWritten) {
        replace(*locked, text);
    }
    return applied;
}

AppliedChange SettingsEditor::describeChange(const ValidChange& change, const SettingsFile& file,
                                             Layers& layers) const
{
    AppliedChange result{.path = change.path, .setting = change.setting};
    const JsonMember* member = file.find(change.path);
    if (change.setting == nullptr) {
        return result;
    }
    const Node& setting = *change.setting;
    if (change.value && member != nullptr) {
        const StoredValue stored = readStoredValue(setting, *member, file_, file.positions());
        result.isChange =
            !stored.diagnostics.empty() || toJson(setting, stored.value) != toJson(setting, *change.value);
    } else {
        result.isChange = change.value || member != nullptr;
    }
    result.before = layers.effective(setting);
    result.after = result.isChange ? effectiveWith(change.value, setting, layers) : result.before;
    return result;
}

/// Returns the effective value of a setting if the file had this override.
LayerValue SettingsEditor::effectiveWith(const std::optional<Array>& override, const Node& setting,
                                         Layers& layers) const
{
    const auto& files = layers.files();
    for (auto layer = files.rbegin(); layer != files.rend(); ++layer) {
        if (layer->path != file_) {
            if (auto value = layers.valueIn(*layer, setting); value && value->isValid()) {
                return *std::move(value);
            }
        } else if (override) {
            return {.origin = layer->origin, .value = *override, .file = file_};
        }
    }
    std::vector<LayerValue> values = layers.valuesOf(setting);
    const bool hasDefault = !values.empty() && values.front().origin == Origin::factory;
    return hasDefault ? std::move(values.front()) : LayerValue();
}

void SettingsEditor::replace(LockedFile& file, const std::string& content) const
{
    if (options_.recorder) {
        options_.recorder->replace(file, content);
    } else {
        file.replace(content);
    }
}

/// Removes those of the concerned settings that `isRemoved` selects and no lock protects.
template <class Concerned, class Removed>
AppliedChanges SettingsEditor::removeFrom(Concerned isConcerned, Removed isRemoved)
{
    return carryOut(false, [&](const SettingsFile& file, Layers& layers, AppliedChanges& applied) {
        std::vector<ValidChange> removals;
        for (const JsonMember& member : file.settings()) {
            if (file.find(member.name) != &member || !isConcerned(member.name)) {
                continue;  // duplicates are removed together
            }
            const Node* setting = knownSetting(member.name);
            if (!isRemoved(member.name)) {
                ++applied.unknownLeft;
            } else if (setting != nullptr && layers.lockAgainst(file_, *setting)) {
                ++applied.lockedLeft;
            } else {
                removals.push_back({member.name, setting});
            }
        }
        return removals;
    });
}

const Node* SettingsEditor::knownSetting(std::string_view path) const
{
    const Node* node = tree_.find(path);
    return node != nullptr && node->kind() == NodeKind::setting ? node : nullptr;
}

void SettingsEditor::requireUnlocked(const Node& node) const
{
    if (const auto lock = Layers(tree_, options_.layers).lockAgainst(file_, node)) {
        throw InvalidChanges({lockDiagnostic(node, *lock, {})});
    }
}

AppliedChanges SettingsEditor::reset(std::string_view path)
{
    std::string full = fullPath(tree_, path);
    const Node* node = tree_.find(full);
    if (node != nullptr && node->kind() == NodeKind::alias) {
        node = &resolveSetting(tree_, *node);
        full = node->fullName();
    }
    if (node != nullptr) {
        requireUnlocked(*node);
    }
    AppliedChanges applied = removeFrom(
        [&](std::string_view name) { return isAtOrUnder(name, full) || isAtOrUnder(name, path); },
        [&](std::string_view name) { return knownSetting(name) != nullptr || name == full || name == path; });
    if (node == nullptr && applied.settings.empty() && applied.unknownLeft == 0) {
        static_cast<void>(nodeAt(tree_, releases_, path));  // throws UnknownPath
    }
    return applied;
}

AppliedChanges SettingsEditor::resetAll()
{
    requireUnlocked(*tree_.root());
    return removeFrom([](std::string_view) { return true; },
                      [this](std::string_view name) { return knownSetting(name) != nullptr; });
}

AppliedChanges SettingsEditor::resetUnknown(std::string_view path)
{
    const std::string full = fullPath(tree_, path);
    return removeFrom(
        [&](std::string_view name) {
            return knownSetting(name) == nullptr &&
                   (path.empty() || isAtOrUnder(name, full) || isAtOrUnder(name, path));
        },
        [](std::string_view) { return true; });
}

}  // namespace vx::core
