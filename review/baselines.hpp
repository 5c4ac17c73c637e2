#pragma once

#include <settings_core/diagnostic.hpp>
#include <settings_core/releases/release_name.hpp>

#include <string>
#include <vector>

#include "release_tree.hpp"

namespace vx::review {

/// The tree of a published release.
struct Baseline
{
    std::string name;           ///< "R2026a", or "R2026a.1" for its first patch release
    core::ReleaseName release;  ///< without the number of the patch release
    bool isPatch;
    std::string file;
    ReleaseTree content;
};

/// The trees of all published releases, oldest first.
struct Baselines
{
    std::string folder;  ///< empty if a single file was read
    std::vector<Baseline> list;
    std::vector<core::Diagnostic> diagnostics;  ///< about files and checksums; such files are not in the list
};

/// Reads a baseline, or all baselines of a folder: files such as R2026a.json. In a folder, the file
/// "checksums", which has a line as from cksum(1) for each baseline, must agree with the files. Throws
/// std::runtime_error if a file cannot be read or is no baseline.
[[nodiscard]] Baselines readBaselines(const std::string& fileOrFolder);

/// Returns the release that follows this one: R2026b after R2026a.
[[nodiscard]] core::ReleaseName releaseAfter(const core::ReleaseName& release) noexcept;

}  // namespace vx::review
