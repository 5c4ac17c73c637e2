#pragma once

#include <settings_core/diagnostic.hpp>
#include <settings_core/tree/node.hpp>
#include <settings_core/values/value_parsing.hpp>

#include <foundation/export.hpp>
#include <foundation/verdixdata/array.hpp>

#include <optional>

namespace vx::core {

/// How a user writes a value, and thus how a message writes values that it advises.
struct Writing
{
    Notation notation = Notation::script;  ///< of the value
    /// The diagnostic has the position of the error. Otherwise the value is an argument of a command, and the
    /// message tells the column, and quotes values for a shell.
    bool hasPosition = true;
};

/// Checks a value against all constraints of a setting. Returns a diagnostic with the setting's path and
/// without a position; nothing for a valid value. Its message is as of describeRejection(), except that a
/// message of the validator is used as it is if all else is right.
///
/// The factory value, if there is one, prescribes class and size: for a character vector any character
/// vector, for a cell any row of character vectors, else the same class and size. If a value validator has a
/// size, or a colour, that decides about the size instead; a colour may also allow words in place of a
/// triple. Then the validator and all value validators run. An in-process validator is called with the
/// setting's node, its name (the last component) and the value.
///
/// A validator that cannot run because the tree or the installation is wrong (unknown function, missing
/// library) rejects every value; one in the managed runtime, which is unavailable in this process, none. If
/// the setting has an error handler, it is called for an invalid value, with the setting's name and the
/// value, and the message that it throws replaces all others. A secret is not shown, nor any such message.
///
/// Throws std::invalid_argument when the node is a group or an alias.
[[nodiscard]] VX_API std::optional<Diagnostic>
checkValue(const Node& setting, const foundation::verdixdata::Array& value, const Writing& writing = {});

/// Whether checkValue would return nothing for the value. Composes no message and does not call the error
/// handler, so that values can be tried. Throws like checkValue.
[[nodiscard]] bool acceptsValue(const Node& setting, const foundation::verdixdata::Array& value);

/// Checks the setting's factory value or run-time default against its validator and value validators. A
/// setting without either passes; a run-time default that cannot be computed does not. Throws like
/// checkValue.
[[nodiscard]] VX_API std::optional<Diagnostic> checkDefaultValue(const Node& setting);

/// Converts a value to the class of the setting's factory value if nothing is lost: numbers of another
/// numeric class, a character vector to a string scalar or back. Returns any other value unchanged. Throws
/// like checkValue.
[[nodiscard]] VX_API foundation::verdixdata::Array adaptValue(const Node& setting,
                                                              foundation::verdixdata::Array value);

}  // namespace vx::core
