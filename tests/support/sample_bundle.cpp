#include <cppmicroservices/BundleInitialization.h>
#include <cppmicroservices/servicecomponent/detail/ComponentInstanceImpl.hpp>

#include <tests/support/sample_settings.hpp>
#include <tuple>

using cppmicroservices::service::component::detail::ComponentInstance;
using cppmicroservices::service::component::detail::ComponentInstanceImpl;

extern "C" {

US_ABI_EXPORT ComponentInstance* NewInstance_tests_SampleSettings()
{
    return new ComponentInstanceImpl<tests::SampleSettings,
                                     std::tuple<settings::core::FactorySettingsLoader>>();
}

US_ABI_EXPORT void DeleteInstance_tests_SampleSettings(ComponentInstance* instance)
{
    delete instance;
}
}

CPPMICROSERVICES_INITIALIZE_BUNDLE
