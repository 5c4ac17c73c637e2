#pragma once

#include <settings_core/constraints/constraints.hpp>
#include <settings_core/tree/node.hpp>

#include <string>
#include <vector>

namespace vx::core {

/// The result of checking a value.
struct Verdict
{
    /// The violated constraints. A validator that cannot run because the tree or the installation is wrong
    /// (unknown function, missing library) is one of them: a value that cannot be checked is rejected.
    std::vector<Failure> failures;
    /// Checks unavailable in this process, as sentences. They do not reject the value.
    std::vector<std::string> skipped;
    /// The message for a rejected value; empty for an accepted one. It is what the setting's error handler
    /// throws, if the setting has one and its message is not empty; else the failures, one per line.
    std::string message;

    /// Whether the value violates no constraint.
    [[nodiscard]] bool accepted() const noexcept { return failures.empty(); }
};

/// Checks a value against all constraints of a setting.
///
/// The factory value, if there is one, prescribes class and size: for a character vector any character
/// vector, for a cell any row of character vectors, else the same class and size. If a value validator has a
/// size, or a colour, that decides about the size instead; a colour may also allow words in place of a
/// triple. Then the validator and all value validators run. An in-process validator is called with the
/// setting's node, its name (the last component) and the value; an error handler with that name and the
/// value.
///
/// Throws std::invalid_argument when the node is a group or an alias.
[[nodiscard]] VX_API Verdict checkValue(const Node& setting, const foundation::verdixdata::Array& value);

/// Checks the setting's factory value or run-time default against its validator and value validators. A
/// setting without either passes; a run-time default that cannot be computed is a failure. Throws like
/// checkValue.
[[nodiscard]] VX_API Verdict checkDefaultValue(const Node& setting);

/// Converts a value to the class of the setting's factory value if nothing is lost: numbers of another
/// numeric class, a character vector to a string scalar or back. Returns any other value unchanged. Throws
/// like checkValue.
[[nodiscard]] VX_API foundation::verdixdata::Array adaptValue(const Node& setting,
                                                              foundation::verdixdata::Array value);

}  // namespace vx::core
