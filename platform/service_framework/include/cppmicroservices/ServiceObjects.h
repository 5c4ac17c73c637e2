#pragma once

#include <cppmicroservices/BundleContext.h>
#include <cppmicroservices/FrameworkConfig.h>
#include <cppmicroservices/ServiceReference.h>

#include <memory>
#include <type_traits>

namespace cppmicroservices {

class US_Framework_EXPORT ServiceObjectsBase
{
public:
    ServiceObjectsBase(const ServiceObjectsBase&) = delete;
    ServiceObjectsBase& operator=(const ServiceObjectsBase&) = delete;
    ServiceObjectsBase(ServiceObjectsBase&&) noexcept = default;
    ServiceObjectsBase& operator=(ServiceObjectsBase&&) noexcept = default;

protected:
    ServiceObjectsBase(std::shared_ptr<BundleContextPrivate> context, const ServiceReferenceBase& reference);
    ~ServiceObjectsBase() = default;

    std::shared_ptr<void> GetService() const;
    /// Each object in the map shares ownership of the use of the service, even after the map is destroyed.
    InterfaceMapConstPtr GetServiceInterfaceMap() const;

private:
    InterfaceMapConstPtr Use() const;

    std::shared_ptr<BundleContextPrivate> context_;
    ServiceReferenceBase reference_;
};

/// Gives access to the objects of one service. The service is in use until all copies of a returned pointer
/// are destroyed.
template <class S>
class ServiceObjects : private ServiceObjectsBase
{
public:
    /// Returns the object, for S void the objects by interface identifier. Returns null when the service is
    /// unregistered or not available.
    auto GetService() const
    {
        if constexpr (std::is_void_v<S>) {
            return GetServiceInterfaceMap();
        } else {
            return std::static_pointer_cast<S>(ServiceObjectsBase::GetService());
        }
    }

private:
    friend class BundleContext;
    using ServiceObjectsBase::ServiceObjectsBase;
};

}  // namespace cppmicroservices
