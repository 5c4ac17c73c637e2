#pragma once

#include <cppmicroservices/AnyMap.h>
#include <cppmicroservices/FrameworkFactory.h>
#include <cppmicroservices/ListenerFunctors.h>
#include <cppmicroservices/ListenerToken.h>

#include <atomic>
#include <map>
#include <memory>
#include <mutex>
#include <service_registry.hpp>
#include <string>
#include <vector>

namespace cppmicroservices {

class BundleContextPrivate;
class BundlePrivate;
class FrameworkEvent;

/// The state that the bundles of one framework share: bundles, services, listeners and properties.
class CoreBundleContext : public std::enable_shared_from_this<CoreBundleContext>
{
public:
    /// Creates a framework with its system bundle. The framework stops when the last copy of the result is
    /// destroyed.
    static std::shared_ptr<CoreBundleContext> Create(const FrameworkConfiguration& configuration);

    explicit CoreBundleContext(const FrameworkConfiguration& configuration);

    /// Returns a pointer that shares ownership with the result of Create.
    std::shared_ptr<CoreBundleContext> Running();

    AnyMap Properties() const;
    /// Returns an empty value when there is no such property.
    Any Property(const std::string& key) const;
    ServiceRegistry& Services() noexcept { return services_; }

    /// Returns true between initialisation and stop.
    bool IsOpen() const noexcept { return open_; }
    void Open();
    /// Stops all bundles, the last installed first, and removes them. Allocates no memory.
    void Close();

    /// Implements BundleContext::InstallBundles.
    std::vector<std::shared_ptr<BundlePrivate>> Install(const std::string& location);
    void Remove(long bundleId);
    std::shared_ptr<BundlePrivate> SystemBundle() const { return systemBundle_; }
    /// Returns null when there is no such bundle.
    std::shared_ptr<BundlePrivate> Find(long bundleId) const;
    /// Returns the bundles in order of installation, the system bundle first.
    std::vector<std::shared_ptr<BundlePrivate>> All() const;
    /// Returns the bundles that were installed from this file.
    std::vector<std::shared_ptr<BundlePrivate>> AllFrom(const std::string& location) const;

    ListenerToken AddListener(const BundleContextPrivate& owner, const FrameworkListener& listener);
    void RemoveListener(const ListenerToken& token);
    void RemoveListeners(const BundleContextPrivate& owner);
    /// Calls the listeners without holding a lock. Allocates no memory itself.
    void Send(const FrameworkEvent& event) const;

private:
    /// Returns the bundle that was installed before this one, and finally the system bundle.
    std::shared_ptr<BundlePrivate> LastBefore(long bundleId) const;
    ListenerTokenId EndOfListeners() const;
    /// Returns the first listener whose id is above `lastCalled` and below `end`, and sets `lastCalled` to
    /// its id; null when there is none.
    std::shared_ptr<const FrameworkListener> NextListener(ListenerTokenId& lastCalled,
                                                          ListenerTokenId end) const;

    struct Listener
    {
        const BundleContextPrivate* owner;
        std::shared_ptr<const FrameworkListener> call;
    };

    ServiceRegistry services_;
    std::shared_ptr<BundlePrivate> systemBundle_;
    std::weak_ptr<CoreBundleContext> running_;
    std::atomic<bool> open_ = false;

    mutable std::mutex mutex_;
    AnyMap properties_;
    std::map<long, std::shared_ptr<BundlePrivate>> bundles_;
    long nextBundleId_ = 1;
    std::map<ListenerTokenId, Listener> listeners_;
    ListenerTokenId nextListenerId_ = 1;
};

}  // namespace cppmicroservices
