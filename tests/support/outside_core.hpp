#pragma once

#include <foundation/export.hpp>
#include <settings/core/factory_setting_properties.hpp>
#include <settings/core/factory_settings_loader.hpp>
#include <settings/core/settings.hpp>

#include <boost/smart_ptr/shared_ptr.hpp>

#include <cstddef>
#include <limits>
#include <memory>
#include <string>
#include <vector>

namespace tests {

/// What an OutsideCore throws when it is told to refuse a request.
struct VX_API Refused
{
    std::size_t request;
};

struct CreatedNode
{
    std::string path;
    bool isSetting;
    settings::core::detail::FactorySettingProperties properties;
    boost::shared_ptr<settings::core::MSettings> handle;
};

/// A settings core and a loader that know the interfaces alone, as another environment brings them. The core
/// records what it is asked for, and can refuse one request; the root group stands amid memory of other
/// content.
class OutsideCore
{
    struct Memory;
    std::unique_ptr<Memory> memory_;

public:
    VX_API explicit OutsideCore(std::string rootName);

    /// With the tree that the provider builds; what that throws is passed on.
    VX_API explicit OutsideCore(settings::core::FactorySettingsLoader& loader);

    OutsideCore(const OutsideCore&) = delete;
    OutsideCore& operator=(const OutsideCore&) = delete;
    VX_API ~OutsideCore();

    /// The group to hand to a provider; <tests/support/outside_nodes.hpp> declares it.
    verdix::settings::FactoryGroup& root;

    /// In the order in which they were created.
    std::vector<CreatedNode> nodes;

    /// What was asked for: "name PATH", "group PATH", "setting PATH".
    std::vector<std::string> requests;

    /// Index of the request that is answered by throwing Refused.
    std::size_t refuseAt = std::numeric_limits<std::size_t>::max();

    /// Whether the memory around the root group is as it was.
    [[nodiscard]] VX_API bool isIntactAroundRoot() const;

    /// Throws std::out_of_range when there is no node at this path.
    [[nodiscard]] VX_API const CreatedNode& at(const std::string& path) const;
};

}  // namespace tests
