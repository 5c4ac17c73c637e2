#include <memory>
#include <string>
#include <vector>

#include "cli/arguments.hpp"
#include "cli/command.hpp"
#include "completion/completion.hpp"
#include "completion/shell_scripts.hpp"

namespace vx::tool {

namespace {

/// Writes one candidate per line, with a tab and its description; ":files" if any file name may follow.
ExitCode writeCandidates(const Completion& completion, Output& out)
{
    if (completion.takesFile) {
        out << ":files\n";
    }
    for (const auto& [argument, description] : completion.candidates) {
        out << argument << '\t' << description << '\n';
    }
    return ExitCode::done;
}

}  // namespace

Action addComplete(CLI::App& command)
{
    setHelp(command, "Print the candidates for the last argument of a command line");
    hideFromHelp(command);  // called by the completion scripts
    auto arguments = std::make_shared<std::vector<std::string>>();
    addPositional(command, "ARGUMENTS", *arguments, Need::requiredOrEmpty,
                  "Arguments after the program's name, the last one incomplete");
    return [arguments, &app = programOf(command)](LazySession& session, Output& out) {
        return writeCandidates(complete(app, *arguments, session), out);
    };
}

Action addCompletion(CLI::App& command)
{
    setHelp(command, "Print the script that sets up completion in a shell",
            "Examples:\n  source <(vxsettings completion bash)\n"
            "  vxsettings completion fish > ~/.config/fish/completions/vxsettings.fish");
    auto shell = std::make_shared<std::string>();
    addChoice(command, "SHELL", *shell, {"bash", "zsh", "fish"}, "Shell that reads the script",
              Need::required);
    return [shell](LazySession&, Output& out) {
        out << Exact{*shell == "bash"  ? shell_scripts::bash
                     : *shell == "zsh" ? shell_scripts::zsh
                                       : shell_scripts::fish};
        return ExitCode::done;
    };
}

}  // namespace vx::tool
