// What the service framework finds by name in the bundle's library.

#include <component/bundle_context.hpp>
#include <component/factory_settings_verdix.hpp>

#include <foundation/export.hpp>

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

VX_API ComponentInstance* NewInstance_settings_verdix_FactorySettingsVerdix()
{
    return new ComponentInstanceImpl<settings::verdix::FactorySettingsVerdix,
                                     std::tuple<settings::core::FactorySettingsLoader>>();
}

VX_API void DeleteInstance_settings_verdix_FactorySettingsVerdix(ComponentInstance* instance)
{
    delete instance;
}

// NOLINTNEXTLINE(bugprone-reserved-identifier): the framework composes this name from the bundle's
VX_API void _us_set_bundle_context_instance_com_tarnwick_verdix_factory_settings(
    cppmicroservices::BundleContextPrivate* context)
{
    settings::verdix::bundleContext.exchange(context);
}
}
