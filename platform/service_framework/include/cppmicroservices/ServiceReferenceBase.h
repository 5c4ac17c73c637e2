#pragma once

#include <cppmicroservices/Any.h>
#include <cppmicroservices/FrameworkConfig.h>

#include <cstddef>
#include <functional>
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

namespace cppmicroservices {

class Bundle;
class ServiceRecord;

/// Names a registered service. Tests false when empty or once the service is unregistered; the properties
/// stay readable then. References to one service are equal, whatever interface they name.
class US_Framework_EXPORT ServiceReferenceBase
{
public:
    ServiceReferenceBase(const ServiceReferenceBase&);
    ServiceReferenceBase& operator=(const ServiceReferenceBase&);
    ServiceReferenceBase& operator=(std::nullptr_t);
    ~ServiceReferenceBase();

    explicit operator bool() const;

    /// The value under a key, looked up without regard to case; empty when there is none.
    Any GetProperty(const std::string& key) const;
    std::vector<std::string> GetPropertyKeys() const;
    /// The bundle that registered the service; empty once it is unregistered.
    Bundle GetBundle() const;
    std::vector<Bundle> GetUsingBundles() const;
    std::string GetInterfaceId() const { return interfaceId_; }
    bool IsConvertibleTo(const std::string& interfaceId) const;

    /// The lower of two has the lower service.ranking or, with equal rankings, the higher service.id.
    bool operator<(const ServiceReferenceBase& other) const;
    bool operator==(const ServiceReferenceBase& other) const noexcept { return record_ == other.record_; }

protected:
    ServiceReferenceBase();
    std::size_t Hash() const noexcept { return std::hash<std::shared_ptr<ServiceRecord>>()(record_); }

private:
    friend class BundleContext;
    friend class BundlePrivate;
    friend class LDAPFilter;
    friend class ServiceObjectsBase;
    friend class ServiceRecord;
    friend class ServiceRegistrationBase;
    friend class ServiceRegistry;
    template <class S>
    friend class ServiceReference;
    friend struct std::hash<ServiceReferenceBase>;

    ServiceReferenceBase(std::shared_ptr<ServiceRecord> record, std::string interfaceId);

    /// Makes this a reference to another interface of the same service; empty when it has no such interface.
    void ConvertTo(const std::string& interfaceId);

    std::shared_ptr<ServiceRecord> record_;
    std::string interfaceId_;
};

US_Framework_EXPORT std::ostream& operator<<(std::ostream& os, const ServiceReferenceBase& reference);

}  // namespace cppmicroservices

template <>
struct std::hash<cppmicroservices::ServiceReferenceBase>
{
    std::size_t operator()(const cppmicroservices::ServiceReferenceBase& reference) const noexcept
    {
        return reference.Hash();
    }
};
