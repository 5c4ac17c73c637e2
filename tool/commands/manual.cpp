#include <component/environment.hpp>

#include <CLI/CLI.hpp>
#include <boost/algorithm/string/replace.hpp>

#include <string>
#include <string_view>

#include "cli/arguments.hpp"
#include "cli/command.hpp"
#include "cli/help.hpp"

namespace vx::tool {

namespace {

/// Formats options and positional arguments so that help2man recognises them.
class ManualFormatter : public CLI::Formatter
{
public:
    ManualFormatter()
    {
        label("REQUIRED", "");  // the usage line shows it
        column_width(60);       // wide enough for each name and its help to share a line
    }

    std::string make_option_name(const CLI::Option* option, bool isPositional) const override
    {
        return boost::replace_all_copy(Formatter::make_option_name(option, isPositional), ",", ", ");
    }
};

/// Returns the help of all arguments of the program or a command. --help is only listed for the program, as
/// it is the same everywhere.
std::string argumentsOf(const CLI::App& app)
{
    std::string text;
    for (const CLI::Option* option : app.get_options()) {
        if (app.get_parent() == nullptr || option != app.get_help_ptr()) {
            text += ManualFormatter().make_option(option, option->get_positional());
        }
    }
    return text;
}

/// Returns the footer of a command's help, with a prompt before each example. The headings of examples are
/// left out, because help2man would move the examples to a section of its own.
std::string footerOf(const CLI::App& command)
{
    std::string text = "\n" + command.get_footer() + "\n";
    boost::replace_all(text, "\nExamples:\n", "\n\n");
    boost::replace_all(text, "\nExample:\n", "\n\n");
    return boost::replace_all_copy(text, "\n  ", "\n  $ ");
}

/// Returns the subsection of a command: heading, usage, summary, arguments, footer.
std::string subsectionOf(const CLI::App& command)
{
    std::string usage = ManualFormatter().make_usage(&command, "vxsettings " + command.get_name());
    boost::replace_first(usage, "Usage: ", "  ");
    return command.get_name() + ":\n" + usage + "\n" + command.get_description() + ".\n\n" +
           argumentsOf(command) + footerOf(command) + "\n";
}

/// Returns a line that help2man recognises as a term with its meaning.
std::string entry(std::string_view term, std::string_view meaning)
{
    return std::string("  ").append(term).append("  ").append(meaning).append("\n");
}

/// Returns the help of the program and all commands in the layout that help2man reads.
std::string manual(const CLI::App& app)
{
    std::string text = "Options:\n" + argumentsOf(app) + "\n";
    for (const CommandGroup& group : commandGroups(app)) {
        text += "*" + group.name + "*\n\n";
        for (const CLI::App* command : group.commands) {
            text += subsectionOf(*command);
        }
    }
    text += "*Exit Status*\n";
    for (const auto& [code, meaning] : exitMeanings) {
        text += entry(std::to_string(static_cast<int>(code)), meaning);
    }
    text += "\n*Feature Switches*\n";
    for (const auto& [name, meaning] : ::settings::verdix::featureInputs) {
        text += entry(name, meaning);
    }
    text += "\nEnvironment:\n";
    for (const auto& [name, meaning] : ::settings::verdix::environmentInputs) {
        text += entry(name, meaning);
    }
    return text;
}

}  // namespace

Action addManual(CLI::App& command)
{
    setHelp(command, "Print the help of all commands, from which help2man makes the manual page");
    hideFromHelp(command);  // only the build runs it
    return [&app = programOf(command)](LazySession&, Output& out) {
        out << Exact{manual(app)};
        return ExitCode::done;
    };
}

}  // namespace vx::tool
