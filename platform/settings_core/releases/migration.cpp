#include <settings_core/files/file_check.hpp>
#include <settings_core/files/locked_paths.hpp>
#include <settings_core/files/value_conversion.hpp>
#include <settings_core/releases/migration.hpp>
#include <settings_core/releases/release_history.hpp>

#include <algorithm>
#include <set>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace vx::core {

namespace {

using ::settings::core::ReleaseChangeSet;
using ::settings::core::ReleaseChangeTable;
using ::settings::core::SettingsFileChange;

std::optional<ReleaseName> releaseIn(const SettingsFile& file)
{
    const JsonValue* release = file.release();
    if (release == nullptr) {
        return std::nullopt;
    }
    const auto name = parseRelease(*release);
    if (!name) {
        throw ParseError(release->offset, std::string(invalidReleaseMessage));
    }
    return name;
}

void requireUniqueSettings(const SettingsFile& file)
{
    std::set<std::string_view> paths;
    for (const JsonMember& setting : file.settings()) {
        if (!paths.insert(setting.name).second) {
            throw ParseError(setting.offset, setting.name + " is a duplicate: keep one of them");
        }
    }
}

void requireOrder(const Migration& migration, const ReleaseName& newest)
{
    if (migration.from && newest < *migration.from) {
        throw std::runtime_error("the file is of release " + formatReleaseName(*migration.from) +
                                 ", newer than the newest known release, " + formatReleaseName(newest) +
                                 ": migrate it with that release");
    }
    if (newest < migration.to) {
        throw std::runtime_error("release " + formatReleaseName(migration.to) +
                                 " is unknown: the newest known release is " + formatReleaseName(newest));
    }
    if (migration.from && migration.to < *migration.from) {
        throw std::runtime_error("the file is of release " + formatReleaseName(*migration.from) +
                                 ", and a file cannot be migrated back to " +
                                 formatReleaseName(migration.to));
    }
}

/// Applies releases to the settings of a file.
class SettingsMigrator
{
public:
    SettingsMigrator(SettingsFileEdit& edit, std::vector<MigrationEvent>& events)
        : edit_(edit), events_(events)
    {}

    void move(const std::string& release, const std::string& source, const std::string& target)
    {
        if (!edit_.has(source)) {
            return;
        }
        const bool targetIsSet = edit_.has(target);
        if (targetIsSet) {
            edit_.remove(source);
        } else {
            edit_.rename(source, target);
        }
        events_.push_back({targetIsSet ? MigrationEvent::Kind::targetKept : MigrationEvent::Kind::moved,
                           release, source, target});
    }

    void remove(const std::string& release, const std::string& removed)
    {
        for (const std::string& path : edit_.pathsAtOrUnder(removed)) {
            edit_.remove(path);
            events_.push_back({MigrationEvent::Kind::removed, release, path, ""});
        }
    }

private:
    SettingsFileEdit& edit_;
    std::vector<MigrationEvent>& events_;
};

/// Applies releases to the paths that a file locks.
class LockMigrator
{
public:
    LockMigrator(LockedPaths& locked, std::vector<MigrationEvent>& events) : locked_(locked), events_(events)
    {}

    void move(const std::string& release, const std::string& source, const std::string& target)
    {
        if (!locked_.covers(source)) {
            return;
        }
        const bool isEntry = locked_.has(source);
        if (!isEntry && locked_.covers(target)) {
            return;
        }
        if (isEntry && locked_.has(target)) {
            locked_.remove(source);
        } else if (isEntry) {
            locked_.rename(source, target);
        } else {
            locked_.add(target);
        }
        events_.push_back({isEntry ? MigrationEvent::Kind::lockMoved : MigrationEvent::Kind::lockAdded,
                           release, source, target});
    }

