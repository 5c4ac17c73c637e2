#pragma once

#include <cppmicroservices/BundleContext.h>
#include <cppmicroservices/FrameworkConfig.h>
#include <cppmicroservices/ServiceReference.h>

#include <memory>

namespace cppmicroservices {

class US_Framework_EXPORT ServiceObjectsBase
{
public:
    ServiceObjectsBase(const ServiceObjectsBase&) = delete;
    ServiceObjectsBase& operator=(const ServiceObjectsBase&) = delete;
    ServiceObjectsBase(ServiceObjectsBase&&) noexcept;
    ServiceObjectsBase& operator=(ServiceObjectsBase&&) noexcept;

protected:
    ServiceObjectsBase(std::shared_ptr<BundleContextPrivate> context, const ServiceReferenceBase& reference);
    ~ServiceObjectsBase();

    std::shared_ptr<void> GetService() const;
    /// Each object in the map shares ownership of the use of the service, even after the map is destroyed.
    InterfaceMapConstPtr GetServiceInterfaceMap() const;
    const ServiceReferenceBase& GetReference() const noexcept { return reference_; }

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
    /// Returns null when the service is unregistered or not available.
    std::shared_ptr<S> GetService() const
    {
        return std::static_pointer_cast<S>(ServiceObjectsBase::GetService());
    }

    ServiceReference<S> GetServiceReference() const { return GetReference(); }

private:
    friend class BundleContext;
    using ServiceObjectsBase::ServiceObjectsBase;
};

template <>
class ServiceObjects<void> : private ServiceObjectsBase
{
public:
    InterfaceMapConstPtr GetService() const { return GetServiceInterfaceMap(); }

    ServiceReferenceU GetServiceReference() const { return GetReference(); }

private:
    friend class BundleContext;
    using ServiceObjectsBase::ServiceObjectsBase;
};

}  // namespace cppmicroservices
