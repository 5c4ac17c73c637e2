#include "settings_changes.hpp"

#include <data/unprintable.hpp>
#include <settings_core/files/base_folders.hpp>
#include <settings_core/files/input_file.hpp>
#include <settings_core/tree/secret_settings.hpp>

#include <algorithm>
#include <utility>

#include "cli/arguments.hpp"
#include "cli/diagnostics.hpp"
#include "render/effective_value.hpp"
#include "render/json_text.hpp"

namespace vx::tool {

namespace {

namespace fs = std::filesystem;
namespace json = boost::json;

constexpr std::size_t valueWidth = 60;

core::EditorOptions editorOptions(const LazySession& lazy, const Session& session,
                                  const ChangeOptions& options, const std::string& command)
{
    return {.layers = lazy.layerFiles(),
            .release = session.publishedRelease(),
            .recorder = core::ChangeRecorder(core::defaultStateFolder(), data::escapeUnprintable(command)),
            .isDryRun = options.isDryRun};
}

/// Writes an effective value with its origin.
void writeValue(const core::Node& setting, const core::LayerValue& effective, Output& out)
{
    const core::LayerValue shown = core::shownValue(setting, effective);
    out << out.styled(Style::value, valueOnOneLine(shown, out.valueWidth(valueWidth)));
    if (shown.value.isAssigned()) {
        out << " (" << core::originName(shown.origin) << ')';
    }
}

void writeChange(const core::AppliedChange& change, Output& out)
{
    out << change.path << ": ";
    if (change.setting == nullptr) {
        out << "removed";
        return;
    }
    writeValue(*change.setting, change.before, out);
    if (change.isChange) {
        out << " -> ";
        writeValue(*change.setting, change.after, out);
    } else {
        out << ", unchanged";
    }
}

json::value valueJson(const core::AppliedChange& change, const core::LayerValue& effective)
{
    if (change.setting == nullptr) {
        return nullptr;
    }
    json::object value;
    addLayerValue(value, core::shownValue(*change.setting, effective));
    return value;
}

}  // namespace

void Scope::addOption(CLI::App& command)
{
    addChoice(command, "--scope", name_, {"personal", "installation"},
              "Change your personal settings file, or that of the installation, for all users "
              "(default: personal)");
}

fs::path Scope::fileIn(const core::LayerFiles& layers) const
{
    if (!isInstallation()) {
        return layers.personal;
    }
    const auto existing = std::ranges::find_if(
        layers.installation, [](const fs::path& file) { return !core::fileKind(file).empty(); });
    return existing == layers.installation.end() ? layers.installation.front() : *existing;
}

core::FileAccess Scope::access() const noexcept
{
    return isInstallation() ? core::FileAccess::everyone : core::FileAccess::user;
}

void addChangeOptions(CLI::App& command, ChangeOptions& options)
{
    options.scope.addOption(command);
    addFlag(command, "--dry-run", options.isDryRun, "Show the changes, and write nothing");
}

ChangedFile::ChangedFile(LazySession& lazy, const ChangeOptions& options, const std::string& command)
    : file(options.scope.fileIn(lazy.layerFiles())),
      editor(lazy.get().tree(), lazy.get().releaseChanges(), file,
             editorOptions(lazy, lazy.get(), options, command)),
      access(options.scope.access()),
      isDryRun(options.isDryRun)
{}

std::string countSettings(std::size_t count, const char* adjective)
{
    return std::to_string(count) + ' ' + adjective + (*adjective == '\0' ? "" : " ") +
           (count == 1 ? "setting" : "settings");
}

std::size_t countUnchanged(const core::AppliedChanges& applied)
{
    return static_cast<std::size_t>(
        std::ranges::count(applied.settings, false, &core::AppliedChange::isChange));
}

std::string summarize(const core::AppliedChanges& applied, const ChangedFile& changed, const char* done)
{
    const std::size_t unchanged = countUnchanged(applied);
    return countSettings(applied.settings.size() - unchanged) + ' ' + done + ' ' + changed.file.string() +
           (unchanged == 0 ? "" : ", " + std::to_string(unchanged) + " unchanged");
}

void writeChanges(const core::AppliedChanges& applied, const ChangedFile& changed, const std::string& summary,
                  Output& out)
{
    for (const core::AppliedChange& change : applied.settings) {
        if (change.isChange || summary.empty()) {
            writeChange(change, out);
            if (summary.empty()) {
                out << (change.isChange ? ", in " : " in ") << changed.file.string();
            }
            out << '\n';
        }
    }
    if (!summary.empty()) {
        out << summary << '\n';
    }
    if (changed.isDryRun) {
        out << "dry run, nothing written\n";
    }
}

json::object changeJson(const core::AppliedChange& change)
{
    return {{"path", change.path},
            {"before", valueJson(change, change.before)},
            {"after", valueJson(change, change.after)}};
}

json::object changesJson(const core::AppliedChanges& applied, const ChangedFile& changed)
{
    json::array changes;
    for (const core::AppliedChange& change : applied.settings) {
        if (change.isChange) {
            changes.push_back(changeJson(change));
        }
    }
    return {
        {"changes", std::move(changes)}, {"file", changed.file.string()}, {"isWritten", applied.isWritten}};
}

void giveHints(const core::AppliedChanges& applied, const ChangedFile& changed)
{
    const std::string file = changed.file.string();
    for (const core::AppliedChange& change : applied.settings) {
        if (change.after.file != changed.file) {
            printHint(change.path + ": the value in " + file + " has no effect, as " +
                      change.after.file.string() + " overrides it");
        }
        if (changed.access == core::FileAccess::everyone && core::isSecret(change.path)) {
            printHint(change.path + " is a secret, and all users can read " + file);
        }
    }
}

}  // namespace vx::tool
