#pragma once

#include <settings_core/diagnostic.hpp>
#include <settings_core/tree/settings_tree.hpp>

#include <filesystem>
#include <vector>

namespace vx::review {

/// Returns a diagnostic, with the catalog file to edit, for:
/// - files that cannot be parsed, or that belong to no area of the tree;
/// - entries of paths that are not in the tree or are aliases, in the wrong file, or out of tree order;
/// - unknown members, and `values` that name strings which the constraint does not allow;
/// - keywords that repeat path or sentence;
/// - English sentences that only repeat the title, are longer than 120 characters, or end without a period;
/// - groups and settings without an English sentence that the file "undescribed" does not list;
/// - lines of "undescribed" that are out of tree order, unknown paths, or paths with a sentence.
/// `folder` has a folder for each language, and "undescribed". Throws std::runtime_error if a file cannot be
/// read.
[[nodiscard]] std::vector<core::Diagnostic> lintCatalog(const core::SettingsTree& tree,
                                                        const std::filesystem::path& folder);

}  // namespace vx::review
