#pragma once

#include <settings/core/factory_setting_properties.hpp>
#include <settings/core/factory_settings_loader.hpp>
#include <settings/core/settings.hpp>

#include <boost/smart_ptr/shared_ptr.hpp>

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace bench {

using Handle = boost::shared_ptr<settings::core::MSettings>;
using Properties = settings::core::detail::FactorySettingProperties;

/// One request of a provider to the settings core.
struct Call
{
    std::size_t parent;  ///< number of the request that made the parent, counted from 1; 0 is the root
    std::string name;
    bool isSetting;
    Properties properties;
};

/// A provider's requests in their order, with names and records ready: what a settings core has to do for a
/// tree, and no more.
class RecordedCalls
{
public:
    explicit RecordedCalls(settings::core::FactorySettingsLoader& loader);

    /// Makes the requests again, under this root.
    void replay(const Handle& root) const;

private:
    std::vector<Call> calls_;
};

/// Has the provider build its tree under a group of any settings core.
void createTreeUnder(settings::core::FactorySettingsLoader& loader, const Handle& group, std::string name);

}  // namespace bench
