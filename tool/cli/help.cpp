#include "cli/help.hpp"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <memory>
#include <sstream>
#include <string_view>
#include <vector>

#include "render/line_layout.hpp"
#include "render/output.hpp"
#include "render/table.hpp"

namespace vx::tool {

namespace {

constexpr std::size_t longestLine = 100;

/// Breaks each line of a text. What continues an indented line is indented further.
std::string breakLines(const std::string& text, std::size_t width)
{
    std::string result;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        const std::size_t indent = std::min(line.find_first_not_of(' '), line.size());
        std::string lineBreak(indent, ' ');
        const std::size_t hanging = indent == 0 ? 0 : indent + 4;
        for (const std::string& part : breakLine(std::string_view(line).substr(indent), width - hanging)) {
            result += lineBreak + part;
            lineBreak = "\n" + std::string(hanging, ' ');
        }
        result += '\n';
    }
    return result;
}

/// Returns a heading, and under it each name with its description.
std::string section(const std::string& heading, const Table& entries, std::size_t width)
{
    Output out(width);
    entries.write(out, "  ");
    return "\n" + heading + ":\n" + std::string(out.buffer());
}

class HelpFormatter : public CLI::Formatter
{
public:
    HelpFormatter()
    {
        label("SUBCOMMAND", "COMMAND");
        label("Positionals", "Arguments");
    }

    std::string make_help(const CLI::App* app, std::string name, CLI::AppFormatMode mode) const override
    {
        std::string footer = app->get_footer();
        if (app->get_parent() != nullptr) {
            footer.append(footer.empty() ? "" : "\n").append("Options of every command: vxsettings --help\n");
        }
        return breakLines(app->get_description() + "\n" + make_usage(app, std::move(name)), width_) +
               make_positionals(app) + make_groups(app, mode) + make_subcommands(app, mode) + "\n" +
               breakLines(footer, width_);
    }

    std::string make_group(std::string group, bool isPositional,
                           std::vector<const CLI::Option*> options) const override
    {
        Table table;
        for (const CLI::Option* option : options) {
            table.add({make_option_name(option, isPositional) + make_option_opts(option),
                       make_option_desc(option)});
        }
        return section(group, table, width_);
    }

    std::string make_subcommands(const CLI::App* app, CLI::AppFormatMode /*mode*/) const override
    {
        std::string text;
        for (const CommandGroup& group : commandGroups(*app)) {
            Table table;
            for (const CLI::App* command : group.commands) {
                table.add({command->get_name(), command->get_description()});
            }
            text += section(group.name, table, width_);
        }
        return text;
    }

private:
    std::size_t width_ = std::min(terminalWidth(), longestLine);
};

}  // namespace

void setHelpFormat(CLI::App& program)
{
    program.formatter(std::make_shared<HelpFormatter>());
}

std::vector<CommandGroup> commandGroups(const CLI::App& program)
{
    std::vector<CommandGroup> groups;
    for (const CLI::App* command : program.get_subcommands([](const CLI::App*) { return true; })) {
        const std::string& name = command->get_group();
        auto group = std::ranges::find(groups, name, &CommandGroup::name);
        if (group == groups.end() && !name.empty()) {
            group = groups.insert(group, {name, {}});
        }
        if (group != groups.end()) {
            group->commands.push_back(command);
        }
    }
    return groups;
}

std::string helpOf(const CLI::App& parser)
{
    const bool isCommand = parser.get_parent() != nullptr;
    const std::string name = "vxsettings" + (isCommand ? " " + parser.get_name() : "");
    return parser.get_formatter()->make_help(&parser, name, CLI::AppFormatMode::Normal);
}

}  // namespace vx::tool
