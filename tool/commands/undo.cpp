#include <review/tree_json.hpp>
#include <settings_core/files/base_folders.hpp>
#include <settings_core/files/change_records.hpp>
#include <settings_core/files/input_file.hpp>
#include <settings_core/files/settings_file.hpp>
#include <settings_core/tree/secret_settings.hpp>

#include <boost/json/array.hpp>

#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "cli/arguments.hpp"
#include "cli/command.hpp"
#include "render/json_text.hpp"
#include "render/table.hpp"
#include "settings_changes.hpp"

namespace vx::tool {

namespace {

namespace fs = std::filesystem;
namespace json = boost::json;
using core::ChangeRecord;
using Content = std::optional<std::string>;

struct UndoOptions
{
    int number = 1;
    bool isList = false;
    bool isForced = false;
    Scope scope;
};

/// A setting, or the member "release", that the undo changes. The values are JSON on one line; empty where
/// the file does not have it.
struct ValueChange
{
    std::string path;
    std::string before;
    std::string after;
};

/// Returns the values of a file's settings, and its release, as JSON on one line. Content that is missing or
/// damaged has none.
std::map<std::string, std::string> valuesIn(const Content& content)
{
    std::map<std::string, std::string> values;
    try {
        const core::SettingsFile file(content.value_or("{}"));
        for (const core::JsonMember& setting : file.settings()) {
            values.insert_or_assign(setting.name, jsonOnOneLine(setting.value.text));
        }
        if (const core::JsonValue* release = file.release()) {
            values.emplace("release", jsonOnOneLine(release->text));
        }
    } catch (const core::ParseError&) {
        values.clear();
    }
    return values;
}

/// Returns the difference of two contents, without secrets.
std::vector<ValueChange> compareContents(const Content& before, const Content& after)
{
    std::map<std::string, ValueChange> byPath;
    for (auto& [path, value] : valuesIn(before)) {
        byPath[path].before = value;
    }
    for (auto& [path, value] : valuesIn(after)) {
        byPath[path].after = value;
    }
    std::vector<ValueChange> changes;
    for (auto& [path, change] : byPath) {
        if (change.before == change.after) {
            continue;
        }
        for (std::string* value : {&change.before, &change.after}) {
            if (!value->empty() && core::isSecret(path)) {
                *value = core::maskedValue;
            }
        }
        changes.push_back({path, std::move(change.before), std::move(change.after)});
    }
    return changes;
}

Table::Row changeRow(const ValueChange& change)
{
    if (change.before.empty()) {
        return {{"sets", Style::good}, change.path, change.after};
    }
    if (change.after.empty()) {
        return {{"removes", Style::bad}, change.path, change.before};
    }
    return {{"changes", Style::good}, change.path, change.before + " to " + change.after};
}

CommandError nothingRecorded(const std::string& file)
{
    return {ExitCode::failed, "nothing to undo: no change of " + file + " is recorded in " +
                                  core::defaultStateFolder().string()};
}

ExitCode listRecords(const std::string& file, const std::vector<fs::path>& records, Output& out)
{
    Table table;
    json::array list;
    for (const fs::path& record : records) {
        const auto change = core::readChangeRecord(record);
        if (!change) {
            continue;  // removed meanwhile by a newer change
        }
        const std::size_t number = list.size() + 1;
        table.add({number, {change->time, Style::note}, change->command});
        list.push_back(
            json::object{{"number", number}, {"time", change->time}, {"command", change->command}});
    }
    if (out.isJson()) {
        writeJson({{"file", file}, {"records", std::move(list)}}, out);
    } else {
        table.write(out);
    }
    return ExitCode::done;
}

void writeText(const std::string& file, const ChangeRecord& undone, const std::vector<ValueChange>& changes,
               Output& out)
{
    Table table;
    for (const ValueChange& change : changes) {
        table.add(changeRow(change));
    }
    table.write(out, "  ");
    out << file << (undone.before ? " is as before \"" : " is removed: it did not exist before \"")
        << undone.command << "\" of " << undone.time << '\n';
}

void writeDocument(const std::string& file, const ChangeRecord& undone,
                   const std::vector<ValueChange>& changes, Output& out)
{
    json::array list;
    for (const ValueChange& change : changes) {
        list.push_back(json::object{{"path", change.path},
                                    {"before", review::stringOrNull(change.before)},
                                    {"after", review::stringOrNull(change.after)}});
    }
    writeJson({{"file", file},
               {"command", undone.command},
               {"time", undone.time},
               {"isRemoved", !undone.before.has_value()},
               {"changes", std::move(list)}},
              out);
}

ChangeRecord requireRecord(const std::string& file, const std::vector<fs::path>& records, std::size_t number)
{
    if (records.empty()) {
        throw nothingRecorded(file);
    }
    if (number > records.size()) {
        throw CommandError(ExitCode::failed, "only " + std::to_string(records.size()) + " changes of " +
                                                 file + " are recorded; see vxsettings undo --list");
    }
    const auto record = core::readChangeRecord(records[number - 1]);
    return record ? *record : throw nothingRecorded(file);
}

/// Refuses to undo over a change that is not recorded.
void requireUnchanged(const std::string& file, const ChangeRecord& last, const Content& content)
{
    if (last.after != content) {
        throw CommandError(
            ExitCode::failed,
            file + " was changed by something else since \"" + last.command + "\" of " + last.time +
                ": use --force to undo nevertheless; the present content is recorded, and undo "
                "brings it back");
    }
}

ExitCode undo(LazySession& lazy, const UndoOptions& options, Output& out)
{
    const fs::path path = options.scope.fileIn(lazy.layerFiles());
    const std::string file = path.string();
    const fs::path stateFolder = core::defaultStateFolder();
    auto records = core::changeRecords(stateFolder, path, core::readFile(path));
    if (options.isList) {
        return listRecords(file, records, out);
    }
    if (records.empty()) {  // a lock would create the folder
        throw nothingRecorded(file);
    }
    core::LockedFile locked(path, core::lockTimeout, options.scope.access());
    const Content present = locked.content();
    records = core::changeRecords(stateFolder, path, present);
    const ChangeRecord undone = requireRecord(file, records, static_cast<std::size_t>(options.number));
    if (!options.isForced) {
        requireUnchanged(file, requireRecord(file, records, 1), present);
    }
    core::ChangeRecorder(stateFolder, "undo").replace(locked, undone.before);
    (out.isJson() ? writeDocument : writeText)(file, undone, compareContents(present, undone.before), out);
    return ExitCode::done;
}

}  // namespace

Action addUndo(CLI::App& command)
{
    setHelp(command,
            "Undo the last change of your personal settings file by set, reset, import, edit, "
            "migrate or undo",
            "The last 20 changes of each settings file are kept in $XDG_STATE_HOME/verdix/undo (default: "
            "~/.local/state).\n"
            "Examples:\n  vxsettings undo\n  vxsettings undo --list\n"
            "  vxsettings undo --personal settings.json");
    auto options = std::make_shared<UndoOptions>();
    addOption(command, "NUMBER", options->number, 1, static_cast<int>(core::keptRecords), "",
              "Undo this change and all after it, counted from the last one as in --list (default: 1)");
    addFlag(command, "--list", options->isList, "List the changes with time and command, the last one first");
    addFlag(command, "--force", options->isForced, "Undo even if something else changed the file since");
    options->scope.addOption(command);
    return [options](LazySession& session, Output& out) { return undo(session, *options, out); };
}

}  // namespace vx::tool
