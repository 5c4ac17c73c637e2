#pragma once

#include <foundation/export.hpp>

#include <cstddef>
#include <string>

namespace vx::core {

/// Where a problem is to be fixed.
struct Position
{
    std::string file = {};   ///< as the user named it, or a source file of the tree; empty if there is none
    std::size_t line = 0;    ///< from 1; 0 if the whole file is meant
    std::size_t column = 0;  ///< in characters, from 1; 0 if the whole line is meant
};

/// One problem, as it is reported to a person.
struct Diagnostic
{
    /// Full path of the setting or group, or name of a top-level member of a settings file; empty for a whole
    /// file.
    std::string path;
    std::string message;     ///< what is wrong, and what to do
    Position position = {};  ///< of the part to fix
};

/// Returns "<file>:<line>:<column>: <path>: <message>", without the parts that are not known.
[[nodiscard]] VX_API std::string formatDiagnostic(const Diagnostic& diagnostic);

}  // namespace vx::core
