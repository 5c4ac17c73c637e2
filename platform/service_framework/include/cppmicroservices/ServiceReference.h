#pragma once

#include <cppmicroservices/ServiceInterface.h>
#include <cppmicroservices/ServiceReferenceBase.h>

#include <type_traits>

namespace cppmicroservices {

/// A reference to a service under the interface S; void names no interface.
template <class S>
class ServiceReference : public ServiceReferenceBase
{
public:
    using ServiceType = S;

    ServiceReference() = default;

    /// Converts to a reference under the interface S; empty when the service does not have that interface.
    ServiceReference(const ServiceReferenceBase& base) : ServiceReferenceBase(base)
    {
        if constexpr (!std::is_void_v<S>) {
            ConvertTo(us_service_interface_iid<S>());
        }
    }
};

using ServiceReferenceU = ServiceReference<void>;

}  // namespace cppmicroservices
