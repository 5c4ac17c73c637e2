#include "editing/typed_line.hpp"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <optional>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include "cli/command_error.hpp"

namespace vx::tool {

namespace {

/// Hides what is typed until the end of the scope. Signals have their effect only then.
class HiddenTyping
{
public:
    HiddenTyping()
    {
        ::tcgetattr(STDIN_FILENO, &former_);
        termios hidden = former_;
        hidden.c_lflag &= ~static_cast<tcflag_t>(ECHO);
        ::tcsetattr(STDIN_FILENO, TCSAFLUSH, &hidden);  // what was typed before was shown
    }
    HiddenTyping(const HiddenTyping&) = delete;
    HiddenTyping& operator=(const HiddenTyping&) = delete;
    ~HiddenTyping()
    {
        std::fputc('\n', stderr);                        // the user's is hidden too
        ::tcsetattr(STDIN_FILENO, TCSAFLUSH, &former_);  // and leaves no part of a secret for the shell
        signals_.deliver();
    }

    [[nodiscard]] const BlockedSignals& signals() const noexcept { return signals_; }

private:
    BlockedSignals signals_ = blockTypingSignals();
    termios former_ = {};
};

/// Returns what is typed, with the line break, or as far as the end of the input; nothing if the descriptor
/// is readable before. A negative one never is.
std::optional<std::string> readLineUnless(int descriptor)
{
    std::string line;
    for (char next = 0; next != '\n'; line += next) {
        std::array<pollfd, 2> waiting{{{STDIN_FILENO, POLLIN, 0}, {descriptor, POLLIN, 0}}};
        while (::poll(waiting.data(), waiting.size(), -1) == -1 && errno == EINTR) {
        }
        if (waiting.back().revents != 0) {
            return std::nullopt;
        }
        if (::read(STDIN_FILENO, &next, 1) != 1) {
            break;
        }
    }
    return line;
}

std::optional<std::string> ask(const std::string& prompt, Typing typing)
{
    std::optional<HiddenTyping> hidden;
    if (typing == Typing::hidden) {
        hidden.emplace();
    }
    std::fputs(prompt.c_str(), stderr);
    return readLineUnless(hidden ? hidden->signals().descriptor() : -1);
}

}  // namespace

BlockedSignals blockTypingSignals()
{
    return BlockedSignals{SIGHUP, SIGINT, SIGQUIT, SIGTERM, SIGTSTP};
}

std::string readTypedLine(const std::string& prompt, Typing typing)
{
    std::optional<std::string> line;
    while (!(line = ask(prompt, typing))) {
    }
    if (line->empty()) {
        throw CommandError(ExitCode::failed, "nothing is changed: no value was typed");
    }
    if (line->ends_with('\n')) {
        line->pop_back();
    }
    return *std::move(line);
}

}  // namespace vx::tool
