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
    /// Each object in the map keeps the service in use, with the map or without it.
    InterfaceMapConstPtr GetServiceInterfaceMap() const;
    const ServiceReferenceBase& GetReference() const noexcept { return reference_; }

private:
    InterfaceMapConstPtr Use() const;

    std::shared_ptr<BundleContextPrivate> context_;
    ServiceReferenceBase reference_;
};

/// Hands out the objects of one service. Each stays in use until its pointer and all copies are gone.
template <class S>
class ServiceObjects : private ServiceObjectsBase
{
public:
    /// Null once the service is unregistered or when it cannot be had.
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
