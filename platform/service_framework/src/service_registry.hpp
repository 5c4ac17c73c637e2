#pragma once

#include <cppmicroservices/ServiceProperties.h>
#include <cppmicroservices/ServiceRegistration.h>

#include <memory>
#include <mutex>
#include <string>
#include <unordered_map>
#include <vector>

namespace cppmicroservices {

class BundleContextPrivate;
class BundlePrivate;
class ServiceRecord;

/// The registered services of one framework. Thread-safe.
class ServiceRegistry
{
public:
    /// Throws as BundleContext::RegisterService does.
    ServiceRegistrationU Register(const BundleContextPrivate& context, const InterfaceMapConstPtr& objects,
                                  const ServiceProperties& properties);
    /// Removes a service and ends its uses. Returns false when it was already unregistered.
    bool Unregister(ServiceRecord& record);
    /// Replaces a service's properties and sorts it by its new ranking, both under one lock, so that the
    /// services are always sorted. Throws as ServiceRegistrationBase::SetProperties does.
    void SetProperties(ServiceRecord& record, const ServiceProperties& properties);

    /// Returns the services of an interface, highest ranking first; of all interfaces when it is empty.
    /// Throws std::invalid_argument when the filter is malformed.
    std::vector<ServiceReferenceU> Find(const std::string& interfaceName, const std::string& filter) const;

    std::vector<ServiceReferenceU> RegisteredBy(const BundlePrivate& bundle) const;
    std::vector<ServiceReferenceU> UsedBy(const BundlePrivate& bundle) const;
    /// Unregisters the services of a bundle and ends its uses of other services. Allocates no memory.
    void RemoveBundle(BundlePrivate& bundle);

private:
    using Records = std::vector<std::shared_ptr<ServiceRecord>>;

    void Add(const std::shared_ptr<ServiceRecord>& record);
    void Remove(const ServiceRecord& record);
    /// Returns the services of an interface, or all when it is empty, highest ranking first.
    Records Candidates(const std::string& interfaceId) const;
    template <class Predicate>
    std::vector<ServiceReferenceU> Select(Predicate isSelected) const;
    /// Returns a service that the bundle offers or uses; null when there is none.
    std::shared_ptr<ServiceRecord> FindServiceOf(const BundlePrivate& bundle) const;

    mutable std::mutex mutex_;
    Records all_;
    std::unordered_map<std::string, Records> byInterface_;
};

}  // namespace cppmicroservices
