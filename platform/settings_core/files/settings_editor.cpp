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
#include <settings_core/values/value_format.hpp>
#include <settings_core/values/value_parsing.hpp>

#include <utility>
#include <vector>

namespace vx::core {

namespace {

using foundation::verdixdata::Array;

constexpr std::size_t valueWidth = 80;  // characters of a rejected value in a message

std::string allowedValues(const Node& setting)
{
    return "; allowed: " + describeConstraint(setting.properties());
}

Array parse(const Node& setting, std::string_view value, Notation notation)
{
    const Constraint target = constraintOf(setting.properties());
    try {
        return notation == Notation::json ? parseJsonValue(value, target) : parseValue(value, target);
    } catch (const ParseError& error) {
        const std::size_t column = positionAt(value, error.offset()).column;
        throw InvalidValue(setting.getFullName() + " cannot be " + std::string(value) + ": column " +
                           std::to_string(column) + ": " + error.what() + allowedValues(setting));
    }
}

void requireValid(const Node& setting, const Array& value)
{
    std::string messages;
    for (const Diagnostic& diagnostic : checkValue(setting, value)) {
        messages += (messages.empty() ? "" : "\n") + diagnostic.message;
    }
    if (!messages.empty()) {
        throw InvalidValue(setting.getFullName() + " cannot be " + formatValueOnOneLine(value, valueWidth) +
                           ": " + messages + allowedValues(setting));
    }
}

std::string nameOf(const std::optional<ReleaseName>& release)
{
    return release ? formatReleaseName(*release) : std::string();
}

}  // namespace

SettingsEditor::SettingsEditor(const SettingsTree& tree, const ::settings::core::ReleaseChangeTable& releases,
                               std::filesystem::path file, std::optional<ReleaseName> release)
    : tree_(tree),
      releases_(releases),
      file_(std::move(file)),
      release_(release)
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
    const SettingsFile file =
        parseSettingsFile(locked.content().value_or(emptySettingsFile(nameOf(release_ ? release_ : newestRelease(releases_)))), file_);
    SettingsFileEdit edit(file);
    edit.set(setting.getFullName(), valueToJson(value));
    locked.replace(edit.text());
}

template <class Predicate>
std::size_t SettingsEditor::removeIf(Predicate isRemoved)
{
    if (!readFile(file_)) {  // a lock would create the folder
        return 0;
    }
    LockedFile locked(file_);
    if (!locked.content()) {  // removed meanwhile by another process
        return 0;
    }
    const SettingsFile file = parseSettingsFile(*locked.content(), file_);
    SettingsFileEdit edit(file);
    std::size_t count = 0;
    for (const JsonMember& setting : file.settings()) {
        count += isRemoved(setting.name) && edit.remove(setting.name) ? 1 : 0;
    }
    if (count != 0) {
        locked.replace(edit.text());
    }
    return count;
}

std::size_t SettingsEditor::reset(std::string_view path)
{
    std::string full = fullPath(tree_, path);
    const Node* node = tree_.find(full);
    if (node != nullptr && node->kind() == NodeKind::alias) {
        full = resolveSetting(tree_, *node).fullName();
    }
    const std::size_t count =
        removeIf([&full](std::string_view setting) { return isAtOrUnder(setting, full); });
    if (count == 0 && node == nullptr) {
        static_cast<void>(nodeAt(tree_, releases_, path));  // throws UnknownPath
    }
    return count;
}

std::size_t SettingsEditor::resetAll()
{
    return removeIf([](std::string_view) { return true; });
}

}  // namespace vx::core
