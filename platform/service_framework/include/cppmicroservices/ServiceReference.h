#pragma once

#include <cppmicroservices/ServiceInterface.h>
#include <cppmicroservices/ServiceReferenceBase.h>

namespace cppmicroservices {

/// A reference to a service under the interface S.
template <class S>
class ServiceReference : public ServiceReferenceBase
{
public:
    using ServiceType = S;

    ServiceReference() = default;

    /// Converts to a reference under the interface S; empty when the service does not have that interface.
    ServiceReference(const ServiceReferenceBase& base) : ServiceReferenceBase(base)
    {
        ConvertTo(us_service_interface_iid<S>());
    }

    using ServiceReferenceBase::operator=;
    using ServiceReferenceBase::Hash;
    bool operator==(const ServiceReference& other) const noexcept
    {
        return ServiceReferenceBase::operator==(other);
    }
};

/// A reference to a service that names no interface.
template <>
class ServiceReference<void> : public ServiceReferenceBase
{
public:
    using ServiceType = void;

    ServiceReference() = default;
    ServiceReference(const ServiceReferenceBase& base) : ServiceReferenceBase(base) {}

    using ServiceReferenceBase::operator=;
    using ServiceReferenceBase::Hash;
    bool operator==(const ServiceReference& other) const noexcept
    {
        return ServiceReferenceBase::operator==(other);
    }
};

using ServiceReferenceU = ServiceReference<void>;

}  // namespace cppmicroservices

template <class S>
struct std::hash<cppmicroservices::ServiceReference<S>>
{
    std::size_t operator()(const cppmicroservices::ServiceReference<S>& reference) const noexcept
    {
        return reference.Hash();
    }
};
