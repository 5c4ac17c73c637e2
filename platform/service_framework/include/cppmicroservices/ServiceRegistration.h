#pragma once

#include <cppmicroservices/ServiceRegistrationBase.h>

#include <concepts>

namespace cppmicroservices {

/// The registration of a service under the interfaces I1 and Interfaces.
template <class I1, class... Interfaces>
class ServiceRegistration : public ServiceRegistrationBase
{
public:
    ServiceRegistration() = default;

    template <class Interface>
    ServiceReference<Interface> GetReference() const
    {
        static_assert((std::same_as<Interface, I1> || ... || std::same_as<Interface, Interfaces>),
                      "Requested interface type not available");
        return ServiceRegistrationBase::GetReference(us_service_interface_iid<Interface>());
    }

    ServiceReference<I1> GetReference() const
    {
        return ServiceRegistrationBase::GetReference(us_service_interface_iid<I1>());
    }

    using ServiceRegistrationBase::operator=;

private:
    friend class BundleContext;
    ServiceRegistration(const ServiceRegistrationBase& base) : ServiceRegistrationBase(base) {}
};

template <>
class ServiceRegistration<void> : public ServiceRegistrationBase
{
public:
    ServiceRegistration() = default;
    ServiceRegistration(const ServiceRegistrationBase& base) : ServiceRegistrationBase(base) {}

    using ServiceRegistrationBase::operator=;
};

using ServiceRegistrationU = ServiceRegistration<void>;

}  // namespace cppmicroservices
