#include <settings_core/atomic_file.hpp>
#include <settings_core/file_check.hpp>
#include <settings_core/layers.hpp>
#include <settings_core/migration.hpp>

#include <boost/json/array.hpp>

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "arguments.hpp"
#include "faults.hpp"
#include "json_text.hpp"
#include "node_json.hpp"
#include "table.hpp"
#include "verb.hpp"

namespace vx::tool {

namespace {

namespace fs = std::filesystem;
namespace json = boost::json;
using core::Migration;
using core::MigrationEvent;

struct MigrateOptions
{
    std::string file;
    std::string from;
    std::string to;
    bool writes = false;
};

std::optional<core::ReleaseName> releaseOption(const char* option, const std::string& text)
{
    const auto release = core::parseReleaseName(text);
    if (!text.empty() && !release) {
        throw Failure(ExitCode::usage,
                      std::string(option) + " needs a release such as R2022b, not \"" + text + "\"");
    }
    return release;
}

Table::Row eventRow(const MigrationEvent& event)
{
    switch (event.kind) {
    case MigrationEvent::Kind::moved:
        return {event.release, {"moves", Style::good}, event.path, "to " + event.target};
    case MigrationEvent::Kind::targetKept:
        return {event.release, {"dropped", Style::bad}, event.path, event.target + " is set already"};
    case MigrationEvent::Kind::removed:
        break;
    }
    return {event.release, {"dropped", Style::bad}, event.path, "removed in " + event.release};
}

Migration planMigration(const std::string& text, const fs::path& file, const Session& session,
                        const core::MigrationRange& range)
{
    const core::SettingsFile settings = core::parseSettingsFile(text, file);
    try {
        return core::migrateSettings(settings, session.releaseChanges(), range);
    } catch (const core::ParseError& error) {
        throw Failure(ExitCode::failed, core::located(file, text, error.offset(), error.what()));
    } catch (const std::runtime_error& error) {
        throw Failure(ExitCode::failed, file.string() + ": " + error.what());
    }
}

/// Keeps the old content beside the file, under a name that is free.
std::string keepBackup(const core::LockedFile& file, const Migration& migration)
{
    const std::string stem = file.path().filename().string() + "." +
                             (migration.from ? formatReleaseName(*migration.from) : "older");
    std::string name = stem + ".bak";
    for (int count = 2; !file.keepCopy(name); ++count) {
        name = stem + "." + std::to_string(count) + ".bak";
    }
    return name;
}

/// What there is to tell in the end.
struct Outcome
{
    const fs::path file;
    const Migration migration;
    const std::vector<core::FileFault> faults;  ///< of the values that moved
    bool isChange;                              ///< whether the file is another one afterwards
    bool isWritten;
    std::string backup;  ///< name of the old file, where it was kept
};

void writeReport(const Outcome& outcome, Output& out)
{
    const Migration& migration = outcome.migration;
    out << outcome.file.string() << ": from "
        << (migration.from ? formatReleaseName(*migration.from) : "before all releases") << " to "
        << formatReleaseName(migration.to) << ", " << migration.untouched
        << (migration.untouched == 1 ? " setting stays as it is\n" : " settings stay as they are\n");
    Table table;
    for (const MigrationEvent& event : migration.events) {
        table.add(eventRow(event));
    }
    table.write(out, "  ");
}

void writeText(const Outcome& outcome, Output& out)
{
    writeReport(outcome, out);
    if (!outcome.faults.empty()) {
        out << out.painted(Style::bad, "values that their new settings do not take, kept without effect:")
            << '\n';
        writeFaults(outcome.file, outcome.faults, out);
    }
    if (!outcome.isChange) {
        out << "nothing to do: the file is as it should be\n";
    } else if (outcome.isWritten) {
        out << "written; the old file is kept as " << outcome.backup << '\n';
    } else {
        out << "nothing is written; do so with --write\n";
    }
}

std::string_view eventWord(MigrationEvent::Kind kind)
{
    switch (kind) {
    case MigrationEvent::Kind::moved:
        return "moved";
    case MigrationEvent::Kind::targetKept:
        return "targetKept";
    case MigrationEvent::Kind::removed:
        break;
    }
    return "removed";
}

void writeDocument(const Outcome& outcome, Output& out)
{
    const Migration& migration = outcome.migration;
    json::array events;
    for (const MigrationEvent& event : migration.events) {
        events.push_back(json::object{{"release", event.release},
                                      {"change", eventWord(event.kind)},
                                      {"path", event.path},
                                      {"target", textOrNull(event.target)}});
    }
    writeJson(
        {{"file", outcome.file.string()},
         {"from", migration.from ? json::value(formatReleaseName(*migration.from)) : json::value(nullptr)},
         {"to", formatReleaseName(migration.to)},
         {"untouched", migration.untouched},
         {"events", std::move(events)},
         {"faults", faultsJson(outcome.faults)},
         {"isChange", outcome.isChange},
         {"isWritten", outcome.isWritten},
         {"backup", textOrNull(outcome.backup)}},
        out);
}

Outcome carryForward(LazySession& lazy, const MigrateOptions& options, const core::MigrationRange& range)
{
    const auto content = core::readFile(options.file);
    if (!content) {
        throw Failure(ExitCode::failed, options.file + ": no such file");
    }
    const Session& session = lazy.get();
    std::optional<core::LockedFile> locked;
    if (options.writes) {
        locked.emplace(options.file);
    }
    const std::string text = locked ? locked->content().value_or(*content) : *content;
    Migration migration = planMigration(text, options.file, session, range);
    auto faults = core::checkMovedValues(migration, session.tree(), session.releaseChanges());
    const bool isChange = migration.text != text;
    std::string backup;
    if (locked && isChange) {
        backup = keepBackup(*locked, migration);
        locked->replace(migration.text);
    }
    return {options.file, std::move(migration), std::move(faults), isChange, locked && isChange, backup};
}

ExitCode migrate(LazySession& lazy, const MigrateOptions& options, Output& out)
{
    const core::MigrationRange range{releaseOption("--from", options.from),
                                     releaseOption("--to", options.to)};
    const Outcome outcome = carryForward(lazy, options, range);
    (out.isJson() ? writeDocument : writeText)(outcome, out);
    return outcome.faults.empty() ? ExitCode::done : ExitCode::failed;
}

}  // namespace

Action addMigrate(CLI::App& verb)
{
    describe(verb, "Carry a settings file of an older release forward; without --write, only show how",
             "Ends with 1 when a value that moved does not fit its new setting.\n"
             "Example:\n  vxsettings migrate settings.json --write");
    auto options = std::make_shared<MigrateOptions>();
    addOperand(verb, "FILE", options->file, Need::required, "Settings file");
    addOption(verb, "--from", options->from, "RELEASE",
              "Release to take the file for, in place of the one that it names");
    addOption(verb, "--to", options->to, "RELEASE", "Release to go to; the newest when left out");
    addFlag(verb, "--write", options->writes,
            "Write the file, and keep the old one beside it, FILE.RELEASE.bak");
    return [options](LazySession& session, Output& out) { return migrate(session, *options, out); };
}

}  // namespace vx::tool
