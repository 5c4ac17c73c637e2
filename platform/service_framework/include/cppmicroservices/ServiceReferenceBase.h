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

/// A reference to a registered service. Tests false when it is empty or the service is unregistered; the
/// properties of an unregistered service stay readable. References to the same service are equal even when
/// they name different interfaces.
class US_Framework_EXPORT ServiceReferenceBase
{
public:
    ServiceReferenceBase(const ServiceReferenceBase&);
    ServiceReferenceBase& operator=(const ServiceReferenceBase&);
    ServiceReferenceBase& operator=(std::nullptr_t);
    ~ServiceReferenceBase();

    explicit operator bool() const;

    /// Returns the value of a property; empty when there is none. The key is case-insensitive.
    Any GetProperty(const std::string& key) const;
    std::vector<std::string> GetPropertyKeys() const;
    /// Returns the bundle that registered the service; empty after it is unregistered.
    Bundle GetBundle() const;
    std::vector<Bundle> GetUsingBundles() const;
    std::string GetInterfaceId() const { return interfaceId_; }
    bool IsConvertibleTo(const std::string& interfaceId) const;

    /// Orders references by ascending service.ranking and, for equal rankings, by descending service.id.
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

    /// Makes this a reference to another interface of the same service, or empty when the service does not
    /// have it.
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