    void remove(const std::string& release, const std::string& removed)
    {
        for (const std::string& path : locked_.pathsAtOrUnder(removed)) {
            locked_.remove(path);
            events_.push_back({MigrationEvent::Kind::lockRemoved, release, path, ""});
        }
    }

private:
    LockedPaths& locked_;
    std::vector<MigrationEvent>& events_;
};

void apply(const ReleaseChangeSet& set, auto&... migrators)
{
    for (const SettingsFileChange& change : set.changes) {
        if (change.to().empty()) {
            (migrators.remove(set.release, change.from().front()), ...);
        } else if (change.from() != change.to()) {
            (migrators.move(set.release, change.from().front(), change.to().front()), ...);
        }
    }
}

bool isOfLock(const MigrationEvent& event)
{
    return event.kind >= MigrationEvent::Kind::lockMoved;
}

/// Returns the converted value of a setting that rejects the stored one; nothing if there is none, or no such
/// setting.
std::optional<std::string> convert(const JsonMember& stored, const SettingsTree& tree)
{
    const Node* node = tree.find(stored.name);
    const bool isSetting = node != nullptr && node->kind() == NodeKind::setting;
    return isSetting ? convertStoredValue(*node, stored.value) : std::nullopt;
}

/// Converts the values that their settings reject.
void convertValues(Migration& migration, const SettingsTree& tree)
{
    const SettingsFile moved(migration.text);
    SettingsFileEdit edit(moved);
    for (const JsonMember& setting : moved.settings()) {
        if (auto converted = convert(setting, tree)) {
            migration.events.push_back({MigrationEvent::Kind::converted, formatReleaseName(migration.to),
                                        setting.name, "", std::string(setting.value.text), *converted});
            edit.set(setting.name, *std::move(converted));
        }
    }
    migration.text = edit.text();
}

/// Returns the number of settings without an event.
std::size_t countUntouched(const Migration& migration, std::size_t settings)
{
    std::set<std::string_view> arrived;
    std::size_t touched = 0;
    for (const MigrationEvent& event : migration.events) {
        if (isOfLock(event)) {
            continue;
        }
        // A setting that was moved before is counted once.
        touched += arrived.erase(event.path) == 0 ? 1 : 0;
        if (event.kind == MigrationEvent::Kind::moved) {
            arrived.insert(event.target);
        }
    }
    return settings - touched;
}

}  // namespace

Migration migrateSettings(const SettingsFile& file, const SettingsTree& tree, const ReleaseChangeTable& table,
                          const MigrationRange& range)
{
    const auto newest = std::max(newestRelease(table), range.published);
    if (!newest) {
        throw std::runtime_error("the table of release changes is empty: there is nothing to migrate by");
    }
    Migration migration{.from = range.from ? range.from : releaseIn(file),
                        .to = range.to.value_or(range.published.value_or(*newest))};
    requireOrder(migration, *newest);
    requireUniqueSettings(file);
    SettingsFileEdit edit(file);
    LockedPaths locked(file);
    SettingsMigrator settings(edit, migration.events);
    LockMigrator locks(locked, migration.events);
    for (const auto& [index, set] : table) {
        const ReleaseName release = releaseOf(set);
        if (release <= migration.to && (!migration.from || *migration.from < release)) {
            apply(set, settings, locks);
        }
    }
    if (std::ranges::any_of(migration.events, isOfLock)) {
        edit.setLocked(locked);
    }
    if (releaseIn(file) != migration.to) {
        edit.setRelease(formatReleaseName(migration.to));
    }
    migration.text = edit.text();
    if (migration.to == *newest) {  // the tree describes no other release
        convertValues(migration, tree);
    }
    migration.untouched = countUntouched(migration, file.settings().size());
    return migration;
}

std::vector<Diagnostic> checkMigratedValues(const Migration& migration, const std::filesystem::path& file,
                                            const SettingsTree& tree, const ReleaseChangeTable& table)
{
    const SettingsFile migrated(migration.text);
    std::set<std::string_view> known;
    for (const JsonMember& setting : migrated.settings()) {
        if (tree.find(setting.name) != nullptr) {
            known.insert(setting.name);
        }
    }
    std::vector<Diagnostic> diagnostics = checkSettings(file, migrated, known, tree, table);
    for (Diagnostic& diagnostic : diagnostics) {
        if (const auto converted = convert(*migrated.find(diagnostic.path), tree)) {
            diagnostic.message += "; a migration to the newest release converts it to " + *converted;
        }
    }
    return diagnostics;
}

}  // namespace vx::core
