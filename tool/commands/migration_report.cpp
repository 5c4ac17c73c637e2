#include "migration_report.hpp"

#include <review/tree_json.hpp>
#include <settings_core/files/layers.hpp>
#include <settings_core/tree/secret_settings.hpp>

#include <stdexcept>
#include <string_view>
#include <utility>

#include "cli/command_error.hpp"
#include "render/json_text.hpp"

namespace vx::tool {

namespace {

namespace fs = std::filesystem;
namespace json = boost::json;
using core::MigrationEvent;

void maskSecrets(std::vector<MigrationEvent>& events)
{
    for (MigrationEvent& event : events) {
        if (event.kind == MigrationEvent::Kind::converted && core::isSecret(event.path)) {
            event.before = event.after = core::maskedValue;
        }
    }
}

Table::Row eventRow(const MigrationEvent& event)
{
    using Kind = MigrationEvent::Kind;
    switch (event.kind) {
    case Kind::moved:
        return {event.release, {"moves", Style::good}, event.path, "to " + event.target};
    case Kind::lockMoved:
        return {event.release, {"moves lock", Style::good}, event.path, "to " + event.target};
    case Kind::lockAdded:
        return {event.release, {"adds lock", Style::good}, event.target, "as " + event.path + " is locked"};
    case Kind::converted:
        return {event.release,
                {"converts", Style::good},
                event.path,
                jsonOnOneLine(event.before) + " to " + event.after};
    case Kind::targetKept:
        return {event.release, {"dropped", Style::bad}, event.path, event.target + " is set already"};
    case Kind::removed:
    case Kind::lockRemoved:
        break;
    }
    return {event.release,
            {event.kind == Kind::removed ? "dropped" : "drops lock", Style::bad},
            event.path,
            "removed in " + event.release};
}

std::string_view eventLabel(MigrationEvent::Kind kind)
{
    static constexpr std::string_view labels[] = {"moved",     "targetKept", "removed",    "converted",
                                                  "lockMoved", "lockAdded",  "lockRemoved"};
    return labels[static_cast<std::size_t>(kind)];
}

}  // namespace

core::Migration planMigration(const std::string& text, const fs::path& file, const Session& session,
                              const core::MigrationRange& range)
{
    const core::SettingsFile settings = core::parseSettingsFile(text, file);
    try {
        core::Migration migration =
            core::migrateSettings(settings, session.tree(), session.releaseChanges(), range);
        maskSecrets(migration.events);
        return migration;
    } catch (const core::ParseError& error) {
        const core::Position position = core::positionAt(text, error.offset(), file);
        throw CommandError(ExitCode::failed, core::formatDiagnostic({"", error.what(), position}));
    } catch (const std::runtime_error& error) {
        throw CommandError(ExitCode::failed, file.string() + ": " + error.what());
    }
}

Table eventTable(const std::vector<MigrationEvent>& events)
{
    Table table;
    for (const MigrationEvent& event : events) {
        table.add(eventRow(event));
    }
    return table;
}

json::array eventsJson(const std::vector<MigrationEvent>& events)
{
    json::array list;
    for (const MigrationEvent& event : events) {
        list.push_back(json::object{{"release", event.release},
                                    {"change", eventLabel(event.kind)},
                                    {"path", event.path},
                                    {"target", review::stringOrNull(event.target)},
                                    {"before", review::stringOrNull(event.before)},
                                    {"after", review::stringOrNull(event.after)}});
    }
    return list;
}

}  // namespace vx::tool
