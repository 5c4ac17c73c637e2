#include "manual/manual.hpp"

#include <CLI/CLI.hpp>

#include "verb.hpp"

namespace vx::tool {

Verb addManual(CLI::App& app)
{
    CLI::App* parser = app.add_subcommand("manual", "The manual page of this command, for man");
    parser->group("");  // for those who build and package it
    return {parser, [&app](LazySession&, Output& out) {
                out << manualPage(app);
                return ExitCode::done;
            }};
}

}  // namespace vx::tool
