#include <settings_core/constraints/constraints.hpp>
#include <settings_core/constraints/validation.hpp>
#include <settings_core/files/atomic_file.hpp>
#include <settings_core/files/input_file.hpp>
#include <settings_core/files/layers.hpp>
#include <settings_core/files/settings_editor.hpp>
#include <settings_core/files/settings_file.hpp>
#include <settings_core/releases/release_history.hpp>
#include <settings_core/releases/release_name.hpp>
#include <settings_core/tree/path_lookup.hpp>
#include <settings_core/tree/secret_settings.hpp>
#include <settings_core/values/value_format.hpp>
#include <settings_core/values/value_parsing.hpp>

#include <utility>
#include <vector>

namespace vx::core {

namespace {

using foundation::verdixdata::Array;

constexpr std::size_t valueWidth = 80;  // characters of a rejected value in a message

InvalidValue rejection(const Node& setting, const std::string& value, const std::string& reason)
{
    return InvalidValue(setting.getFullName() + " cannot be " +
                        (isSecret(setting.fullName()) ? std::string(maskedValue) : value + ": " + reason) +
                        "; allowed: " + describeConstraint(setting.properties()));
}

Array parse(const Node& setting, std::string_view value, Notation notation)
{
    const Constraint target = constraintOf(setting.properties());
    try {
        return notation == Notation::json ? parseJsonValue(value, target) : parseValue(value, target);
    } catch (const ParseError& error) {
        const std::size_t column = positionAt(value, error.offset()).column;
        throw rejection(setting, std::string(value),
                        "column " + std::to_string(column) + ": " + error.what());
    }
}

void requireValid(const Node& setting, const Array& value)
{
    std::string messages;
    for (const Diagnostic& diagnostic : checkValue(setting, value)) {
        messages += (messages.empty() ? "" : "; ") + diagnostic.message;
    }
    if (!messages.empty()) {
        throw rejection(setting, formatValueOnOneLine(value, valueWidth), messages);
    }
}

std::string nameOf(const std::optional<ReleaseName>& release)
{
    return release ? formatReleaseName(*release) : std::string();
}

}  // namespace

SettingsEditor::SettingsEditor(const SettingsTree& tree, const ::settings::core::ReleaseChangeTable& releases,
                               std::filesystem::path file, std::optional<ReleaseName> release,
                               std::optional<ChangeRecorder> recorder)
    : tree_(tree),
      releases_(releases),
      file_(std::move(file)),
      release_(release),
      recorder_(std::move(recorder))
{}

const Node& SettingsEditor::editableSetting(std::string_view path) const
{
    const Node& setting = resolveSetting(tree_, nodeAt(tree_, releases_, path));
    if (setting.properties().readOnly.value()) {
        throw std::runtime_error(setting.getFullName() + " is read-only: its value cannot be changed");
    }
    return setting;
}

const Node& SettingsEditor::set(std::string_view path, Array value)
{
    const Node& setting = editableSetting(path);
    store(setting, adaptValue(setting, std::move(value)));
    return setting;
}

const Node& SettingsEditor::set(std::string_view path, std::string_view value, Notation notation)
{
    const Node& setting = editableSetting(path);
    store(setting, parse(setting, value, notation));
    return setting;
}

void SettingsEditor::store(const Node& setting, const Array& value)
{
    requireValid(setting, value);
    LockedFile locked(file_);
    const SettingsFile file = parseSettingsFile(
        locked.content().value_or(emptySettingsFile(nameOf(release_ ? release_ : newestRelease(releases_)))),
        file_);
    SettingsFileEdit edit(file);
    edit.set(setting.getFullName(), valueToJson(value, constraintOf(setting.properties())));
    replace(locked, edit.text());
}

void SettingsEditor::replace(LockedFile& file, const std::string& content) const
{
    if (recorder_) {
        recorder_->replace(file, content);
    } else {
        file.replace(content);
    }
}

/// Removes those of the concerned settings that `isRemoved` selects.
template <class Concerned, class Removed>
ResetCount SettingsEditor::removeFrom(Concerned isConcerned, Removed isRemoved)
{
    ResetCount count;
    if (!readFile(file_)) {  // a lock would create the folder
        return count;
    }
    LockedFile locked(file_);
    if (!locked.content()) {  // removed meanwhile by another process
        return count;
    }
    const SettingsFile file = parseSettingsFile(*locked.content(), file_);
    SettingsFileEdit edit(file);
    for (const JsonMember& setting : file.settings()) {
        if (file.find(setting.name) != &setting || !isConcerned(setting.name)) {
            continue;  // duplicates are removed together
        }
        if (isRemoved(setting.name)) {
            edit.remove(setting.name);
            ++count.removed;
        } else {
            ++count.unknownLeft;
        }
    }
    if (count.removed != 0) {
        replace(locked, edit.text());
    }
    return count;
}

bool SettingsEditor::isKnown(std::string_view path) const
{
    const Node* node = tree_.find(path);
    return node != nullptr && node->kind() == NodeKind::setting;
}

ResetCount SettingsEditor::reset(std::string_view path)
{
    std::string full = fullPath(tree_, path);
    const Node* node = tree_.find(full);
    if (node != nullptr && node->kind() == NodeKind::alias) {
        full = resolveSetting(tree_, *node).fullName();
    }
    const ResetCount count =
        removeFrom([&](std::string_view name) { return isAtOrUnder(name, full) || isAtOrUnder(name, path); },
                   [&](std::string_view name) { return isKnown(name) || name == full || name == path; });
    if (count == ResetCount() && node == nullptr) {
        static_cast<void>(nodeAt(tree_, releases_, path));  // throws UnknownPath
    }
    return count;
}

ResetCount SettingsEditor::resetAll()
{
    return removeFrom([](std::string_view) { return true; },
                      [this](std::string_view name) { return isKnown(name); });
}

ResetCount SettingsEditor::resetUnknown(std::string_view path)
{
    const std::string full = fullPath(tree_, path);
    return removeFrom(
        [&](std::string_view name) {
            return !isKnown(name) && (path.empty() || isAtOrUnder(name, full) || isAtOrUnder(name, path));
        },
        [](std::string_view) { return true; });
}

}  // namespace vx::core
