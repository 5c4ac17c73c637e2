#pragma once

#include <cstdint>
#include <string>

#include "host/blocked_signals.hpp"

namespace vx::tool {

/// Whether the terminal shows what is typed.
enum class Typing : std::uint8_t
{
    shown,
    hidden
};

/// Blocks the signals that readTypedLine holds back. Threads that are started meanwhile leave them to it for
/// good.
[[nodiscard]] BlockedSignals blockTypingSignals();

/// Prints the prompt to standard error, and returns the line that the user types at the terminal that
/// standard input is, without the line break. A hidden one is asked for again when the process goes on after
/// it was stopped; whatever ends or stops it, the terminal then shows again what is typed. Throws
/// CommandError when the input ends before anything is typed.
[[nodiscard]] std::string readTypedLine(const std::string& prompt, Typing typing);

}  // namespace vx::tool
