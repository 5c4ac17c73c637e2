#pragma once

#include <foundation/export.hpp>

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace settings::core {

/// A change that a release makes to users' settings files.
class VX_API SettingsFileChange
{
public:
    /// `operation` is "move" or "remove". `from` has one path; `to` has one path for a move and is empty for
    /// a removal.
    SettingsFileChange(const std::string& operation, std::vector<std::string>&& from,
                       std::vector<std::string>&& to);
    /// Copies are independent.
    ///@{
    SettingsFileChange(const SettingsFileChange& other);
    SettingsFileChange(SettingsFileChange&& other) noexcept;
    SettingsFileChange& operator=(const SettingsFileChange& other);
    SettingsFileChange& operator=(SettingsFileChange&& other) noexcept;
    ///@}
    ~SettingsFileChange();

    /// Returns "move" or "remove".
    [[nodiscard]] const std::string& operation() const noexcept;
    /// Returns the one full path that is moved or removed.
    [[nodiscard]] const std::vector<std::string>& from() const noexcept;
    /// Returns the one full path that is the target of a move; empty for a removal.
    [[nodiscard]] const std::vector<std::string>& to() const noexcept;

private:
    std::string operation_;
    std::vector<std::string> from_;
    std::vector<std::string> to_;
};

/// The changes of one release.
struct ReleaseChangeSet
{
    std::string release;  ///< name of the release: "R2022b"
    /// True if a change moves a path to another root group.
    bool crossesRootGroups = false;
    std::vector<SettingsFileChange> changes;  ///< applied in this order
};

/// Change sets by index; older releases have lower indices.
using ReleaseChangeTable = std::map<std::uint64_t, ReleaseChangeSet>;

}  // namespace settings::core
