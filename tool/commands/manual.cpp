#include "manual/manual.hpp"

#include "cli/arguments.hpp"
#include "cli/command.hpp"

namespace vx::tool {

Action addManual(CLI::App& command)
{
    setHelp(command, "Print the manual page of vxsettings");
    hideFromHelp(command);  // called by the build
    return [&app = programOf(command)](LazySession&, Output& out) {
        out << manualPage(app);
        return ExitCode::done;
    };
}

}  // namespace vx::tool
