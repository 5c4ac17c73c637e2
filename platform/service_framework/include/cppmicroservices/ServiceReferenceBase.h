#pragma once

#include <cppmicroservices/Any.h>
#include <cppmicroservices/FrameworkConfig.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace cppmicroservices {

class Bundle;
class ServiceRecord;

/// A reference to a registered service. Tests false when it is empty or the service is unregistered; the
/// properties of an unregistered service stay readable. References to the same service are equal even when
/// they name different interfaces.
class US_Framework_EXPORT ServiceReferenceBase
{
public:
    explicit operator bool() const;

    /// Returns the value of a property; empty when there is none. The key is case-insensitive.
    Any GetProperty(const std::string& key) const;
    std::vector<std::string> GetPropertyKeys() const;
    /// Returns the bundle that registered the service; empty after it is unregistered.
    Bundle GetBundle() const;
    std::vector<Bundle> GetUsingBundles() const;
    std::string GetInterfaceId() const { return interfaceId_; }

    /// Orders references by ascending service.ranking and, for equal rankings, by descending service.id.
    bool operator<(const ServiceReferenceBase& other) const;
    bool operator==(const ServiceReferenceBase& other) const noexcept { return record_ == other.record_; }

protected:
    ServiceReferenceBase() = default;

private:
    friend class BundleContext;
    friend class ServiceObjectsBase;
    friend class ServiceRegistrationBase;
    friend class ServiceRegistry;
    template <class S>
    friend class ServiceReference;

    ServiceReferenceBase(std::shared_ptr<ServiceRecord> record, std::string interfaceId)
        : record_(std::move(record)), interfaceId_(std::move(interfaceId))
    {}

    /// Makes this a reference to another interface of the same service, or empty when the service does not
    /// have it.
    void ConvertTo(const std::string& interfaceId);

    std::shared_ptr<ServiceRecord> record_;
    std::string interfaceId_;
};

}  // namespace cppmicroservices
