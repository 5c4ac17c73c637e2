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

/// One registered service: its objects, properties and users. References keep the record after the service is
/// unregistered, so that its properties stay readable. Threads may share it; no lock is held while a service
/// factory runs.
class ServiceRecord : public std::enable_shared_from_this<ServiceRecord>
{
public:
    /// Throws as BundleContext::RegisterService does.
    ServiceRecord(const std::shared_ptr<BundlePrivate>& owner, InterfaceMapConstPtr objects,
                  const ServiceProperties& properties);

    const std::vector<std::string>& Interfaces() const noexcept { return interfaces_; }

    /// True when this service comes before the other in a look-up.
    bool RanksBefore(const ServiceRecord& other) const noexcept;

    std::shared_ptr<const AnyMap> Properties() const;
    /// What would stand in place of the properties; copies values, and with that runs code that is not ours.
    std::shared_ptr<const AnyMap> MakeReplacement(const ServiceProperties& given) const;
    /// Gives the service a replacement, its ranking included: only the registry may, as it keeps services in
    /// order. Throws std::invalid_argument for a ranking that is no int, and changes nothing then.
    void SwapProperties(std::shared_ptr<const AnyMap>& other);

    /// The registering bundle; null once the service is unregistered.
    std::shared_ptr<BundlePrivate> Owner() const;
    std::vector<std::shared_ptr<BundlePrivate>> Users() const;
    bool IsUsedBy(const BundlePrivate& bundle) const;

    /// The service's objects for a bundle, which is a user until the result and all its copies are gone; null
    /// when there are none. Throws SharedLibraryException when a component's library does not load.
    InterfaceMapConstPtr Use(const std::shared_ptr<BundlePrivate>& user);

    /// Ends all uses by a bundle.
    void ReleaseAll(BundlePrivate& user);

    /// Empties the record; false when it was empty already.
    bool Unregister();

private:
    using User = std::weak_ptr<BundlePrivate>;
    struct UserEntry
    {
        int uses = 0;
        InterfaceMapConstPtr objects;  // what the factory made for this bundle
    };
    class Hold;

    std::shared_ptr<const AnyMap> MakeProperties(const ServiceProperties& given) const;
    InterfaceMapConstPtr Acquire(const std::shared_ptr<BundlePrivate>& user);
    /// Makes the bundle a user of the objects made for it, unless another thread was faster: the objects that
    /// stand. Null when the service is unregistered by now.
    InterfaceMapConstPtr Enter(const std::shared_ptr<BundlePrivate>& user, const UserEntry& made);
    InterfaceMapConstPtr MakeObjects(const std::shared_ptr<BundlePrivate>& user, ServiceFactory& factory);
    void Release(const User& user);
    void GiveBack(ServiceFactory& factory, const User& user, const InterfaceMapConstPtr& objects);
    void ReportError(const Bundle& origin, const std::string& message, ServiceException::Type type) const;
    /// Tells the framework's listeners; quietly does nothing once the framework is gone.
    void Report(const FrameworkEvent& event) const;

    const long id_;
    const bool isFactory_;
    std::vector<std::string> interfaces_;
    std::atomic<int> ranking_ = 0;

    mutable std::mutex mutex_;
    std::weak_ptr<BundlePrivate> owner_;
    InterfaceMapConstPtr objects_;             // null once unregistered
    std::shared_ptr<ServiceFactory> factory_;  // as well, and when there is none
    std::shared_ptr<const AnyMap> properties_;
    // By weak pointers, as the address of a bundle that is gone may be given to another.
    std::map<User, UserEntry, std::owner_less<>> users_;
};

}  // namespace cppmicroservices
