#pragma once

#include <builder/factory_node.hpp>

#include <settings/core/factory_setting_properties.hpp>
#include <settings/core/factory_settings_loader.hpp>

#include <cstddef>
#include <limits>
#include <string>
#include <vector>

namespace tests {

/// What an OutsideCore raises when it is told to refuse a node.
struct Refused
{
    std::size_t index;
};

struct CreatedNode
{
    std::string path;
    bool isSetting;
    settings::core::detail::FactorySettingProperties properties;
};

/// A settings core written against the interfaces alone, as another environment would bring: it records what
/// it is asked for, and can refuse one request.
class OutsideCore
{
public:
    explicit OutsideCore(std::string rootName);

    /// With the tree that the provider builds; what that raises is passed on.
    explicit OutsideCore(settings::core::FactorySettingsLoader& loader);

    OutsideCore(const OutsideCore&) = delete;
    OutsideCore& operator=(const OutsideCore&) = delete;

    /// The group to hand to a provider.
    verdix::settings::FactoryGroup root;

    /// In the order of the requests.
    std::vector<CreatedNode> nodes;

    /// Index of the request that is answered by raising Refused.
    std::size_t refuseAt = std::numeric_limits<std::size_t>::max();

    /// The node at this path; the test fails, and std::out_of_range is raised, when there is none.
    [[nodiscard]] const CreatedNode& at(const std::string& path) const;
};

}  // namespace tests
