#pragma once

#include <array>
#include <stdexcept>
#include <string>
#include <string_view>

namespace vx::tool {

/// What the process ends with.
enum class ExitCode : int
{
    done = 0,
    failed = 1,      ///< no such path, a failed check, output that could not be written
    usage = 2,       ///< a command line that means nothing
    notStarted = 3,  ///< bundle or framework could not be started
};

struct ExitMeaning
{
    ExitCode code;
    std::string_view text;
};

/// What each exit code says to whoever called the command.
inline constexpr std::array<ExitMeaning, 4> exitMeanings = {{
    {ExitCode::done, "done"},
    {ExitCode::failed, "no such path, a failed check, or a file that cannot be read or written"},
    {ExitCode::usage, "wrong usage"},
    {ExitCode::notStarted, "the bundle or the framework could not be started"},
}};

/// Ends the command: one line for standard error that says what, where and what to do, and the exit code.
class Failure : public std::runtime_error
{
public:
    Failure(ExitCode code, const std::string& line) : std::runtime_error(line), code_(code) {}

    [[nodiscard]] ExitCode code() const noexcept { return code_; }

private:
    ExitCode code_;
};

}  // namespace vx::tool
