#include <review/tree_json.hpp>
#include <settings_core/files/atomic_file.hpp>
#include <settings_core/files/base_folders.hpp>
#include <settings_core/files/change_records.hpp>
#include <settings_core/files/file_check.hpp>
#include <settings_core/files/input_file.hpp>
#include <settings_core/files/layers.hpp>
#include <settings_core/releases/migration.hpp>

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "cli/arguments.hpp"
#include "cli/command.hpp"
#include "cli/diagnostics.hpp"
#include "migration_report.hpp"
#include "render/json_text.hpp"

namespace vx::tool {

namespace {

namespace fs = std::filesystem;
namespace json = boost::json;
using core::Migration;

struct MigrateOptions
{
    std::string file;
    std::string from;
    std::string to;
    bool writes = false;
};

std::optional<core::ReleaseName> parseReleaseOption(const char* option, const std::string& value)
{
    const auto release = core::parseReleaseName(value);
    if (!value.empty() && !release) {
        throw CommandError(ExitCode::usage,
                           std::string(option) + " needs a release such as R2022b, not \"" + value + "\"");
    }
    return release;
}

/// Saves the old content beside the file, under an unused name, which is returned.
std::string saveBackup(const core::LockedFile& file, const Migration& migration)
{
    const std::string stem = file.path().filename().string() + "." +
                             (migration.from ? formatReleaseName(*migration.from) : "older");
    std::string name = stem + ".bak";
    for (int count = 2; !file.keepCopy(name); ++count) {
        name = stem + "." + std::to_string(count) + ".bak";
    }
    return name;
}

/// What is reported at the end.
struct Outcome
{
    const fs::path file;
    const Migration migration;
    const std::vector<core::Diagnostic> diagnostics;  ///< about values that are ignored
    bool isChange;                                    ///< whether the migration changes the file
    bool isWritten;
    std::string backup;  ///< file name of the backup; empty if there is none
    bool isFromInput;    ///< whether the file is standard input
};

void writeReport(const Outcome& outcome, Output& out)
{
    const Migration& migration = outcome.migration;
    out << outcome.file.string() << ": from "
        << (migration.from ? formatReleaseName(*migration.from) : "before all releases") << " to "
        << formatReleaseName(migration.to) << ", " << migration.untouched
        << (migration.untouched == 1 ? " setting unchanged" : " settings unchanged") << '\n';
    eventTable(migration.events).write(out, "  ");
}

void writeText(const Outcome& outcome, Output& out)
{
    writeReport(outcome, out);
    if (!outcome.diagnostics.empty()) {
        out << out.styled(Style::bad, "invalid values (kept, ignored):") << '\n';
        writeDiagnostics(outcome.diagnostics, out);
        if (!outcome.isFromInput) {
            const std::string file = " --personal " + outcome.file.string();
            out << "to replace one:  vxsettings set PATH VALUE" << file << '\n';
            out << "to remove one:   vxsettings reset PATH" << file << '\n';
        }
    }
    if (!outcome.isChange) {
        out << (outcome.diagnostics.empty() ? "nothing to do: the file is up to date\n"
                                            : "nothing changed: only the invalid values need attention\n");
    } else if (outcome.isWritten) {
        out << "written; the old file is saved as " << outcome.backup << '\n';
    } else {
        out << "dry run, nothing written; use --write to write the file\n";
    }
}

void writeDocument(const Outcome& outcome, Output& out)
{
    const Migration& migration = outcome.migration;
    writeJson(
        {{"file", outcome.file.string()},
         {"from", migration.from ? json::value(formatReleaseName(*migration.from)) : json::value(nullptr)},
         {"to", formatReleaseName(migration.to)},
         {"untouched", migration.untouched},
         {"events", eventsJson(migration.events)},
         {"diagnostics", diagnosticsJson(outcome.diagnostics)},
         {"isChange", outcome.isChange},
         {"isWritten", outcome.isWritten},
         {"backup", review::stringOrNull(outcome.backup)}},
        out);
}

Outcome migrateFile(LazySession& lazy, const MigrateOptions& options, const core::MigrationRange& range)
{
    if (options.writes && options.file == core::standardInput) {
        throw CommandError(ExitCode::usage, "--write needs a file, not standard input");
    }
    std::optional<core::LockedFile> locked;
    if (options.writes && !core::fileKind(options.file).empty()) {
        // Only a file that exists is locked, as a lock would create the folder of a missing one.
        locked.emplace(options.file);
    }
    const std::string content =
        locked && locked->content() ? *locked->content() : core::readInput(options.file);
    const fs::path file = core::inputName(options.file);
    const Session& session = lazy.get();
    Migration migration = planMigration(content, file, session, range);
    auto diagnostics = core::checkMigratedValues(migration, file, session.tree(), session.releaseChanges());
    const bool isChange = migration.text != content;
    std::string backup;
    if (locked && isChange) {
        core::ChangeRecorder(core::defaultStateFolder(), "migrate --write").record(*locked, migration.text);
        backup = saveBackup(*locked, migration);
        locked->replace(migration.text);
    }
    return {file,
            std::move(migration),
            std::move(diagnostics),
            isChange,
            locked && isChange,
            backup,
            options.file == core::standardInput};
}

/// The changes of a release in preparation are not final.
void requirePublished(const MigrateOptions& options, const core::MigrationRange& range)
{
    if (options.writes && range.to && range.published && *range.published < *range.to) {
        throw CommandError(ExitCode::failed, "release " + formatReleaseName(*range.to) +
                                                 " is not published, so that its changes may still change: "
                                                 "leave out --write, or migrate to " +
                                                 formatReleaseName(*range.published));
    }
}

ExitCode migrate(LazySession& lazy, const MigrateOptions& options, Output& out)
{
    core::MigrationRange range{parseReleaseOption("--from", options.from),
                               parseReleaseOption("--to", options.to)};
    range.published = lazy.get().publishedRelease();
    requirePublished(options, range);
    const Outcome outcome = migrateFile(lazy, options, range);
    (out.isJson() ? writeDocument : writeText)(outcome, out);
    return outcome.diagnostics.empty() ? ExitCode::done : ExitCode::failed;
}

}  // namespace

Action addMigrate(CLI::App& command)
{
    setHelp(command, "Migrate a settings file to a newer release; without --write, only show the changes",
            "Exits with 1 if invalid values remain in the file, which are ignored.\n"
            "Example:\n  vxsettings migrate settings.json --write");
    auto options = std::make_shared<MigrateOptions>();
    addPositional(command, "FILE", options->file, Need::required,
                  "Settings file; - is standard input, without --write");
    addOption(command, "--from", options->from, "RELEASE",
              "Migrate from this release (default: the one that the file names)");
    addOption(command, "--to", options->to, "RELEASE", "Migrate to this release (default: the newest)");
    addFlag(command, "--write", options->writes, "Write the file, and save the old one as FILE.RELEASE.bak");
    return [options](LazySession& session, Output& out) { return migrate(session, *options, out); };
}

}  // namespace vx::tool
