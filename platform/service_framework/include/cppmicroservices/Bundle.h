#pragma once

#include <cppmicroservices/AnyMap.h>
#include <cppmicroservices/BundleVersion.h>
#include <cppmicroservices/GlobalConfig.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <iosfwd>
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

/// A handle to an installed bundle. Handles to one bundle are equal; an empty handle tests false, and its
/// operations throw std::invalid_argument.
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

    Bundle();
    Bundle(const Bundle&);
    Bundle(Bundle&&) noexcept;
    Bundle& operator=(const Bundle&);
    Bundle& operator=(Bundle&&) noexcept;
    Bundle& operator=(std::nullptr_t);
    virtual ~Bundle();

    explicit operator bool() const noexcept { return d != nullptr; }
    bool operator==(const Bundle& other) const noexcept { return d == other.d; }
    /// By id; an empty handle comes after all others.
    bool operator<(const Bundle& other) const;

    State GetState() const;
    /// Empty unless the bundle is starting, active or stopping.
    BundleContext GetBundleContext() const;
    long GetBundleId() const;
    std::string GetLocation() const;
    std::string GetSymbolicName() const;
    BundleVersion GetVersion() const;
    /// The manifest. Objects are AnyMap, arrays std::vector<Any>, whole numbers int. Null, and whole numbers
    /// beyond int, are left out.
    const AnyMap& GetHeaders() const;
    /// Throws std::logic_error when the bundle is uninstalled.
    std::vector<ServiceReferenceU> GetRegisteredServices() const;
    /// As above.
    std::vector<ServiceReferenceU> GetServicesInUse() const;

    /// Starts the bundle and offers the services of its components; loads its library only when a component
    /// is immediate. An immediate component that throws is reported as a FRAMEWORK_ERROR, and is tried again when
    /// its service is asked for. Throws std::runtime_error when the manifest asks for what this framework cannot
    /// do or the framework is stopped, SharedLibraryException when the library does not load,
    /// std::logic_error when the bundle is uninstalled.
    void Start();

    /// Withdraws the bundle's services and deactivates its components. An object that is still held works on:
    /// the library stays loaded. Throws std::logic_error when the bundle is uninstalled.
    void Stop();

    /// Stops the bundle and removes it. Throws std::logic_error when it is uninstalled already.
    void Uninstall();

protected:
    explicit Bundle(std::shared_ptr<BundlePrivate> bundle);

    std::shared_ptr<BundlePrivate> d;
    std::shared_ptr<CoreBundleContext> c;

    friend Bundle MakeBundle(const std::shared_ptr<BundlePrivate>&);
    friend std::shared_ptr<BundlePrivate> GetPrivate(const Bundle&);
};

US_Framework_EXPORT std::ostream& operator<<(std::ostream& os, const Bundle& bundle);
US_Framework_EXPORT std::ostream& operator<<(std::ostream& os, Bundle::State state);

}  // namespace cppmicroservices

template <>
struct std::hash<cppmicroservices::Bundle>
{
    std::size_t operator()(const cppmicroservices::Bundle& bundle) const
    {
        return std::hash<std::string>()(bundle.GetSymbolicName());
    }
};
