#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <pty.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <termios.h>
#include <tests/support/files.hpp>
#include <tests/tool/process.hpp>
#include <unistd.h>

namespace tests {

namespace {

std::string content(int descriptor)
{
    return readFile("/proc/self/fd/" + std::to_string(descriptor));
}

[[noreturn]] void execTool(const std::vector<std::string>& arguments,
                           const std::vector<std::string>& environment, const std::filesystem::path& state,
                           const char* tool = VX_TOOL_FILE)
{
    std::signal(SIGPIPE, SIG_DFL);
    std::vector<char*> argv{const_cast<char*>(tool)};
    for (const std::string& argument : arguments) {
        argv.push_back(const_cast<char*>(argument.c_str()));
    }
    argv.push_back(nullptr);
    ::setenv("XDG_STATE_HOME", state.c_str(), 1);
    for (const std::string& entry : environment) {
        ::putenv(const_cast<char*>(entry.c_str()));
    }
    ::execv(tool, argv.data());
    std::_Exit(127);
}

int exitCode(pid_t child)
{
    int status = 0;
    EXPECT_EQ(::waitpid(child, &status, 0), child);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

pid_t start(const std::vector<std::string>& arguments, const std::vector<std::string>& environment,
            int output, int errors, const std::string& tool = VX_TOOL_FILE)
{
    static const TestFolder state;
    const pid_t child = ::fork();
    if (child == 0) {
        ::dup2(output, STDOUT_FILENO);
        ::dup2(errors, STDERR_FILENO);
        execTool(arguments, environment, state / "", tool.c_str());
    }
    return child;
}

}  // namespace

RunningTool startTool(const std::vector<std::string>& arguments)
{
    int output[2];
    int errors[2];
    EXPECT_EQ(::pipe2(output, O_CLOEXEC) + ::pipe2(errors, O_CLOEXEC), 0);
    const pid_t process = start(arguments, {}, output[1], errors[1]);
    ::close(output[1]);
    ::close(errors[1]);
    return {process, output[0], errors[0]};
}

std::string readLine(int descriptor)
{
    std::string line;
    for (char next = 0; ::read(descriptor, &next, 1) == 1 && next != '\n';) {
        line += next;
    }
    return line;
}

int endTool(const RunningTool& tool, int signal)
{
    ::kill(tool.process, signal);
    return exitCode(tool.process);
}

ToolRun runTool(const std::vector<std::string>& arguments, const std::vector<std::string>& environment,
                const std::string& tool)
{
    const int output = ::memfd_create("output", MFD_CLOEXEC);
    const int errors = ::memfd_create("errors", MFD_CLOEXEC);
    const int code = exitCode(start(arguments, environment, output, errors, tool));
    ToolRun run{code, content(output), content(errors)};
    ::close(output);
    ::close(errors);
    return run;
}

ToolRun runToolOnTerminal(const std::vector<std::string>& arguments,
                          const std::vector<std::string>& environment, const std::string& typed,
                          const std::string& prompt)
{
    int terminal = -1;
    const pid_t child = ::forkpty(&terminal, nullptr, nullptr, nullptr);
    if (child == 0) {
        execTool(arguments, environment, {});
    }
    std::string input = typed + '\x04';  // the end, so that no question waits for ever
    ToolRun run{};
    char shown[4096];
    for (ssize_t size = 0; size >= 0; size = ::read(terminal, shown, sizeof shown)) {
        run.output.append(shown, static_cast<std::size_t>(size));
        if (run.output.ends_with(prompt) && !input.empty()) {
            EXPECT_EQ(::write(terminal, input.data(), input.size()), static_cast<ssize_t>(input.size()));
            input.clear();
        }
    }
    run.exitCode = exitCode(child);
    termios modes{};
    EXPECT_EQ(::tcgetattr(terminal, &modes), 0);
    EXPECT_NE(modes.c_lflag & ECHO, 0U);
    ::close(terminal);
    return run;
}

}  // namespace tests
