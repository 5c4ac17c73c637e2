#pragma once

#include <settings/core/factory_settings_loader.hpp>

#include <cppmicroservices/BundleContext.h>
#include <cppmicroservices/ServiceReference.h>

#include <memory>

namespace tests {

/// The provider that the started bundle offers; null when there is none.
inline std::shared_ptr<settings::core::FactorySettingsLoader>
factoryLoader(cppmicroservices::BundleContext context)
{
    const auto reference = context.GetServiceReference<settings::core::FactorySettingsLoader>();
    return reference ? context.GetService(reference) : nullptr;
}

}  // namespace tests
