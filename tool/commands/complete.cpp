#include <CLI/CLI.hpp>

#include <memory>
#include <string>
#include <vector>

#include "choices.hpp"
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

Verb addComplete(CLI::App& app)
{
    CLI::App* parser = app.add_subcommand("complete", "What may stand at the end of a command line");
    parser->group("");  // for the shells' scripts, not for people
    auto words = std::make_shared<std::vector<std::string>>();
    parser->add_option("WORDS", *words, "Words behind the program's name, the last one unfinished")
        ->type_name("")
        ->required();
    return {parser, [words, &app](LazySession& session, Output& out) {
                return writeCandidates(complete(app, *words, session), out);
            }};
}

Verb addCompletion(CLI::App& app)
{
    CLI::App* parser = app.add_subcommand("completion", "Script that makes a shell complete this command");
    auto shell = std::make_shared<std::string>();
    limitTo(parser->add_option("SHELL", *shell, "Shell that is to read it")->required(),
            {"bash", "zsh", "fish"});
    parser->footer("Examples:\n  source <(vxsettings completion bash)\n"
                   "  vxsettings completion fish > ~/.config/fish/completions/vxsettings.fish");
    return {parser, [shell](LazySession&, Output& out) {
                out << (*shell == "bash"  ? shell_scripts::bash
                        : *shell == "zsh" ? shell_scripts::zsh
                                          : shell_scripts::fish);
                return ExitCode::done;
            }};
}

}  // namespace vx::tool
