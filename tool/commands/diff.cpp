#include <review/changed_settings.hpp>

#include <boost/json/array.hpp>

#include <algorithm>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "cli/arguments.hpp"
#include "cli/command.hpp"
#include "render/escaping.hpp"
#include "render/json_text.hpp"
#include "render/table.hpp"

namespace vx::tool {

namespace {

namespace json = boost::json;
using review::Difference;
using review::DifferenceKind;

struct DiffOptions
{
    std::string older;
    std::string newer;
    std::string changedSettings;
    std::string format;  ///< empty: text, or json with --json
};

Style styleOf(DifferenceKind kind)
{
    switch (kind) {
    case DifferenceKind::added:
        return Style::good;
    case DifferenceKind::lost:
        return Style::bad;
    default:
        return Style::note;
    }
}

void writeText(const std::vector<Difference>& differences, Output& out)
{
    Table table;
    for (const Difference& difference : differences) {
        table.add({{std::string(kindLabel(difference.kind)), styleOf(difference.kind)},
                   difference.path,
                   {describeDifference(difference), Style::note}});
    }
    table.write(out);
}

/// Returns the path without the root.
std::string_view shortPath(std::string_view path)
{
    return path.substr(path.find('.') + 1);
}

/// Returns the name of the group directly under the root, or "root" for a setting there.
std::string_view areaOf(std::string_view path)
{
    const std::string_view below = shortPath(path);
    const std::size_t dot = below.find('.');
    return dot == below.npos ? "root" : below.substr(0, dot);
}

std::string code(std::string_view path)
{
    return markdownCode(shortPath(path));
}

/// Returns what changed in a property: "must now be from 1 to 50 (before: from 1 to 100)".
std::string propertyNote(const Difference& difference)
{
    if (!difference.summary.empty()) {
        return difference.summary;
    }
    const std::string change = difference.after + " (before: " + difference.before + ")";
    switch (difference.kind) {
    case DifferenceKind::constraint:
        return "must now be " + change;
    case DifferenceKind::valueClass:
        return "class and default are now " + change;
    case DifferenceKind::validator:
        return "its validator changed";  // function names mean nothing to users
    default:
        return std::string(kindLabel(difference.kind)) + " is now " + change;
    }
}

/// Returns a difference of the whole node as an entry of release notes.
std::string nodeNote(const Difference& difference)
{
    switch (difference.kind) {
    case DifferenceKind::added:
        return "Added " + code(difference.path);
    case DifferenceKind::moved:
        return "Renamed " + code(difference.before) + " to " + code(difference.path);
    case DifferenceKind::removed:
        return "Removed " + code(difference.path);
    default:
        return "Lost " + code(difference.path) + ": " + markdownText(describeDifference(difference));
    }
}

/// An entry of release notes.
struct ReleaseNote
{
    std::string_view path;
    std::string text;
    std::string reason;
};

/// Returns the entries. All properties that changed of one setting are in one entry.
std::vector<ReleaseNote> releaseNotes(const std::vector<Difference>& differences,
                                      const review::ChangedSettings& changed)
{
    const review::ChangeReasons reasons(changed);
    std::vector<ReleaseNote> notes;
    std::map<std::string_view, std::size_t> entries;  // of settings whose properties changed: index in notes
    for (const Difference& difference : differences) {
        const std::string reason(reasons.of(difference));
        if (!isPropertyKind(difference.kind)) {
            notes.push_back({difference.path, nodeNote(difference), reason});
            continue;
        }
        const auto [entry, isNew] = entries.emplace(difference.path, notes.size());
        if (isNew) {
            notes.push_back({difference.path, code(difference.path) + ": ", reason});
        }
        ReleaseNote& note = notes[entry->second];
        note.text += (isNew ? "" : "; ") + markdownText(propertyNote(difference));
        if (note.reason.find(reason) == std::string::npos) {
            note.reason += (note.reason.empty() ? "" : " ") + reason;
        }
    }
    return notes;
}

/// Writes release notes, grouped by the groups directly under the root in alphabetical order.
void writeMarkdown(const std::vector<Difference>& differences, const review::ChangedSettings& changed,
                   Output& out)
{
    std::map<std::string_view, std::string> areas;
    for (const auto& [path, text, reason] : releaseNotes(differences, changed)) {
        areas[areaOf(path)] += "- " + text + (reason.empty() ? "" : ". " + markdownText(reason)) + "\n";
    }
    for (const char* separator = ""; const auto& [area, notes] : areas) {
        out << separator << "#### " << markdownText(area) << "\n\n" << Exact{notes};
        separator = "\n";
    }
}

void writeJson(const std::vector<Difference>& differences, Output& out)
{
    json::array list;
    for (const Difference& difference : differences) {
        list.push_back(json::object{{"change", kindLabel(difference.kind)},
                                    {"path", difference.path},
                                    {"before", difference.before},
                                    {"after", difference.after}});
    }
    writeJson({{"differences", std::move(list)}}, out);
}

ExitCode diff(const DiffOptions& options, Output& out)
{
    requireOneStandardInput({options.older, options.newer, options.changedSettings});
    const std::string format = chosenFormat(options.format, out, "text");
    if (format != "markdown" && !options.changedSettings.empty()) {
        throw CommandError(ExitCode::usage,
                           "--changed-settings is for --format markdown: other formats show no reasons");
    }
    const auto older = review::readReleaseTree(options.older);
    const auto newer = review::readReleaseTree(options.newer);
    const auto differences = review::compareTrees(older, newer);
    if (format == "json") {
        writeJson(differences, out);
    } else if (format == "markdown") {
        const auto changed = options.changedSettings.empty()
                                 ? review::ChangedSettings()
                                 : review::readChangedSettings(options.changedSettings);
        writeMarkdown(differences, changed, out);
    } else {
        writeText(differences, out);
    }
    const auto isLost = [](const Difference& difference) { return difference.kind == DifferenceKind::lost; };
    return std::ranges::any_of(differences, isLost) ? ExitCode::failed : ExitCode::done;
}

}  // namespace

Action addDiff(CLI::App& command)
{
    setHelp(command, "Compare two exported trees",
            "Exits with 1 if a setting is lost: missing, without a release change that moves or removes it.\n"
            "Example:\n  vxsettings diff R2025b.json R2026a.json --format markdown");
    auto options = std::make_shared<DiffOptions>();
    addPositional(command, "OLD", options->older, Need::required,
                  "Older tree, written by export --format json; - is standard input");
    addPositional(command, "NEW", options->newer, Need::required, "Newer tree; - is standard input");
    addChoice(command, "--format", options->format, {"text", "json", "markdown"},
              "Write this format; markdown is for release notes (default: text)");
    addOption(command, "--changed-settings", options->changedSettings, "FILE",
              "With --format markdown, add the reasons in this list of intended changes");
    return [options](LazySession&, Output& out) { return diff(*options, out); };
}

}  // namespace vx::tool
