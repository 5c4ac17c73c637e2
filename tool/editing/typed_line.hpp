#pragma once

#include <cstdint>
#include <string>

namespace vx::tool {

/// Whether the terminal shows what is typed.
enum class Typing : std::uint8_t
{
    shown,
    hidden
};

/// Prints the prompt to standard error, and returns the line that the user types at the terminal that
/// standard input is, without the line break. A hidden one is asked for again when the process goes on after
/// it was stopped; whatever ends or stops it, the terminal then shows again what is typed. Throws
/// CommandError when the input ends before anything is typed.
[[nodiscard]] std::string readTypedLine(const std::string& prompt, Typing typing);

}  // namespace vx::tool
