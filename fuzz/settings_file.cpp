// Any bytes as a settings file: refused with a position, or checked, migrated and changed without loss.

#include <migration/release_changes.hpp>
#include <settings_core/files/file_check.hpp>
#include <settings_core/files/stored_value.hpp>
#include <settings_core/releases/migration.hpp>
#include <settings_core/values/value_parsing.hpp>

#include <foundation/verdixdata/text.hpp>

#include <algorithm>
#include <fuzz/fuzzing.hpp>
#include <map>
#include <optional>
#include <set>
#include <stdexcept>
#include <tests/support/sample_settings.hpp>

namespace {

using fuzz::require;
using namespace vx::core;

const settings::core::ReleaseChangeTable& releases()
{
    static const auto table = [] {
        settings::core::ReleaseChangeTable filled;
        settings::verdix::fillReleaseChanges(filled);
        return filled;
    }();
    return table;
}

std::optional<SettingsFile> read(const std::string& text)
{
    try {
        return SettingsFile(text);
    } catch (const ParseError& error) {
        require(error.offset() <= text.size(), "an error is in the text");
        return std::nullopt;
    }
}

void check(const std::string& text, const SettingsTree& tree, bool isRead)
{
    const auto faults = checkSettingsFile("settings.json", text, tree, releases());
    require(isRead || faults.size() == 1, "what cannot be read has one fault");
    const Position end = positionAt(text, text.size());
    for (const Diagnostic& fault : faults) {
        const auto& [file, line, column] = fault.position;
        require(line >= 1 && column >= 1 && line <= end.line && !fault.message.empty(),
                "a fault says where and what", fault.message);
    }
}

std::optional<Migration> migrate(const SettingsFile& file, const SettingsTree& tree)
{
    try {
        return migrateSettings(file, tree, releases());
    } catch (const ParseError& error) {
        require(error.offset() <= file.text().size(), "an error is in the text");
    } catch (const std::runtime_error& error) {
        require(*error.what() != '\0', "a refusal says why");
    }
    return std::nullopt;
}

using Values = std::map<std::string, std::string_view>;

/// Each setting with its value as it is written.
Values valuesIn(const SettingsFile& file)
{
    Values values;
    for (const JsonMember& setting : file.settings()) {
        values[setting.name] = setting.value.text;
    }
    return values;
}

std::set<std::string> locksIn(const SettingsFile& file)
{
    std::set<std::string> locks;
    for (const JsonValue& path : file.locked()) {
        locks.insert(foundation::verdixdata::toUtf8(decodedString(path)));
    }
    return locks;
}

bool isOfLock(const MigrationEvent& event)
{
    return event.kind >= MigrationEvent::Kind::lockMoved;
}

void checkLocks(const SettingsFile& file, const Migration& migration)
{
    std::set<std::string> locks = locksIn(file);
    for (const MigrationEvent& event : migration.events) {
        if (isOfLock(event)) {
            const bool isAdded = event.kind == MigrationEvent::Kind::lockAdded;
            require(isAdded || locks.erase(event.path) == 1, "a lock that is reported is there", event.path);
            if (event.kind != MigrationEvent::Kind::lockRemoved) {
                locks.insert(event.target);
            }
        }
    }
    require(locksIn(SettingsFile(migration.text)) == locks, "locks change as reported", migration.text);
}

void checkMigration(const SettingsFile& file, const Migration& migration, const SettingsTree& tree)
{
    const SettingsFile after(migration.text);
    const Migration again = migrateSettings(after, tree, releases());
    require(again.text == migration.text && again.events.empty(), "migrating twice is migrating once",
            migration.text);
    Values values = valuesIn(file);
    for (const MigrationEvent& event : migration.events) {
        if (isOfLock(event)) {
            continue;
        }
        auto setting = values.extract(event.path);
        require(!setting.empty(), "a setting that is reported is there", event.path);
        if (event.kind == MigrationEvent::Kind::moved) {
            setting.key() = event.target;
            require(values.insert(std::move(setting)).inserted, "a move replaces nothing", event.target);
        } else if (event.kind == MigrationEvent::Kind::converted) {
            require(setting.mapped() == event.before, "a conversion reports the old value", event.before);
            values[event.path] = event.after;
        }
    }
    checkLocks(file, migration);
    require(valuesIn(after) == values, "migrating does what it reports, and nothing else", migration.text);
    static_cast<void>(checkMigratedValues(migration, "settings.json", tree, releases()));
}

/// Writes each value that counts anew; the file then holds the same values, and all else as before.
void rewriteValues(const SettingsFile& file, const SettingsTree& tree)
{
    SettingsFileEdit edit(file);
    const auto storedIn = [&](const JsonMember* member) {
        const Node* node = member == nullptr ? nullptr : tree.find(member->name);
        return node == nullptr || node->kind() != NodeKind::setting
                   ? StoredValue{}
                   : readStoredValue(*node, *member, "settings.json", file.positions());
    };
    for (const JsonMember& setting : file.settings()) {
        const StoredValue stored = storedIn(file.find(setting.name));
        if (stored.value.isAssigned()) {
            edit.set(setting.name, valueToJson(stored.value));
        }
    }
    const SettingsFile after(edit.text());
    require(after.settings().size() == file.settings().size(), "writing keeps the number of settings");
    for (const JsonMember& setting : file.settings()) {
        const StoredValue before = storedIn(file.find(setting.name));
        require(storedIn(after.find(setting.name)).value == before.value, "a value is read as it was written",
                setting.name);
    }
}

void addAndRemove(const SettingsFile& file)
{
    constexpr const char* path = "verdix.Added";
    SettingsFileEdit edit(file);
    if (edit.has(path)) {
        return;
    }
    edit.set(path, "[1, 2]");
    const SettingsFile changed(edit.text());
    require(changed.find(path) != nullptr && changed.find(path)->value.text == "[1, 2]",
            "what is set is there", edit.text());
    SettingsFileEdit back(changed);
    require(back.remove(path), "what is there can be removed");
    const auto& members = file.root().members;
    const bool hasSettings =
        std::ranges::any_of(members, [](const auto& member) { return member.name == "settings"; });
    require(!hasSettings || back.text() == file.text(), "removing what was added gives the same bytes",
            back.text());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const SettingsTree tree = tests::sampleTree();
    const std::string text(reinterpret_cast<const char*>(data), size);
    const auto file = read(text);
    check(text, tree, file.has_value());
    if (!file) {
        return 0;
    }
    if (const auto migration = migrate(*file, tree)) {
        checkMigration(*file, *migration, tree);
    }
    rewriteValues(*file, tree);
    addAndRemove(*file);
    return 0;
}
