#pragma once

#include <cppmicroservices/ServiceProperties.h>
#include <cppmicroservices/ServiceReference.h>

#include <memory>
#include <string>
#include <utility>

namespace cppmicroservices {

class ServiceRecord;

/// A handle to a service for the bundle that registered it. Operations on an empty handle or an unregistered
/// service throw std::logic_error.
class US_Framework_EXPORT ServiceRegistrationBase
{
public:
    explicit operator bool() const noexcept { return record_ != nullptr; }

    ServiceReferenceBase GetReference(const std::string& interfaceId = {}) const;

    /// Replaces all properties except service.id, objectclass and service.scope. Throws std::invalid_argument
    /// when service.ranking is not an int, std::runtime_error when two keys differ only in case.
    void SetProperties(const ServiceProperties& properties);

    /// Unregisters the service. Objects that bundles already hold stay usable until they are released.
    void Unregister();

protected:
    ServiceRegistrationBase() = default;

private:
    friend class ServiceRecord;
    friend class ServiceRegistry;

    explicit ServiceRegistrationBase(std::shared_ptr<ServiceRecord> record) : record_(std::move(record)) {}

    /// Returns the record. Throws std::logic_error when the handle is empty or the service is unregistered.
    ServiceRecord& Registered() const;

    std::shared_ptr<ServiceRecord> record_;
};

}  // namespace cppmicroservices
