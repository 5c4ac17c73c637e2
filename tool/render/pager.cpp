#include "render/pager.hpp"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <sys/wait.h>

#include "render/output.hpp"

namespace vx::tool {

namespace {

/// The exit codes of a shell that cannot run a command.
constexpr int notExecutable = 126;
constexpr int notFound = 127;

/// Returns the pager's shell command; empty for none. Whitespace is none too: a shell would run it without an
/// error, and read no output.
std::string pagerCommand()
{
    for (const char* variable : {"VXSETTINGS_PAGER", "PAGER"}) {
        if (const char* value = std::getenv(variable)) {
            const std::string_view command = value;
            const bool isNone = command == "cat" || command.find_first_not_of(" \t\n") == command.npos;
            return isNone ? "" : value;
        }
    }
    return isDumbTerminal() ? "" : "command -v less >/dev/null || exit 127; less";
}

/// Starts a pager that reads from the pipe that is returned; null if there is no shell. Unlike this process,
/// it does not ignore closed pipes. The options of less show colours, quit if the output fits on the screen,
/// and leave it there.
std::FILE* startPager(const std::string& command)
{
    const auto former = std::signal(SIGPIPE, SIG_DFL);
    std::FILE* pipe = ::popen(("export LESS=\"${LESS-FRX}\" LV=\"${LV--c}\"\n" + command).c_str(), "we");
    std::signal(SIGPIPE, former);
    return pipe;
}

}  // namespace

bool showInPager(std::string_view output)
{
    const std::string command = pagerCommand();
    std::FILE* pipe = command.empty() ? nullptr : startPager(command);
    if (pipe == nullptr) {
        return false;
    }
    // Ctrl+C is for the pager, which has the terminal until it ends.
    const auto interrupt = std::signal(SIGINT, SIG_IGN);
    const auto quit = std::signal(SIGQUIT, SIG_IGN);
    std::fwrite(output.data(), 1, output.size(), pipe);  // fails if the pager ends before it has read all
    const int status = ::pclose(pipe);
    std::signal(SIGINT, interrupt);
    std::signal(SIGQUIT, quit);
    const int code = WIFEXITED(status) ? WEXITSTATUS(status) : 0;
    return code != notFound && code != notExecutable;
}

}  // namespace vx::tool
