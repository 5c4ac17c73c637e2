#include "manual/manual.hpp"

#include <component/environment.hpp>

#include <CLI/App.hpp>

#include <span>
#include <sstream>
#include <string_view>
#include <utility>

#include "cli/command_error.hpp"
#include "manual/roff.hpp"

namespace vx::tool {

namespace {

struct Entry
{
    std::string_view term;
    std::string_view meaning;
};

constexpr std::string_view introduction[] = {
    "The Verdix environment has some 950 settings. A plug-in module defines their names, factory values and "
    "constraints. vxsettings starts that module as the environment does, and works with these definitions.",
    "Values come from three layers: factory, installation file, personal file. The last layer that sets a "
    "value wins. The commands set and reset change the personal file; migrate changes the file that it is "
    "given.",
    "A PATH names a group or setting, such as verdix.commandwindow.NumericFormat. The root verdix may be "
    "left "
    "out. Without a command, vxsettings runs summary.",
};

constexpr Entry files[] = {
    {"~/.config/verdix/settings.json", "Personal settings file, unless --personal is given."},
    {"/etc/xdg/verdix/settings.json", "Installation settings file, unless --installation is given."},
    {".settings.json.lock",
     "Empty lock file beside a settings file, so that one process at a time writes it."},
    {"settings.json.RELEASE.bak", "Backup that migrate --write saves of a file of that release."},
};

constexpr Entry commandVariables[] = {
    {"XDG_CONFIG_HOME", "Folder of the personal settings file verdix/settings.json (default: ~/.config)."},
    {"XDG_CONFIG_DIRS",
     "Folders, separated by colons. The installation settings file is verdix/settings.json in the first "
     "folder that has it (default: /etc/xdg)."},
    {"NO_COLOR", "If set and not empty, turns colours off, unless --color is given."},
    {"TERM", "Colours are off if it is dumb or not set."},
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

std::string labelOf(const CLI::Option& option)
{
    return option.get_positional() ? option.get_name(true) + (takesMany(option) ? "..." : "")
                                   : option.get_name(false, true) + " " + option.get_type_name();
}

/// Returns the arguments of a command: "[OPTION...] PATH [VALUE]". Required options are shown by name.
std::string synopsisOf(const CLI::App& command)
{
    std::string options;
    std::string positionals;
    bool hasOptional = false;
    for (const CLI::Option* option : command.get_options()) {
        std::string& labels = option->get_positional() ? positionals : options;
        if (option->get_required()) {
            labels += " " + labelOf(*option);
        } else if (option->get_positional()) {
            labels += " [" + labelOf(*option) + "]";
        } else {
            hasOptional = hasOptional || option != command.get_help_ptr();
        }
    }
    return (hasOptional ? " [OPTION...]" : "") + options + positionals;
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

/// Writes the options and positional arguments of the program or a command. Every command has --help, which
/// is only shown for the program.
void writeOptions(const CLI::App& app, bool isProgram, RoffPage& page)
{
    for (const CLI::Option* option : app.get_options()) {
        if (isProgram || option != app.get_help_ptr()) {
            writeOption(*option, page);
        }
    }
}

/// Returns a sentence without capital and full stop, as lists of manual pages show it.
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

/// Writes the footer of a help: indented lines as examples, the others as paragraphs.
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

void writeCommand(const CLI::App& command, RoffPage& page)
{
    page.subsection(command.get_name());
    page.command("vxsettings " + command.get_name(), synopsisOf(command));
    page.paragraph(command.get_description() + ".");
    writeOptions(command, false, page);
    writeFooter(command.get_footer(), page);
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
    page.command("vxsettings", " [OPTION...] [COMMAND [ARGUMENT...]]");
    page.section("DESCRIPTION");
    for (const std::string_view text : introduction) {
        page.paragraph(text);
    }
    page.section("OPTIONS");
    page.paragraph("These apply to every command, and may precede or follow it.");
    writeOptions(app, true, page);
    page.section("COMMANDS");
    for (const CLI::App* command :
         app.get_subcommands([](const CLI::App* any) { return !any->get_group().empty(); }))
    {
        writeCommand(*command, page);
    }
    page.section("FILES");
    writeEntries(files, page);
    page.section("ENVIRONMENT");
    writeEntries(commandVariables, page);
    for (const auto& [name, meaning] : ::settings::verdix::environmentInputs) {
        page.entry(name, "", meaning);
    }
    page.section("EXIT STATUS");
    writeExitStatus(page);
    page.section("SEE ALSO");
    page.paragraph("bash(1), fish(1), zsh(1): the command completion prints their completion scripts.");
    return std::move(page).text();
}

}  // namespace vx::tool
