#pragma once

#include <cppmicroservices/AnyMap.h>
#include <cppmicroservices/ServiceException.h>
#include <cppmicroservices/ServiceInterface.h>
#include <cppmicroservices/ServiceProperties.h>
#include <cppmicroservices/ServiceReferenceBase.h>

#include <atomic>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace cppmicroservices {

class Bundle;
class BundlePrivate;
class FrameworkEvent;

/// A registered service: its objects, properties and users. References share ownership of the record, so that
/// the properties stay readable after the service is unregistered. Thread-safe; no lock is held while a
/// service factory runs.
class ServiceRecord : public std::enable_shared_from_this<ServiceRecord>
{
public:
    /// Throws as BundleContext::RegisterService does.
    ServiceRecord(const std::shared_ptr<BundlePrivate>& owner, InterfaceMapConstPtr objects,
                  const ServiceProperties& properties);

    const std::vector<std::string>& Interfaces() const noexcept { return interfaces_; }

    /// Returns true if a lookup returns this service before the other.
    bool RanksBefore(const ServiceRecord& other) const noexcept;

    std::shared_ptr<const AnyMap> Properties() const;
    /// Returns the properties for SwapProperties. Copies values, which may run code of other libraries, so
    /// call it without holding a lock.
    std::shared_ptr<const AnyMap> MakeReplacement(const ServiceProperties& given) const;
    /// Replaces the properties and the ranking. Only for the registry, which keeps services ordered by
    /// ranking. Throws std::invalid_argument, and changes nothing, when the ranking is not an int.
    void SwapProperties(std::shared_ptr<const AnyMap>& other);

    /// Returns the bundle that registered the service; null after it is unregistered.
    std::shared_ptr<BundlePrivate> Owner() const;
    std::vector<std::shared_ptr<BundlePrivate>> Users() const;
    bool IsUsedBy(const BundlePrivate& bundle) const;

    /// Returns the service's objects for a bundle, which is a user until all copies of the result are
    /// destroyed; null when there are none. Throws SharedLibraryException when a component's library cannot
    /// be loaded.
    InterfaceMapConstPtr Use(const std::shared_ptr<BundlePrivate>& user);

    /// Ends one use by a bundle, if it is a user.
    void Release(const std::weak_ptr<BundlePrivate>& user);

    /// Unregisters the service; returns false when it was already unregistered.
    bool Unregister();

private:
    using User = std::weak_ptr<BundlePrivate>;
    struct UserEntry
    {
        int uses = 0;
        InterfaceMapConstPtr objects;  // created by the factory for this bundle
    };
    class Usage;

    std::shared_ptr<const AnyMap> MakeProperties(const ServiceProperties& given) const;
    InterfaceMapConstPtr Acquire(const std::shared_ptr<BundlePrivate>& user);
    /// Makes the bundle a user of the objects created for it, unless another thread has done so in the
    /// meantime. Returns the objects in use; null when the service is unregistered.
    InterfaceMapConstPtr AddUser(const std::shared_ptr<BundlePrivate>& user, const UserEntry& made);
    InterfaceMapConstPtr MakeObjects(const std::shared_ptr<BundlePrivate>& user, ServiceFactory& factory);
    void GiveBack(ServiceFactory& factory, const User& user, const InterfaceMapConstPtr& objects);
    void ReportError(const Bundle& origin, const std::string& message, ServiceException::Type type) const;
    /// Sends an event to the framework's listeners; does nothing after the framework is destroyed.
    void Report(const FrameworkEvent& event) const;

    const long id_;
    const bool isFactory_;
    std::vector<std::string> interfaces_;
    std::atomic<int> ranking_ = 0;

    mutable std::mutex mutex_;
    std::weak_ptr<BundlePrivate> owner_;
    InterfaceMapConstPtr objects_;             // null after the service is unregistered
    std::shared_ptr<ServiceFactory> factory_;  // null as well for a service without a factory
    std::shared_ptr<const AnyMap> properties_;
    // Keyed by weak pointers, because the address of a destroyed bundle may be reused.
    std::map<User, UserEntry, std::owner_less<>> users_;
};

}  // namespace cppmicroservices
