#pragma once

#include <cppmicroservices/ServiceProperties.h>
#include <cppmicroservices/ServiceReference.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <string>

namespace cppmicroservices {

class ServiceRecord;

/// A handle to a service for the bundle that registered it. Operations on an empty handle or an unregistered
/// service throw std::logic_error.
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

    /// Replaces all properties except service.id, objectclass and service.scope. Throws std::invalid_argument
    /// when service.ranking is not an int, std::runtime_error when two keys differ only in case.
    void SetProperties(const ServiceProperties& properties);

    /// Unregisters the service. Objects that bundles already hold stay usable until they are released.
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

    /// Returns the record. Throws std::logic_error when the handle is empty or the service is unregistered.
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
