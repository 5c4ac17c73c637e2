#include "editing/text_editor.hpp"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <spawn.h>
#include <sstream>
#include <string_view>
#include <sys/wait.h>
#include <unistd.h>

#include "cli/command_error.hpp"

namespace vx::tool {

namespace {

constexpr std::array<const char*, 3> usualEditors{"sensible-editor", "editor", "vi"};

bool isInstalled(const std::string& program)
{
    const char* variable = std::getenv("PATH");
    std::istringstream folders(variable == nullptr ? "" : variable);
    for (std::string folder; std::getline(folders, folder, ':');) {
        if (::access((std::filesystem::path(folder) / program).c_str(), X_OK) == 0) {
            return true;
        }
    }
    return false;
}

/// Sets what a signal does until the end of the scope.
class SignalAction
{
public:
    SignalAction(int signal, void (*action)(int)) : signal_(signal)
    {
        struct sigaction wanted = {};
        wanted.sa_handler = action;
        ::sigaction(signal_, &wanted, &former_);
    }
    SignalAction(const SignalAction&) = delete;
    SignalAction& operator=(const SignalAction&) = delete;
    ~SignalAction() { ::sigaction(signal_, &former_, nullptr); }

    /// Adds the signal to those that an editor gets with the default action, unless this process was started
    /// to ignore it.
    void addToDefaults(sigset_t& defaults) const
    {
        if (former_.sa_handler != SIG_IGN) {
            ::sigaddset(&defaults, signal_);
        }
    }

private:
    int signal_;
    struct sigaction former_ = {};
};

volatile std::sig_atomic_t editorProcess = 0;  ///< 0 before it is started
volatile std::sig_atomic_t isTerminated = 0;

void passOnToEditor(int signal)
{
    isTerminated = 1;
    if (editorProcess != 0) {
        ::kill(editorProcess, signal);
    }
}

CommandError failure(const std::string& command, const std::string& what)
{
    return {ExitCode::failed, "nothing is changed: the editor \"" + command + "\" " + what};
}

/// Returns the shell script that runs the command on the file that is the script's argument. The shell
/// becomes the program of a simple command, which then gets all signals itself. Otherwise the shell survives
/// those that the terminal also sends to it.
std::string scriptFor(const std::string& command)
{
    const bool isSimple = command.find_first_of(";&|=(){}\n") == std::string::npos;
    return (isSimple ? "exec " : "trap : INT QUIT; ") + command + " \"$@\"";
}

/// Starts the command in the shell, with these signals at their default actions.
pid_t start(const std::string& command, const std::filesystem::path& file, const sigset_t& defaults)
{
    posix_spawnattr_t attributes;
    ::posix_spawnattr_init(&attributes);
    ::posix_spawnattr_setsigdefault(&attributes, &defaults);
    ::posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF);
    std::array<std::string, 5> words{"sh", "-c", scriptFor(command), command, file.string()};
    std::array<char*, 6> arguments{};
    std::ranges::transform(words, arguments.begin(), [](std::string& word) { return word.data(); });
    pid_t process = 0;
    const int error = ::posix_spawn(&process, "/bin/sh", nullptr, &attributes, arguments.data(), environ);
    ::posix_spawnattr_destroy(&attributes);
    if (error != 0) {
        throw failure(command, std::string("cannot be started: ") + std::strerror(error));
    }
    return process;
}

/// Returns the status of the process when it has ended.
int waitFor(pid_t process)
{
    int status = 0;
    while (::waitpid(process, &status, 0) == -1 && errno == EINTR) {
    }
    return status;
}

}  // namespace

std::string textEditorCommand()
{
    for (const char* variable : {"VISUAL", "EDITOR"}) {
        const char* command = std::getenv(variable);
        if (command != nullptr && *command != '\0') {
            return command;
        }
    }
    const auto* found = std::ranges::find_if(usualEditors, isInstalled);
    if (found == usualEditors.end()) {
        throw CommandError(ExitCode::failed,
                           "no text editor: VISUAL and EDITOR are not set, and sensible-editor, "
                           "editor and vi are not installed; set EDITOR to the command of one");
    }
    return *found;
}

void runTextEditor(const std::string& command, const std::filesystem::path& file)
{
    const SignalAction interrupt(SIGINT, SIG_IGN);
    const SignalAction quit(SIGQUIT, SIG_IGN);
    const SignalAction hangUp(SIGHUP, SIG_IGN);
    sigset_t defaults = {};
    for (const SignalAction* action : {&interrupt, &quit, &hangUp}) {
        action->addToDefaults(defaults);
    }
    for (const int ignoredByMain : {SIGPIPE, SIGXFSZ}) {
        ::sigaddset(&defaults, ignoredByMain);
    }
    isTerminated = 0;
    editorProcess = 0;
    const SignalAction terminate(SIGTERM, passOnToEditor);
    const pid_t process = start(command, file, defaults);
    editorProcess = process;
    if (isTerminated != 0) {
        ::kill(process, SIGTERM);  // it came before there was an editor to pass it on to
    }
    const int status = waitFor(process);
    if (WIFSIGNALED(status)) {
        throw failure(command, std::string("was ended by a signal: ") + ::strsignal(WTERMSIG(status)));
    }
    if (WEXITSTATUS(status) != 0) {
        throw failure(command, "failed with exit code " + std::to_string(WEXITSTATUS(status)));
    }
}

}  // namespace vx::tool
