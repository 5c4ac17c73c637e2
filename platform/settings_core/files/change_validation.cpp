#include "change_validation.hpp"

#include <settings_core/constraints/constraints.hpp>
#include <settings_core/constraints/rejection.hpp>
#include <settings_core/constraints/validation.hpp>
#include <settings_core/files/text_position.hpp>
#include <settings_core/tree/secret_settings.hpp>
#include <settings_core/values/value_parsing.hpp>

#include <utility>
#include <variant>

namespace vx::core {

namespace {

using foundation::verdixdata::Array;

/// Returns the position of a part of a text that begins at `start`, which may be unknown.
Position positionWithin(const Position& start, const Position& part)
{
    if (start.line == 0) {
        return start;
    }
    return {start.file, start.line + part.line - 1,
            part.line == 1 ? start.column + part.column - 1 : part.column};
}

}  // namespace

Diagnostic lockDiagnostic(const Node& node, const SettingLock& lock, const Position& position)
{
    const bool isGroupLocked = lock.path != node.fullName();
    return {node.getFullName(),
            "cannot be changed: " + (isGroupLocked ? lock.path + " is" : std::string("it is")) +
                " locked by " + lock.file.string() + "; ask the administrator of that file",
            position};
}

void ChangeValidation::report(const std::string& path, std::string message, const Position& position)
{
    diagnostics_.push_back({path, std::move(message), position});
}

void ChangeValidation::add(const SettingChange& change)
{
    const Node* setting = settingOf(change);
    if (setting == nullptr || !isChangeable(*setting, change)) {
        return;
    }
    const bool isRemoval = std::holds_alternative<std::monostate>(change.value);
    std::optional<Array> value = isRemoval ? std::nullopt : valueOf(*setting, change);
    if (isRemoval || value) {
        changes_.push_back({setting->getFullName(), setting, std::move(value)});
    }
}

/// Returns the setting to change; null if there is none, which is reported.
const Node* ChangeValidation::settingOf(const SettingChange& change)
try {
    return &resolveSetting(tree_, nodeAt(tree_, unknownPaths_, change.path));
} catch (const std::runtime_error& error) {
    report("", error.what(), change.position);
    return nullptr;
}

bool ChangeValidation::isChangeable(const Node& setting, const SettingChange& change)
{
    const std::string path = setting.getFullName();
    if (const auto [seen, isNew] = seen_.try_emplace(&setting, &change); !isNew) {
        const SettingChange& first = *seen->second;
        const std::size_t line = first.position.line;
        report(path,
               "is changed twice, first as " + first.path +
                   (line == 0 ? "" : " in line " + std::to_string(line)) + ": leave out one of them",
               change.position);
        return false;
    }
    if (setting.properties().readOnly.value() && !std::holds_alternative<std::monostate>(change.value)) {
        report(path, "is read-only: its value cannot be changed", change.position);
        return false;
    }
    if (const auto lock = layers_.lockAgainst(file_, setting)) {
        diagnostics_.push_back(lockDiagnostic(setting, *lock, change.position));
        return false;
    }
    return true;
}

/// Returns the new value; nothing if it is invalid, which is reported.
std::optional<Array> ChangeValidation::valueOf(const Node& setting, const SettingChange& change)
{
    const auto* text = std::get_if<ValueText>(&change.value);
    std::optional<Array> value =
        text == nullptr ? adaptValue(setting, std::get<Array>(change.value)) : parse(setting, *text);
    const Position& position = text == nullptr ? change.position : text->position;
    const Notation notation = text == nullptr ? Notation::script : text->notation;
    const bool isAccepted = value && isValid(setting, *value, notation, position);
    return isAccepted ? std::move(value) : std::nullopt;
}

std::optional<Array> ChangeValidation::parse(const Node& setting, const ValueText& value)
try {
    const Constraint target = constraintOf(setting.properties());
    return value.notation == Notation::json ? parseJsonValue(value.text, target)
                                            : parseValue(value.text, target);
} catch (const ParseError& error) {
    const Position position = positionAt(value.text, error.offset());
    report(setting.getFullName(),
           describeTextRejection(setting, value.text, {value.notation, value.position.line != 0}, error),
           isSecret(setting.fullName()) ? value.position : positionWithin(value.position, position));
    return std::nullopt;
}

bool ChangeValidation::isValid(const Node& setting, const Array& value, Notation notation,
                               const Position& position)
{
    std::optional<Diagnostic> invalid = checkValue(setting, value, {notation, position.line != 0});
    if (invalid) {
        report(invalid->path, std::move(invalid->message), position);
    }
    return !invalid;
}

}  // namespace vx::core
