#pragma once

#include <settings_core/constraints.hpp>
#include <settings_core/node.hpp>

#include <string>
#include <vector>

namespace vx::core {

/// What a check found.
struct Verdict
{
    /// Every rule that the value broke. A check that could not be made because the tree or the installation
    /// is at fault (unknown function, missing library) is among them: what cannot be checked is refused.
    std::vector<Failure> failures;
    /// Checks that this process has no means to make, in words; they refuse nothing.
    std::vector<std::string> skipped;
    /// What to tell the user about a refused value; empty for an accepted one. A setting's error handler has
    /// the word if there is one and it raises a text; else these are the failures, one a line.
    std::string message;

    /// Whether the value keeps every rule that could be checked.
    [[nodiscard]] bool accepted() const noexcept { return failures.empty(); }
};

/// Checks a value that somebody wants a setting to have.
///
/// Where the setting has a factory value, class and shape come from it: a text takes any text of its class, a
/// cell any row of texts, everything else the same class and size. A value-validator record that states a
/// size, if only of rows or columns, or a colour decides about the size instead, and one for a colour about
/// words in place of a triple as well. Then the validator runs, and every value-validator record. In-process
/// and error-handling callables get the setting's node and its own name.
///
/// Raises std::invalid_argument when the node is a group or an alias.
[[nodiscard]] VX_API Verdict checkValue(const Node& setting, const foundation::verdixdata::Array& value);

/// Checks the value that the setting itself brings, fixed or computed. A setting without one passes. A value
/// that cannot be computed is a failure.
[[nodiscard]] VX_API Verdict checkDefaultValue(const Node& setting);

/// The value in the class of the setting's factory value, where it can be given that without loss: a number
/// of another numeric class, a text as character row or as string. Any other value comes back as it is.
[[nodiscard]] VX_API foundation::verdixdata::Array adaptValue(const Node& setting,
                                                              foundation::verdixdata::Array value);

}  // namespace vx::core
