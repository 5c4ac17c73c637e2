#pragma once

#include <cppmicroservices/Any.h>
#include <cppmicroservices/Bundle.h>
#include <cppmicroservices/BundleContext.h>
#include <cppmicroservices/ServiceReference.h>

#include <memory>
#include <string>
#include <unordered_map>

namespace cppmicroservices::service::component {

/// What a component learns about itself. Valid until the component is deactivated; every operation throws
/// IllegalStateException when the component's bundle has stopped.
class US_Framework_EXPORT ComponentContext
{
public:
    virtual ~ComponentContext() noexcept;

    /// The properties of the manifest, and component.name and component.id.
    virtual std::unordered_map<std::string, Any> GetProperties() const = 0;
    virtual cppmicroservices::BundleContext GetBundleContext() const = 0;
    /// Empty, as one component object serves all bundles.
    virtual Bundle GetUsingBundle() const = 0;
    virtual ServiceReferenceBase GetServiceReference() const = 0;
};

}  // namespace cppmicroservices::service::component
