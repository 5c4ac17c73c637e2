#include "manual/manual.hpp"

#include "arguments.hpp"
#include "verb.hpp"

namespace vx::tool {

Action addManual(CLI::App& verb)
{
    describe(verb, "The manual page of this command, for man");
    hide(verb);  // for those who build and package it
    return [&app = wholeOf(verb)](LazySession&, Output& out) {
        out << manualPage(app);
        return ExitCode::done;
    };
}

}  // namespace vx::tool
