#pragma once

#include <cppmicroservices/Bundle.h>

#include <atomic>
#include <bundle_file.hpp>
#include <memory>
#include <mutex>
#include <string>

namespace cppmicroservices {

class BundleContextPrivate;
class ComponentRuntime;
class CoreBundleContext;
class SharedLibrary;

/// One installed bundle. Threads may share it; starting and stopping one bundle are serialised.
class BundlePrivate : public std::enable_shared_from_this<BundlePrivate>
{
public:
    BundlePrivate(std::weak_ptr<CoreBundleContext> core, long bundleId, std::string bundleLocation,
                  BundleManifest bundleManifest);
    BundlePrivate(const BundlePrivate&) = delete;
    BundlePrivate& operator=(const BundlePrivate&) = delete;
    virtual ~BundlePrivate();

    virtual void Start();
    virtual void Stop();
    virtual void Uninstall();
    /// Stops the bundle for good, as its framework stops.
    void Leave();

    Bundle::State State() const noexcept { return state_; }
    /// Throws std::logic_error when the bundle is uninstalled.
    void CheckInstalled() const;
    /// Null unless starting, active or stopping.
    std::shared_ptr<BundleContextPrivate> Context() const;
    /// Null once the framework is gone.
    std::shared_ptr<CoreBundleContext> Core() const { return core_.lock(); }

    /// The bundle's library, which has this run's context. Throws SharedLibraryException when it does not
    /// load.
    const SharedLibrary& LoadLibrary();

    const long id;
    const std::string location;
    const BundleManifest manifest;

protected:
    /// Opens a new context.
    void Open();
    /// Withdraws everything the bundle offers, uses and listens to, and makes its context invalid.
    void Close();

    std::recursive_mutex transition_;
    std::atomic<Bundle::State> state_ = Bundle::STATE_INSTALLED;

private:
    /// Refuses what the manifest may ask for but this framework does not do.
    void CheckSupported() const;

    const std::weak_ptr<CoreBundleContext> core_;
    std::unique_ptr<ComponentRuntime> components_;

    mutable std::mutex contextMutex_;
    std::shared_ptr<BundleContextPrivate> context_;

    // Recursive, as a library that is given its context may ask for a component of its bundle.
    std::recursive_mutex libraryMutex_;
    // The library's function that takes the context; null while the library does not have that of this run.
    void (*setContext_)(BundleContextPrivate*) = nullptr;
};

/// A handle that keeps the framework running; empty for null.
Bundle MakeBundle(const std::shared_ptr<BundlePrivate>& bundle);
std::shared_ptr<BundlePrivate> GetPrivate(const Bundle& bundle);

/// Null for null, and once the framework is gone.
inline std::shared_ptr<CoreBundleContext> CoreOf(const std::shared_ptr<BundlePrivate>& bundle)
{
    return bundle ? bundle->Core() : nullptr;
}

}  // namespace cppmicroservices
