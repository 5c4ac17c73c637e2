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

/// What the bundles of one framework share: the installed bundles, the services, the listeners, the
/// properties.
class CoreBundleContext : public std::enable_shared_from_this<CoreBundleContext>
{
public:
    /// A framework with its system bundle. The result keeps it running: when the last copy goes, it stops.
    static std::shared_ptr<CoreBundleContext> Create(const FrameworkConfiguration& configuration);

    explicit CoreBundleContext(const FrameworkConfiguration& configuration);

    /// This framework, kept running as Create does.
    std::shared_ptr<CoreBundleContext> Running();

    AnyMap Properties() const;
    /// Empty when there is none of that name.
    Any Property(const std::string& key) const;
    ServiceRegistry& Services() noexcept { return services_; }

    /// True between initialisation and stop.
    bool IsOpen() const noexcept { return open_; }
    void Open();
    /// Stops all bundles, the last installed first, and forgets them. Needs no memory.
    void Close();

    /// As BundleContext::InstallBundles does.
    std::vector<std::shared_ptr<BundlePrivate>> Install(const std::string& location);
    void Remove(long bundleId);
    std::shared_ptr<BundlePrivate> SystemBundle() const { return systemBundle_; }
    /// Null when there is none.
    std::shared_ptr<BundlePrivate> Find(long bundleId) const;
    /// In order of installation, the system bundle first.
    std::vector<std::shared_ptr<BundlePrivate>> All() const;
    /// Those that were installed from this file.
    std::vector<std::shared_ptr<BundlePrivate>> AllFrom(const std::string& location) const;

    ListenerToken AddListener(const BundleContextPrivate& owner, const FrameworkListener& listener);
    void RemoveListener(const ListenerToken& token);
    void RemoveListeners(const BundleContextPrivate& owner);
    /// Calls the listeners, outside all locks. Needs no memory itself.
    void Send(const FrameworkEvent& event) const;

private:
    /// The bundle installed last before this one; at the end the system bundle.
    std::shared_ptr<BundlePrivate> LastBefore(long bundleId) const;
    ListenerTokenId EndOfListeners() const;
    /// What the first listener after `heard` is called by; null when there is none before `end`.
    std::shared_ptr<const FrameworkListener> NextCall(ListenerTokenId& heard, ListenerTokenId end) const;

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
