#pragma once

#include <array>
#include <stdexcept>
#include <string>
#include <string_view>

namespace vx::tool {

/// The exit code of the process.
enum class ExitCode : int
{
    done = 0,
    failed = 1,      ///< no such path, a failed check, or a file that cannot be read or written
    usage = 2,       ///< an invalid command line
    notStarted = 3,  ///< the bundle or the framework could not be started
};

struct ExitMeaning
{
    ExitCode code;
    std::string_view meaning;
};

/// The meaning of each exit code, as help and manual show it.
inline constexpr std::array<ExitMeaning, 4> exitMeanings = {{
    {ExitCode::done, "success"},
    {ExitCode::failed, "no such path, a failed check, or a file that cannot be read or written"},
    {ExitCode::usage, "wrong usage"},
    {ExitCode::notStarted, "the bundle or the framework could not be started"},
}};

/// Ends the command with an exit code, and one line for standard error that says what is wrong, where, and
/// what to do about it.
class CommandError : public std::runtime_error
{
public:
    CommandError(ExitCode code, const std::string& line) : std::runtime_error(line), code_(code) {}

    [[nodiscard]] ExitCode code() const noexcept { return code_; }

private:
    ExitCode code_;
};

}  // namespace vx::tool
