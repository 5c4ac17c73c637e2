#pragma once

#include <cppmicroservices/Any.h>
#include <cppmicroservices/Bundle.h>
#include <cppmicroservices/BundleContext.h>
#include <cppmicroservices/ServiceReference.h>

#include <memory>
#include <string>
#include <unordered_map>

namespace cppmicroservices::service::component {

/// A component's access to its properties, bundle context and service. Valid until the component is
/// deactivated; every operation throws IllegalStateException when the component's bundle has stopped.
class US_Framework_EXPORT ComponentContext
{
public:
    virtual ~ComponentContext() noexcept;

    /// Returns the properties in the manifest, plus component.name and component.id.
    virtual std::unordered_map<std::string, Any> GetProperties() const = 0;
    virtual cppmicroservices::BundleContext GetBundleContext() const = 0;
    /// Returns an empty handle, because one component object serves all bundles.
    virtual Bundle GetUsingBundle() const = 0;
    virtual ServiceReferenceBase GetServiceReference() const = 0;
};

}  // namespace cppmicroservices::service::component
