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

/// A call of createFactorySetting.
struct Call
{
    std::size_t parent;  ///< index of the parent in order of creation; 0 is the root
    std::string name;
    bool isSetting;
    Properties properties;
};

/// The calls with which a provider builds its tree, recorded with names and properties.
class RecordedCalls
{
public:
    explicit RecordedCalls(settings::core::FactorySettingsLoader& loader);

    /// Replays the minimum that the interface between loader and provider demands for this tree: the recorded
    /// calls, one full name for each group and setting, and the maps of the groups.
    void buildUnder(verdix::settings::FactoryGroup root) const;

private:
    std::vector<Call> calls_;
};

/// Returns a root group as the loader of a settings core passes it to a provider.
[[nodiscard]] verdix::settings::FactoryGroup rootGroup(const Handle& node, std::string name);

}  // namespace bench
