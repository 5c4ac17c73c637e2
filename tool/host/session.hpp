#pragma once

#include <settings_core/files/layers.hpp>
#include <settings_core/releases/release_name.hpp>
#include <settings_core/tree/path_lookup.hpp>
#include <settings_core/tree/settings_tree.hpp>

#include <settings/core/settings_file_change.hpp>

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/host.hpp"

namespace vx::tool {

/// A running bundle and the tree that it built. The host is declared first, so that it is destroyed last.
class Session
{
public:
    /// Starts the bundle and builds its tree. Throws CommandError.
    explicit Session(const std::filesystem::path& bundleFile);

    [[nodiscard]] const Host& host() const noexcept { return host_; }
    [[nodiscard]] const core::SettingsTree& tree() const noexcept { return tree_; }

    /// Returns the bundle's table of release changes, which it builds on the first call.
    [[nodiscard]] const settings::core::ReleaseChangeTable& releaseChanges() const;
    [[nodiscard]] std::vector<std::string> settingPathList() const;

    /// Returns the last published release, which settings files are written for: the one that the bundle's
    /// manifest names, else the newest in the table of release changes; nothing for an empty table.
    [[nodiscard]] std::optional<core::ReleaseName> publishedRelease() const;

    /// Returns the node at this path; the root may be left out. Throws CommandError with the release that
    /// moved or removed the path, or with suggestions.
    [[nodiscard]] const core::Node& node(const std::string& path) const;

    /// Returns the setting at this path, or the target of the alias there. Throws CommandError as node()
    /// does, and for groups and unresolved aliases.
    [[nodiscard]] const core::Node& setting(const std::string& path) const;

private:
    Host host_;
    core::SettingsTree tree_;
    mutable std::optional<settings::core::ReleaseChangeTable> releases_;
    mutable std::optional<core::UnknownPaths> unknownPaths_;
};

/// Starts a session on first use, so that commands that need no tree, or report something before, do not wait
/// for it.
class LazySession
{
public:
    /// Empty paths in `named` stand for the files in the XDG base directories.
    LazySession(std::filesystem::path bundleFile, core::LayerFiles named)
        : bundleFile_(std::move(bundleFile)), namedFiles_(std::move(named))
    {}

    [[nodiscard]] const std::filesystem::path& bundleFile() const noexcept { return bundleFile_; }

    /// Returns the session, started if necessary. Throws CommandError.
    const Session& get() { return session_ ? *session_ : session_.emplace(bundleFile_); }

    /// Returns the paths of the settings files. Throws what defaultPersonalFile throws.
    [[nodiscard]] core::LayerFiles layerFiles() const;

    /// Returns the layers over the session's tree, without any file if only factory values are shown. To be
    /// called with the same argument throughout a command. Throws CommandError.
    core::Layers& layers(bool showsFactoryOnly = false);

    /// Leaks the tree, because the end of the process frees the memory faster than destructors do. To be
    /// called when all output is written. The session still releases the provider and stops bundle and
    /// framework; only objects that the provider stored in the tree are not destroyed.
    void leakTree() const noexcept;

private:
    std::filesystem::path bundleFile_;
    core::LayerFiles namedFiles_;
    std::optional<Session> session_;
    std::optional<core::Layers> layers_;
};

}  // namespace vx::tool
