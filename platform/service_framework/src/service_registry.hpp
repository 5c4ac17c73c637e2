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

/// The registered services of one framework. Threads may share it.
class ServiceRegistry
{
public:
    /// Throws as BundleContext::RegisterService does.
    ServiceRegistrationU Register(const BundleContextPrivate& context, const InterfaceMapConstPtr& objects,
                                  const ServiceProperties& properties);
    /// Takes a service out and ends its uses; false when it was unregistered already.
    bool Unregister(ServiceRecord& record);
    /// Replaces a service's properties and moves it to the place of its new ranking, both in one step: an
    /// order in which a ranking changes meanwhile is none. Throws as ServiceRegistrationBase::SetProperties
    /// does.
    void SetProperties(ServiceRecord& record, const ServiceProperties& properties);

    /// The services of an interface, highest first; those of all interfaces when it is empty.
    /// Throws std::invalid_argument when the filter is malformed.
    std::vector<ServiceReferenceU> Find(const std::string& interfaceName, const std::string& filter) const;

    std::vector<ServiceReferenceU> RegisteredBy(const BundlePrivate& bundle) const;
    std::vector<ServiceReferenceU> UsedBy(const BundlePrivate& bundle) const;
    /// Unregisters what a bundle offers and ends its uses of what others offer. Needs no memory.
    void RemoveBundle(BundlePrivate& bundle);

private:
    using Records = std::vector<std::shared_ptr<ServiceRecord>>;

    void Add(const std::shared_ptr<ServiceRecord>& record);
    void Remove(const ServiceRecord& record);
    /// The services of an interface, or all when it is empty, highest first.
    Records Candidates(const std::string& interfaceId) const;
    Records All() const;
    /// A service that the bundle offers or uses; null when there is none.
    std::shared_ptr<ServiceRecord> OneOf(const BundlePrivate& bundle) const;

    mutable std::mutex mutex_;
    Records all_;
    std::unordered_map<std::string, Records> byInterface_;
};

}  // namespace cppmicroservices
