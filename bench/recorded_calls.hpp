#pragma once

#include <builder/factory_node.hpp>

#include <settings/core/factory_setting_properties.hpp>
#include <settings/core/factory_settings_loader.hpp>
#include <settings/core/settings.hpp>

#include <boost/smart_ptr/shared_ptr.hpp>

#include <cstddef>
#include <string>
#include <vector>

namespace bench {

using Handle = boost::shared_ptr<settings::core::MSettings>;
using Properties = settings::core::detail::FactorySettingProperties;

/// One request of a provider to the settings core.
struct Call
{
    std::size_t parent;  ///< number of the group that gets the node: groups count from 1, the root is 0
    std::string name;
    bool isSetting;
    Properties properties;
};

/// A provider's requests in their order, with names and properties ready.
class RecordedCalls
{
public:
    explicit RecordedCalls(settings::core::FactorySettingsLoader& loader);

    /// Does what the interface between loader and provider demands for this tree, and nothing else: the
    /// requests, one full name for each group and setting, and the indexes of the groups.
    void buildUnder(verdix::settings::FactoryGroup root) const;

private:
    std::vector<Call> calls_;
};

/// A group as the settings core's loader hands it to a provider, under any settings core.
[[nodiscard]] verdix::settings::FactoryGroup rootGroup(const Handle& node, std::string name);

}  // namespace bench
