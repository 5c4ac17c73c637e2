#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace vx::tool {

/// Has the parser and the commands that are added to it write their help in lines that fit on the terminal,
/// but are not too long to read.
void setHelpFormat(CLI::App& program);

struct CommandGroup
{
    std::string name;
    std::vector<const CLI::App*> commands;
};

/// Returns the groups in which help lists the commands of a program. Commands that are hidden are in none.
[[nodiscard]] std::vector<CommandGroup> commandGroups(const CLI::App& program);

/// Returns the help of the program or of one of its commands.
[[nodiscard]] std::string helpOf(const CLI::App& parser);

}  // namespace vx::tool
