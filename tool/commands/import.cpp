#include <settings_core/files/file_check.hpp>
#include <settings_core/files/input_file.hpp>

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "cli/arguments.hpp"
#include "cli/command.hpp"
#include "migration_report.hpp"
#include "render/json_text.hpp"
#include "settings_changes.hpp"

namespace vx::tool {

namespace {

using core::MigrationEvent;
using core::SettingsFile;

struct ImportOptions
{
    std::string file;
    ChangeOptions change;
};

/// The settings of the imported file, in the published release.
struct ImportedSettings
{
    std::vector<core::SettingChange> changes;
    std::vector<MigrationEvent> events;
    std::optional<core::ReleaseName> from;  ///< release of the file, if it names one
};

/// Returns the paths that moved settings had in the file, by the paths that they have now.
std::map<std::string, std::string, std::less<>> pathsInFile(const std::vector<MigrationEvent>& events)
{
    std::map<std::string, std::string, std::less<>> paths;
    for (const MigrationEvent& event : events) {
        if (event.kind == MigrationEvent::Kind::moved) {
            const auto earlier = paths.find(event.path);
            paths.insert_or_assign(event.target, earlier == paths.end() ? event.path : earlier->second);
        }
    }
    return paths;
}

/// Returns the changes that set what the migrated file sets, with the positions in the file as it was.
std::vector<core::SettingChange> changesTo(const SettingsFile& migrated, const SettingsFile& file,
                                           const std::vector<MigrationEvent>& events, const std::string& name)
{
    const auto paths = pathsInFile(events);
    std::vector<core::SettingChange> changes;
    for (const core::JsonMember& setting : migrated.settings()) {
        const auto moved = paths.find(setting.name);
        const core::JsonMember& original = *file.find(moved == paths.end() ? setting.name : moved->second);
        changes.push_back({setting.name,
                           core::ValueText{std::string(setting.value.text), core::Notation::json,
                                           file.positions().at(original.value.offset, name)},
                           file.positions().at(original.offset, name)});
    }
    return changes;
}

ImportedSettings readSettings(const std::string& operand, const Session& session)
{
    const std::string name = core::inputName(operand);
    const SettingsFile file = core::parseSettingsFile(core::readInput(operand), name);
    if (file.settings().empty()) {  // they may be in the wrong place
        auto diagnostics =
            core::checkSettingsFile(name, file.text(), session.tree(), session.releaseChanges());
        if (!diagnostics.empty()) {
            throw core::InvalidChanges(std::move(diagnostics));
        }
    }
    const auto published = session.publishedRelease();
    if (!published) {  // without releases, nothing can be out of date
        return {changesTo(file, file, {}, name), {}, {}};
    }
    core::Migration migration = planMigration(file.text(), name, session, {.published = published});
    std::erase_if(migration.events, [](const MigrationEvent& event) {
        using Kind = MigrationEvent::Kind;
        return event.kind == Kind::lockMoved || event.kind == Kind::lockAdded ||
               event.kind == Kind::lockRemoved;
    });
    auto changes = changesTo(SettingsFile(migration.text), file, migration.events, name);
    return {std::move(changes), std::move(migration.events), migration.from};
}

void writeText(const ImportedSettings& imported, const core::AppliedChanges& applied,
               const ChangedFile& changed, Output& out)
{
    if (!imported.events.empty()) {
        out << "migrated from " << (imported.from ? formatReleaseName(*imported.from) : "before all releases")
            << ":\n";
        eventTable(imported.events).write(out, "  ");
    }
    writeChanges(applied, changed, summarize(applied, changed, "imported into"), out);
}

void writeDocument(const ImportedSettings& imported, const core::AppliedChanges& applied,
                   const ChangedFile& changed, Output& out)
{
    auto document = changesJson(applied, changed);
    document.emplace("unchanged", countUnchanged(applied));
    document.emplace("events", eventsJson(imported.events));
    writeJson(document, out);
}

ExitCode importFile(LazySession& lazy, const ImportOptions& options, Output& out)
{
    const ImportedSettings imported = readSettings(options.file, lazy.get());
    ChangedFile changed(lazy, options.change, "import " + options.file);
    const core::AppliedChanges applied = changed.editor.apply(imported.changes);
    (out.isJson() ? writeDocument : writeText)(imported, applied, changed, out);
    giveHints(applied, changed);
    return ExitCode::done;
}

}  // namespace

Action addImport(CLI::App& command)
{
    setHelp(command, "Set all values of a settings file in your personal settings file, or none",
            "A file of an older release is migrated in memory first. If anything is wrong, errors are "
            "reported with line and column, the first 20 of each kind, and nothing is written.\n"
            "Example:\n  vxsettings export --modified -o settings.json    # on one machine\n"
            "  vxsettings import settings.json                  # on another");
    auto options = std::make_shared<ImportOptions>();
    addPositional(command, "FILE", options->file, Need::required, "Settings file; - is standard input");
    addChangeOptions(command, options->change);
    return [options](LazySession& session, Output& out) { return importFile(session, *options, out); };
}

}  // namespace vx::tool
