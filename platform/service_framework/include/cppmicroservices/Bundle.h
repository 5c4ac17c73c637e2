#pragma once

#include <cppmicroservices/AnyMap.h>
#include <cppmicroservices/BundleVersion.h>
#include <cppmicroservices/GlobalConfig.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace cppmicroservices {

class BundleContext;
class BundlePrivate;
class CoreBundleContext;
template <class S>
class ServiceReference;
using ServiceReferenceU = ServiceReference<void>;

/// A handle to an installed bundle. Handles to the same bundle are equal. An empty handle tests false, and
/// its operations throw std::invalid_argument.
class US_Framework_EXPORT Bundle
{
public:
    enum State : std::uint32_t
    {
        STATE_UNINSTALLED = 0x01,
        STATE_INSTALLED = 0x02,
        STATE_RESOLVED = 0x04,
        STATE_STARTING = 0x08,
        STATE_STOPPING = 0x10,
        STATE_ACTIVE = 0x20
    };

    Bundle() = default;

    explicit operator bool() const noexcept { return d != nullptr; }
    bool operator==(const Bundle& other) const noexcept { return d == other.d; }
    /// Orders handles by bundle id, empty handles last.
    bool operator<(const Bundle& other) const;

    State GetState() const;
    /// Returns an empty context unless the bundle is starting, active or stopping.
    BundleContext GetBundleContext() const;
    long GetBundleId() const;
    std::string GetLocation() const;
    std::string GetSymbolicName() const;
    BundleVersion GetVersion() const;
    /// Returns the manifest. Objects are AnyMap, arrays std::vector<Any>, integers int. Null values and
    /// integers outside the range of int are left out.
    const AnyMap& GetHeaders() const;
    /// Throws std::logic_error when the bundle is uninstalled.
    std::vector<ServiceReferenceU> GetRegisteredServices() const;
    /// Throws std::logic_error when the bundle is uninstalled.
    std::vector<ServiceReferenceU> GetServicesInUse() const;

    /// Starts the bundle and registers the services of its components. Loads its library only when a
    /// component is immediate. If an immediate component throws, a FRAMEWORK_ERROR event is sent, and the
    /// next request for its service activates it again. Throws std::runtime_error when the manifest needs a
    /// feature that this framework lacks or the framework is stopped, SharedLibraryException when the library
    /// cannot be loaded, std::logic_error when the bundle is uninstalled.
    void Start();

    /// Unregisters the bundle's services and deactivates its components. Service objects that callers still
    /// hold stay usable, because the library stays loaded. Throws std::logic_error when the bundle is
    /// uninstalled.
    void Stop();

    /// Stops the bundle and removes it. Throws std::logic_error when it is already uninstalled.
    void Uninstall();

protected:
    explicit Bundle(std::shared_ptr<BundlePrivate> bundle);

    std::shared_ptr<BundlePrivate> d;
    std::shared_ptr<CoreBundleContext> c;

    friend Bundle MakeBundle(const std::shared_ptr<BundlePrivate>&);
    friend std::shared_ptr<BundlePrivate> GetPrivate(const Bundle&);
};

}  // namespace cppmicroservices
