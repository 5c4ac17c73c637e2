#include <memory>
#include <string>
#include <vector>

#include "arguments.hpp"
#include "completion/completion.hpp"
#include "completion/shell_scripts.hpp"
#include "verb.hpp"

namespace vx::tool {

namespace {

/// A candidate a line, its description behind a tab; ":files" where any file may stand.
ExitCode writeCandidates(const Completion& completion, Output& out)
{
    if (completion.takesFile) {
        out << ":files\n";
    }
    for (const auto& [word, description] : completion.candidates) {
        out << word << '\t' << description << '\n';
    }
    return ExitCode::done;
}

}  // namespace

Action addComplete(CLI::App& verb)
{
    describe(verb, "What may stand at the end of a command line");
    hide(verb);  // for the shells' scripts
    auto words = std::make_shared<std::vector<std::string>>();
    addOperand(verb, "WORDS", *words, Need::required,
               "Words behind the program's name, the last one unfinished");
    return [words, &app = wholeOf(verb)](LazySession& session, Output& out) {
        return writeCandidates(complete(app, *words, session), out);
    };
}

Action addCompletion(CLI::App& verb)
{
    describe(verb, "Script that makes a shell complete this command",
             "Examples:\n  source <(vxsettings completion bash)\n"
             "  vxsettings completion fish > ~/.config/fish/completions/vxsettings.fish");
    auto shell = std::make_shared<std::string>();
    addChoice(verb, "SHELL", *shell, {"bash", "zsh", "fish"}, "Shell that is to read it", Need::required);
    return [shell](LazySession&, Output& out) {
        out << (*shell == "bash"  ? shell_scripts::bash
                : *shell == "zsh" ? shell_scripts::zsh
                                  : shell_scripts::fish);
        return ExitCode::done;
    };
}

}  // namespace vx::tool
