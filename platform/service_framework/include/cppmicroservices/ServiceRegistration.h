#pragma once

#include <cppmicroservices/ServiceRegistrationBase.h>

namespace cppmicroservices {

/// The registration of a service under the interfaces I1 and Interfaces.
template <class I1, class... Interfaces>
class ServiceRegistration : public ServiceRegistrationBase
{
public:
    ServiceRegistration() = default;
    ServiceRegistration(const ServiceRegistrationBase& base) : ServiceRegistrationBase(base) {}

    ServiceReference<I1> GetReference() const
    {
        return ServiceRegistrationBase::GetReference(us_service_interface_iid<I1>());
    }
};

using ServiceRegistrationU = ServiceRegistration<void>;

}  // namespace cppmicroservices
