#pragma once

#include <settings_core/diagnostic.hpp>
#include <settings_core/tree/settings_tree.hpp>

#include <settings/core/settings_file_change.hpp>

#include <vector>

namespace vx::review {

/// Returns a diagnostic, with the source file to edit, for:
/// - each factory value that violates a constraint of its own setting;
/// - constraints that no value satisfies, or that are not for the class of the factory value, such as bounds
///   that the class does not have;
/// - value validators without a constraint, and allowed strings that are repeated or begin or end with
///   whitespace;
/// - settings without a constraint that have an error handler, or no factory value, and read-only ones
///   without a factory value;
/// - strings in factory values with control characters, or that are not UTF-8;
/// - native functions that are not found, native validators that accept every value, in-process ones that are
///   empty, and error handlers that throw no message;
/// - aliases whose target is not a setting or leads back to them; targets outside the tree's root are only
///   checked for a forgotten or misspelt root;
/// - names that do not consist of ASCII letters, digits and _, or do not begin with a letter;
/// - names in one group that differ only in letter case;
/// - empty groups;
/// - listed secrets that are not settings;
/// - release changes that move a setting to a path that does not exist, and moved or removed paths that are
///   still in the tree.
/// A few intended exceptions are listed by path.
[[nodiscard]] std::vector<core::Diagnostic> lintTree(const core::SettingsTree& tree,
                                                     const ::settings::core::ReleaseChangeTable& releases);

}  // namespace vx::review
