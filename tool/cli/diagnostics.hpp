#pragma once

#include <settings_core/diagnostic.hpp>

#include <boost/json/array.hpp>

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "cli/command_error.hpp"
#include "host/session.hpp"
#include "render/output.hpp"

namespace vx::tool {

/// Writes "vxsettings: " and the message to standard error as one line, with unprintable characters escaped.
void printMessage(std::string_view message);

/// As printMessage, for what a user may want to know although nothing is wrong with the command. Writes
/// nothing once hints are turned off.
void printHint(std::string_view message);

/// Gives a hint at the hidden nodes that a command left out of its output, if any, after that output.
void hintAtHidden(std::size_t leftOut, Output& out);

/// Gives hints at the settings in files that have no effect, file by file, with commands that fix them, after
/// the output. Throws what Layers throws.
void hintAtFileProblems(const Session& session, core::Layers& layers, Output& out);

/// Turns hints off, as --quiet does.
void turnHintsOff() noexcept;

/// Some of many diagnostics, for people to read.
struct DiagnosticSample
{
    std::vector<core::Diagnostic> shown;
    std::map<std::string, std::size_t> leftOut;  ///< how many more there are, by kind
};

/// Returns the first 20 diagnostics of each kind.
[[nodiscard]] DiagnosticSample firstOfEachKind(const std::vector<core::Diagnostic>& diagnostics);

/// Writes one line for each diagnostic. Line breaks become semicolons.
void writeDiagnostics(const std::vector<core::Diagnostic>& diagnostics, Output& out);

/// Returns an array of objects with line, column, path and message.
[[nodiscard]] boost::json::array diagnosticsJson(const std::vector<core::Diagnostic>& diagnostics);

/// Writes the errors in the definition of a tree, with the files to edit, as text or as JSON. Returns failed
/// if there are any.
[[nodiscard]] ExitCode reportDefinitionErrors(const std::vector<core::Diagnostic>& errors, Output& out);

}  // namespace vx::tool
