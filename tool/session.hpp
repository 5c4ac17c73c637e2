#pragma once

#include <settings_core/layers.hpp>
#include <settings_core/settings_tree.hpp>

#include <settings/core/settings_file_change.hpp>

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host.hpp"

namespace vx::tool {

/// What the bundle supplied, as long as the bundle runs: members go in reverse order, the host last.
class Session
{
public:
    /// Starts the bundle and has it build its tree. Raises Failure.
    explicit Session(const std::filesystem::path& bundleFile);

    [[nodiscard]] const Host& host() const noexcept { return host_; }
    [[nodiscard]] const core::SettingsTree& tree() const noexcept { return tree_; }

    [[nodiscard]] settings::core::ReleaseChangeTable releaseChanges() const;
    [[nodiscard]] std::vector<std::string> settingPathList() const;

    /// The node at this path, whose root may be left out. Raises Failure that says what became of the path,
    /// or which ones are near.
    [[nodiscard]] const core::Node& node(const std::string& path) const;

    /// The setting at this path, or behind the alias there. Throws Failure as node() does, and for groups and
    /// unresolved aliases.
    [[nodiscard]] const core::Node& setting(const std::string& path) const;

private:
    Host host_;
    core::SettingsTree tree_;
};

/// Starts a session when it is first asked for: a command can say what it knows before.
class LazySession
{
public:
    /// Files that are not named are those of the desktop's base directories.
    LazySession(std::filesystem::path bundleFile, core::LayerFiles named)
        : bundleFile_(std::move(bundleFile)), namedFiles_(std::move(named))
    {}

    [[nodiscard]] const std::filesystem::path& bundleFile() const noexcept { return bundleFile_; }

    /// Raises Failure.
    const Session& get() { return session_ ? *session_ : session_.emplace(bundleFile_); }

    /// Whether the person said which settings files to read.
    [[nodiscard]] bool namesLayerFiles() const noexcept
    {
        return !namedFiles_.installation.empty() || !namedFiles_.personal.empty();
    }

    /// Where the settings files are.
    [[nodiscard]] core::LayerFiles layerFiles() const;

    /// The layers over the session's tree. Raises Failure.
    core::Layers& layers();

    /// Leaves the tree to the end of the process, which frees its memory faster than its destructors do. For
    /// a command that has written all its output. The session still releases the provider and stops bundle
    /// and framework; only objects that the provider put into the tree are not destroyed.
    void leaveTree() const noexcept;

private:
    std::filesystem::path bundleFile_;
    core::LayerFiles namedFiles_;
    std::optional<Session> session_;
    std::optional<core::Layers> layers_;
};

}  // namespace vx::tool
