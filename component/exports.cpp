// The functions that the service framework looks up by name in the library of the bundle.

#include <component/bundle_context.hpp>
#include <component/factory_settings_verdix.hpp>

#include <cppmicroservices/GlobalConfig.h>
#include <cppmicroservices/servicecomponent/detail/ComponentInstanceImpl.hpp>

#include <atomic>
#include <tuple>

namespace settings::verdix {

namespace {

std::atomic<cppmicroservices::BundleContextPrivate*> bundleContext{nullptr};

}  // namespace

cppmicroservices::BundleContextPrivate* getBundleContext()
{
    return bundleContext.load();
}

}  // namespace settings::verdix

using cppmicroservices::service::component::detail::ComponentInstance;
using cppmicroservices::service::component::detail::ComponentInstanceImpl;

extern "C" {

US_ABI_EXPORT ComponentInstance* NewInstance_settings_verdix_FactorySettingsVerdix()
{
    return new ComponentInstanceImpl<settings::verdix::FactorySettingsVerdix,
                                     std::tuple<settings::core::FactorySettingsLoader>>();
}

US_ABI_EXPORT void DeleteInstance_settings_verdix_FactorySettingsVerdix(ComponentInstance* instance)
{
    delete instance;
}

// NOLINTNEXTLINE(bugprone-reserved-identifier): the framework derives this name from that of the bundle
US_ABI_EXPORT void _us_set_bundle_context_instance_com_tarnwick_verdix_factory_settings(
    cppmicroservices::BundleContextPrivate* context)
{
    settings::verdix::bundleContext.exchange(context);
}
}
