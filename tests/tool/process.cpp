#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/wait.h>
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
                           const std::vector<std::string>& environment, const std::filesystem::path& state)
{
    std::signal(SIGPIPE, SIG_DFL);
    std::vector<char*> argv{const_cast<char*>(VX_TOOL_FILE)};
    for (const std::string& argument : arguments) {
        argv.push_back(const_cast<char*>(argument.c_str()));
    }
    argv.push_back(nullptr);
    ::setenv("XDG_STATE_HOME", state.c_str(), 1);
    for (const std::string& entry : environment) {
        ::putenv(const_cast<char*>(entry.c_str()));
    }
    ::execv(VX_TOOL_FILE, argv.data());
    std::_Exit(127);
}

RunningTool start(const std::vector<std::string>& arguments, const std::vector<std::string>& environment,
                  int output, int errors)
{
    static const TestFolder state;
    const pid_t child = ::fork();
    if (child == 0) {
        ::dup2(output, STDOUT_FILENO);
        ::dup2(errors, STDERR_FILENO);
        execTool(arguments, environment, state / "");
    }
    return {child, output, errors};
}

}  // namespace

RunningTool startTool(const std::vector<std::string>& arguments)
{
    int output[2];
    int errors[2];
    EXPECT_EQ(::pipe2(output, O_CLOEXEC) + ::pipe2(errors, O_CLOEXEC), 0);
    const pid_t process = start(arguments, {}, output[1], errors[1]).process;
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
    int status = 0;
    EXPECT_EQ(::waitpid(tool.process, &status, 0), tool.process);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

ToolRun runTool(const std::vector<std::string>& arguments, const std::vector<std::string>& environment)
{
    const int output = ::memfd_create("output", MFD_CLOEXEC);
    const int errors = ::memfd_create("errors", MFD_CLOEXEC);
    const int exitCode = endTool(start(arguments, environment, output, errors), 0);
    ToolRun run{exitCode, content(output), content(errors)};
    ::close(output);
    ::close(errors);
    return run;
}

}  // namespace tests
