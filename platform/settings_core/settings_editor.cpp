#include <settings_core/atomic_file.hpp>
#include <settings_core/layers.hpp>
#include <settings_core/path_lookup.hpp>
#include <settings_core/release_history.hpp>
#include <settings_core/release_name.hpp>
#include <settings_core/settings_editor.hpp>
#include <settings_core/settings_file.hpp>
#include <settings_core/validation.hpp>
#include <settings_core/value_format.hpp>
#include <settings_core/value_parsing.hpp>

#include <utility>
#include <vector>

namespace vx::core {

namespace {

using foundation::verdixdata::Array;

constexpr std::size_t valueWidth = 80;

std::string accepted(const Node& setting)
{
    return "; accepted: " + describeConstraint(setting.properties());
}

Array read(const Node& setting, std::string_view value, Notation notation)
{
    const ParseTarget form = parseTargetOf(setting);
    try {
        return notation == Notation::json ? parseJsonValue(value, form) : parseValue(value, form);
    } catch (const ParseError& error) {
        const std::size_t column = positionAt(value, error.offset()).column;
        throw InvalidValue(setting.getFullName() + " cannot be " + std::string(value) + ": column " +
                           std::to_string(column) + ": " + error.what() + accepted(setting));
    }
}

void requireAccepted(const Node& setting, const Array& value)
{
    const Verdict verdict = checkValue(setting, value);
    if (!verdict.accepted()) {
        throw InvalidValue(setting.getFullName() + " cannot be " + formatValueOnOneLine(value, valueWidth) +
                           ": " + verdict.message + accepted(setting));
    }
}

std::string newestName(const ::settings::core::ReleaseChangeTable& releases)
{
    const auto newest = newestRelease(releases);
    return newest ? formatReleaseName(*newest) : std::string();
}

}  // namespace

SettingsEditor::SettingsEditor(const SettingsTree& tree, const ::settings::core::ReleaseChangeTable& releases,
                               std::filesystem::path file)
    : tree_(tree), releases_(releases), file_(std::move(file))
{}

const Node& SettingsEditor::changeable(std::string_view path) const
{
    const Node& setting = resolveSetting(tree_, nodeAt(tree_, releases_, path));
    if (setting.properties().readOnly.value()) {
        throw std::runtime_error(setting.getFullName() + " is read-only: its value cannot be changed");
    }
    return setting;
}

const Node& SettingsEditor::set(std::string_view path, Array value)
{
    const Node& setting = changeable(path);
    store(setting, adaptValue(setting, std::move(value)));
    return setting;
}

const Node& SettingsEditor::set(std::string_view path, std::string_view value, Notation notation)
{
    const Node& setting = changeable(path);
    store(setting, read(setting, value, notation));
    return setting;
}

void SettingsEditor::store(const Node& setting, const Array& value)
{
    requireAccepted(setting, value);
    LockedFile locked(file_);
    const SettingsFile file =
        parseSettingsFile(locked.content().value_or(emptySettingsFile(newestName(releases_))), file_);
    SettingsFileEdit edit(file);
    edit.set(setting.getFullName(), valueToJson(value));
    locked.replace(edit.text());
}

template <class Belongs>
std::size_t SettingsEditor::removeWhere(Belongs belongs)
{
    if (!readFile(file_)) {
        return 0;
    }
    LockedFile locked(file_);
    if (!locked.content()) {
        return 0;
    }
    const SettingsFile file = parseSettingsFile(*locked.content(), file_);
    SettingsFileEdit edit(file);
    std::size_t count = 0;
    for (const JsonMember& setting : file.settings()) {
        count += belongs(setting.name) && edit.remove(setting.name) ? 1 : 0;
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
        removeWhere([&full](std::string_view setting) { return isAtOrUnder(setting, full); });
    if (count == 0 && node == nullptr) {
        static_cast<void>(nodeAt(tree_, releases_, path));  // says what is wrong with the path
    }
    return count;
}

std::size_t SettingsEditor::resetAll()
{
    return removeWhere([](std::string_view) { return true; });
}

}  // namespace vx::core
