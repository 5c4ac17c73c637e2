#pragma once

#include <foundation/export.hpp>

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace settings::core {

/// One change that a release makes to users' settings files.
class VX_API SettingsFileChange
{
public:
    /// `operation` is "move" or "remove"; a move names its one source and its one target, a removal the one
    /// path that goes and no target.
    SettingsFileChange(const std::string& operation, std::vector<std::string>&& from,
                       std::vector<std::string>&& to);
    SettingsFileChange(const SettingsFileChange& other);
    SettingsFileChange(SettingsFileChange&& other) noexcept;
    SettingsFileChange& operator=(const SettingsFileChange& other);
    SettingsFileChange& operator=(SettingsFileChange&& other) noexcept;
    ~SettingsFileChange();

    /// "move" or "remove".
    [[nodiscard]] const std::string& operation() const noexcept;
    /// The one full path that moves or goes.
    [[nodiscard]] const std::vector<std::string>& from() const noexcept;
    /// The one full path it moves to; empty for a removal.
    [[nodiscard]] const std::vector<std::string>& to() const noexcept;

private:
    std::string operation_;
    std::vector<std::string> from_;
    std::vector<std::string> to_;
};

/// What one release changes, in the order in which the changes apply.
struct ReleaseChangeSet
{
    std::string release;  ///< name of the release: "R2022b"
    /// True when a move leads from one root group to another.
    bool crossesRootGroups = false;
    std::vector<SettingsFileChange> changes;  ///< applied from first to last
};

/// Change sets by index; the oldest release has the lowest.
using ReleaseChangeTable = std::map<std::uint64_t, ReleaseChangeSet>;

}  // namespace settings::core
