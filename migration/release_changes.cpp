#include <migration/release_changes.hpp>

#include <initializer_list>
#include <string>
#include <vector>

namespace settings::verdix {

using ::settings::core::ReleaseChangeSet;
using ::settings::core::ReleaseChangeTable;

namespace {

/// A change in a release.
struct Change
{
    /// Removes a setting, or a group with all of its members.
    consteval Change(const char* removed) : path(requireName(removed)) {}
    /// Moves a setting. A move to its own path brings back a setting that was removed.
    consteval Change(const char* source, const char* destination)
        : path(requireName(source)), target(requireName(destination))
    {}

    std::string_view path;
    std::string_view target = {};  ///< empty for a removal

private:
    static consteval const char* requireName(const char* name)
    {
        return *name == '\0' ? throw "a release change has an empty path" : name;
    }
};

using Changes = std::initializer_list<Change>;

// Users' settings files are migrated release by release, applying each list from top to bottom. The list of a
// published release never changes; errors in it are fixed by a later list. Only the last list is open: that
// of the coming release. scripts/release.sh closes it and opens the next one.

constexpr Changes r2020b = {
    // The old name was misleading: the setting is the line spacing, not the number format.
    {"verdix.commandwindow.NumericDisplay", "verdix.commandwindow.DisplayLineSpacing"},
    {"verdix.colors.programmingtools.WarningsColor",
     "verdix.colors.programmingtools.CodeAnalyzerWarningColor"},
    {"verdix.colors.programmingtools.AutoFixHighlightCheckbox",
     "verdix.colors.programmingtools.HighlightAutofixes"},
    {"verdix.colors.programmingtools.AutofixColor", "verdix.colors.programmingtools.AutofixHighlightColor"},
    {"verdix.colors.programmingtools.AutoHighlightColor",
     "verdix.colors.programmingtools.VariableHighlightColor"},
    {"verdix.colors.programmingtools.VariablesWithSharedScope",
     "verdix.colors.programmingtools.ShowVariablesWithSharedScope"},
    {"verdix.keyboard.delimiter.DelimiterOptionsMoving", "verdix.keyboard.delimiter.ShowMatchesOnArrowKey"},
    {"verdix.keyboard.delimiter.DelimiterOptionsTyping", "verdix.keyboard.delimiter.ShowMatchesWhenTyping"},
};

constexpr Changes r2021a = {
    {"verdix.addons.AdditionalInstallationFolders"},
    {"verdix.addons.ImportLegacyAddOnsAtStartup"},
    {"verdix.addons.MultipleVersionInstallationEnabled"},
    {"verdix.findfiles.GoToFileEnabled"},
    {"verdix.commandwindow.EightyColumns", "verdix.commandwindow.UseEightyColumnDisplayWidth"},
};

constexpr Changes r2022b = {
    {"verdix.keyboard.suggestions.ShowAutomatically", "verdix.editor.suggestions.ShowAutomatically"},
    {"verdix.commandwindow.ShowCompletionsAutomatically",
     "verdix.commandwindow.suggestions.ShowAutomatically"},
};

constexpr Changes r2023a = {
    {"verdix.connector.InterfacesBlacklist", "verdix.connector.InterfacesBlocklist"},
    {"verdix.keyboard.suggestions"},
};

// Settings that editor and command window share moved to the suggestions group, the others to its subgroups.
constexpr Changes r2025b = {
    {"verdix.editor.suggestions.ShowTips", "verdix.suggestions.ShowTips"},
    {"verdix.editor.suggestions.AcceptOnRightArrow", "verdix.suggestions.AcceptOnRightArrow"},
    {"verdix.editor.suggestions.MaximumNumberOfSuggestions", "verdix.suggestions.MaximumNumberOfSuggestions"},
    {"verdix.editor.suggestions.ShowAutomatically", "verdix.suggestions.editor.ShowAutomatically"},
    {"verdix.editor.suggestions.ShowOnTab", "verdix.suggestions.editor.ShowOnTab"},
    {"verdix.editor.suggestions.TabAcceptsOnOneSuggestion",
     "verdix.suggestions.editor.TabAcceptsOnOneSuggestion"},
    {"verdix.editor.suggestions.SuggestionDelay", "verdix.suggestions.editor.SuggestionDelay"},
    {"verdix.editor.suggestions.ShowAdditionalHelp", "verdix.suggestions.editor.ShowAdditionalHelp"},
    {"verdix.commandwindow.suggestions.ShowAutomatically",
     "verdix.suggestions.commandwindow.ShowAutomatically"},
    {"verdix.commandwindow.suggestions.ShowOnTab", "verdix.suggestions.commandwindow.ShowOnTab"},
    {"verdix.commandwindow.suggestions.TabAcceptsOnOneSuggestion",
     "verdix.suggestions.commandwindow.TabAcceptsOnOneSuggestion"},
};

// Groups and their members are listed both, so that files that only contain members are cleaned up, too.
constexpr Changes r2026a = {
    {"verdix.desktop.help.SingleSource"},
    {"verdix.editor.suggestions"},
    {"verdix.editor.suggestions.ShowTips"},
    {"verdix.editor.suggestions.AcceptOnRightArrow"},
    {"verdix.editor.suggestions.MaximumNumberOfSuggestions"},
    {"verdix.editor.suggestions.ShowAutomatically"},
    {"verdix.editor.suggestions.ShowOnTab"},
    {"verdix.editor.suggestions.TabAcceptsOnOneSuggestion"},
    {"verdix.editor.suggestions.SuggestionDelay"},
    {"verdix.editor.suggestions.ShowAdditionalHelp"},
    {"verdix.commandwindow.suggestions"},
    {"verdix.commandwindow.suggestions.ShowAutomatically"},
    {"verdix.commandwindow.suggestions.ShowOnTab"},
    {"verdix.commandwindow.suggestions.TabAcceptsOnOneSuggestion"},
};

constexpr Changes r2026b = {};

struct Release
{
    const char* name;
    Changes changes;
};

constexpr Release releases[] = {
    {"R2020b", r2020b}, {"R2021a", r2021a}, {"R2022b", r2022b}, {"R2023a", r2023a},
    {"R2025b", r2025b}, {"R2026a", r2026a}, {"R2026b", r2026b},
};

std::string_view rootGroupOf(std::string_view path)
{
    return path.substr(0, path.find('.'));
}

std::vector<std::string> onePath(std::string_view path)
{
    return {std::string(path)};
}

}  // namespace

void addMove(ReleaseChangeSet& set, std::string_view source, std::string_view target)
{
    set.crossesRootGroups = set.crossesRootGroups || rootGroupOf(source) != rootGroupOf(target);
    set.changes.emplace_back("move", onePath(source), onePath(target));
}

void addRemove(ReleaseChangeSet& set, std::string_view path)
{
    set.changes.emplace_back("remove", onePath(path), std::vector<std::string>());
}

void fillReleaseChanges(ReleaseChangeTable& table)
{
    for (std::uint64_t index = 0; const Release& release : releases) {
        if (release.changes.size() == 0) {
            continue;  // a release that moves and removes nothing has no entry
        }
        ReleaseChangeSet& set = table[index++];
        set = {release.name, false, {}};
        set.changes.reserve(release.changes.size());
        for (const Change& change : release.changes) {
            if (change.target.empty()) {
                addRemove(set, change.path);
            } else {
                addMove(set, change.path, change.target);
            }
        }
    }
}

}  // namespace settings::verdix
