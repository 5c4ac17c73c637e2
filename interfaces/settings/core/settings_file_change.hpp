#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace settings::core {

/// One change that a release makes to users' settings files.
class SettingsFileChange
{
public:
    /// `operation` is "move" or "remove"; a move names its one source and its one target, a removal the one
    /// path that goes and no target.
    SettingsFileChange(const std::string& operation, std::vector<std::string>&& from,
                       std::vector<std::string>&& to)
        : operation_(operation), from_(std::move(from)), to_(std::move(to))
    {}

    [[nodiscard]] const std::string& operation() const noexcept { return operation_; }
    [[nodiscard]] const std::vector<std::string>& from() const noexcept { return from_; }
    [[nodiscard]] const std::vector<std::string>& to() const noexcept { return to_; }

private:
    std::string operation_;
    std::vector<std::string> from_;
    std::vector<std::string> to_;
};

/// What one release changes, in the order in which the changes apply.
struct ReleaseChangeSet
{
    std::string release;
    /// True when a move leads from one root group to another.
    bool crossesRootGroups = false;
    std::vector<SettingsFileChange> changes;
};

/// Change sets by index; the oldest release has the lowest.
using ReleaseChangeTable = std::map<std::uint64_t, ReleaseChangeSet>;

}  // namespace settings::core
