#pragma once

#include <cppmicroservices/ServiceProperties.h>
#include <cppmicroservices/ServiceReference.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <string>

namespace cppmicroservices {

class ServiceRecord;

/// The registering side of a service. Operations on an empty handle or an unregistered service throw
/// std::logic_error.
class US_Framework_EXPORT ServiceRegistrationBase
{
public:
    ServiceRegistrationBase(const ServiceRegistrationBase&);
    ServiceRegistrationBase(ServiceRegistrationBase&&) noexcept;
    ServiceRegistrationBase& operator=(const ServiceRegistrationBase&);
    ServiceRegistrationBase& operator=(ServiceRegistrationBase&&) noexcept;
    ServiceRegistrationBase& operator=(std::nullptr_t);
    ~ServiceRegistrationBase();

    explicit operator bool() const noexcept { return record_ != nullptr; }

    ServiceReferenceBase GetReference(const std::string& interfaceId = {}) const;

    /// Replaces all properties but service.id, objectclass and service.scope. Throws std::invalid_argument
    /// when service.ranking is not an int, std::runtime_error when two keys differ only in case.
    void SetProperties(const ServiceProperties& properties);

    /// Withdraws the service. Objects handed out stay usable until they are let go.
    void Unregister();

    bool operator<(const ServiceRegistrationBase& other) const;
    bool operator==(const ServiceRegistrationBase& other) const noexcept { return record_ == other.record_; }

protected:
    ServiceRegistrationBase();

private:
    friend class ServiceRecord;
    friend class ServiceRegistry;
    friend struct std::hash<ServiceRegistrationBase>;

    explicit ServiceRegistrationBase(std::shared_ptr<ServiceRecord> record);

    /// The record; throws std::logic_error when there is none or the service is unregistered.
    ServiceRecord& Registered() const;

    std::shared_ptr<ServiceRecord> record_;
};

}  // namespace cppmicroservices

template <>
struct std::hash<cppmicroservices::ServiceRegistrationBase>
{
    std::size_t operator()(const cppmicroservices::ServiceRegistrationBase& registration) const noexcept
    {
        return std::hash<std::shared_ptr<cppmicroservices::ServiceRecord>>()(registration.record_);
    }
};
