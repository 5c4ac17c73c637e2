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

/// An installed bundle. Thread-safe; starts and stops of one bundle are serialised.
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
    /// Stops the bundle and marks it as INSTALLED, because its framework stops.
    void StopWithFramework();

    Bundle::State State() const noexcept { return state_; }
    /// Throws std::logic_error when the bundle is uninstalled.
    void CheckInstalled() const;
    /// Returns null unless the bundle is starting, active or stopping.
    std::shared_ptr<BundleContextPrivate> Context() const;
    /// Returns null after the framework is destroyed.
    std::shared_ptr<CoreBundleContext> Core() const { return core_.lock(); }

    /// Loads the bundle's library, if necessary, and sets its bundle context to that of this run. Throws
    /// SharedLibraryException when the library cannot be loaded.
    const SharedLibrary& LoadLibrary();

    const long id;
    const std::string location;
    const BundleManifest manifest;

protected:
    /// Creates the context of a new run.
    void Open();
    /// Ends the run: removes the components, services, uses and listeners of the bundle, and invalidates its
    /// context.
    void Close();

    std::recursive_mutex transition_;
    std::atomic<Bundle::State> state_ = Bundle::STATE_INSTALLED;

private:
    /// Throws std::runtime_error when the manifest needs a feature that this framework lacks.
    void CheckSupported() const;
    /// Returns the bundle's library, loaded if necessary. Throws SharedLibraryException.
    const SharedLibrary& FindLibrary();

    const std::weak_ptr<CoreBundleContext> core_;
    std::unique_ptr<ComponentRuntime> components_;

    mutable std::mutex contextMutex_;
    std::shared_ptr<BundleContextPrivate> context_;

    // Recursive, because a library that receives its context may request a component of its bundle.
    std::recursive_mutex libraryMutex_;
    // The library's function that sets its bundle context; null until it is called in this run.
    void (*setContext_)(BundleContextPrivate*) = nullptr;
};

/// Returns a handle, which shares ownership of the framework; an empty handle for null.
Bundle MakeBundle(const std::shared_ptr<BundlePrivate>& bundle);
std::shared_ptr<BundlePrivate> GetPrivate(const Bundle& bundle);

/// Returns the framework of a bundle; null for null, or after the framework is destroyed.
inline std::shared_ptr<CoreBundleContext> CoreOf(const std::shared_ptr<BundlePrivate>& bundle)
{
    return bundle ? bundle->Core() : nullptr;
}

}  // namespace cppmicroservices
