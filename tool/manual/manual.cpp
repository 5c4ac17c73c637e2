#include "manual/manual.hpp"

#include <CLI/App.hpp>

#include <span>
#include <sstream>
#include <string_view>
#include <utility>

#include "environment.hpp"
#include "failure.hpp"
#include "manual/roff.hpp"

namespace vx::tool {

namespace {

struct Entry
{
    std::string_view term;
    std::string_view meaning;
};

constexpr std::string_view introduction[] = {
    "The Verdix environment has some 950 settings. A plug-in module describes them: names, factory values, "
    "rules for "
    "other values. This command starts that module as the environment does, and works on what it describes.",
    "Values come in layers: the factory's, an installation file, a personal file. The last one that states a "
    "setting "
    "wins. The verbs set and reset change the personal file; migrate changes the file that it is given.",
    "A PATH names a group or setting, such as verdix.commandwindow.NumericFormat. The root verdix may be "
    "left out. "
    "Without a verb, the command does what summary does.",
};

constexpr Entry files[] = {
    {"~/.config/verdix/settings.json", "The personal file, unless --personal names another."},
    {"/etc/xdg/verdix/settings.json", "The installation file, unless --installation names another."},
    {".settings.json.lock",
     "Beside a settings file that was changed; empty. Writers wait for each other by it."},
    {"settings.json.RELEASE.bak", "What migrate --write keeps of a file that was of that release."},
};

constexpr Entry commandVariables[] = {
    {"XDG_CONFIG_HOME", "Folder that holds verdix/settings.json, the personal file; ~/.config when unset."},
    {"XDG_CONFIG_DIRS",
     "Folders with colons between them. The installation file is verdix/settings.json in the first "
     "that has it; /etc/xdg when unset."},
    {"NO_COLOR", "Set to anything, it turns colours off, unless --color asks for them."},
    {"TERM", "No colours on a terminal that is dumb."},
};

void writeEntries(std::span<const Entry> entries, RoffPage& page)
{
    for (const auto& [term, meaning] : entries) {
        page.entry(term, "", meaning);
    }
}

bool takesMany(const CLI::Option& option)
{
    return option.get_expected_max() >= CLI::detail::expected_max_vector_size;
}

std::string wordsFor(const CLI::Option& option)
{
    return option.get_positional() ? option.get_name(true) + (takesMany(option) ? "..." : "")
                                   : option.get_name(false, true) + " " + option.get_type_name();
}

/// What follows the verb: "[OPTION...] PATH [VALUE]". Options that have to be given are shown by name.
std::string synopsisOf(const CLI::App& verb)
{
    std::string options;
    std::string operands;
    bool hasMore = false;
    for (const CLI::Option* option : verb.get_options()) {
        std::string& words = option->get_positional() ? operands : options;
        if (option->get_required()) {
            words += " " + wordsFor(*option);
        } else if (option->get_positional()) {
            words += " [" + wordsFor(*option) + "]";
        } else {
            hasMore = hasMore || option != verb.get_help_ptr();
        }
    }
    return (hasMore ? " [OPTION...]" : "") + options + operands;
}

void writeOption(const CLI::Option& option, RoffPage& page)
{
    std::string name = option.get_positional() ? option.get_name(true) : option.get_name(false, true);
    if (const auto comma = name.find(','); comma != std::string::npos) {
        name.insert(comma + 1, " ");
    }
    const bool isFlag = option.get_type_size() == 0;
    page.entry(name, isFlag ? std::string() : option.get_type_name(), option.get_description() + ".");
}

/// The options and operands of the command or a verb. Every one has --help, which is shown with the command.
void writeOptions(const CLI::App& app, bool isCommand, RoffPage& page)
{
    for (const CLI::Option* option : app.get_options()) {
        if (isCommand || option != app.get_help_ptr()) {
            writeOption(*option, page);
        }
    }
}

/// A sentence as the line that lists of manual pages show: without capital and full stop.
std::string phrase(std::string sentence)
{
    sentence.front() = static_cast<char>(sentence.front() - 'A' + 'a');
    sentence.pop_back();
    return sentence;
}

bool isIndented(std::string_view line)
{
    return line.starts_with("  ");
}

/// The indented lines of a help's end, which are examples, as such; the others in between as text.
void writeFooter(const std::string& footer, RoffPage& page)
{
    std::istringstream lines(footer);
    bool inExample = false;
    for (std::string line; std::getline(lines, line);) {
        if (inExample != isIndented(line)) {
            inExample = !inExample;
            inExample ? page.beginExample() : page.endExample();
        }
        inExample ? page.exampleLine(std::string_view(line).substr(2)) : page.paragraph(line);
    }
    if (inExample) {
        page.endExample();
    }
}

void writeVerb(const CLI::App& verb, RoffPage& page)
{
    page.subsection(verb.get_name());
    page.command("vxsettings " + verb.get_name(), synopsisOf(verb));
    page.paragraph(verb.get_description() + ".");
    writeOptions(verb, false, page);
    writeFooter(verb.get_footer(), page);
}

void writeExitStatus(RoffPage& page)
{
    for (const auto& [code, meaning] : exitMeanings) {
        page.entry(std::to_string(static_cast<int>(code)), "", std::string(meaning) + ".");
    }
}

}  // namespace

std::string manualPage(const CLI::App& app)
{
    RoffPage page("VXSETTINGS", "vxsettings " VX_TOOL_VERSION, "Verdix factory settings");
    page.section("NAME");
    page.paragraph("vxsettings - " + phrase(app.get_description()));
    page.section("SYNOPSIS");
    page.command("vxsettings", " [OPTION...] [VERB [ARGUMENT...]]");
    page.section("DESCRIPTION");
    for (const std::string_view text : introduction) {
        page.paragraph(text);
    }
    page.section("OPTIONS");
    page.paragraph("These go with every verb, in front of it or behind it.");
    writeOptions(app, true, page);
    page.section("VERBS");
    for (const CLI::App* verb :
         app.get_subcommands([](const CLI::App* any) { return !any->get_group().empty(); }))
    {
        writeVerb(*verb, page);
    }
    page.section("FILES");
    writeEntries(files, page);
    page.section("ENVIRONMENT");
    writeEntries(commandVariables, page);
    for (const auto& [name, meaning] : treeVariables) {
        page.entry(name, "", meaning);
    }
    page.section("EXIT STATUS");
    writeExitStatus(page);
    page.section("SEE ALSO");
    page.paragraph("bash(1), fish(1), zsh(1), whose completion is set up by the verb completion.");
    return std::move(page).text();
}

}  // namespace vx::tool
