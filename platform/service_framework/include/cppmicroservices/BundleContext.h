#pragma once

#include <cppmicroservices/AnyMap.h>
#include <cppmicroservices/Bundle.h>
#include <cppmicroservices/GlobalConfig.h>
#include <cppmicroservices/IllegalStateException.h>
#include <cppmicroservices/ListenerFunctors.h>
#include <cppmicroservices/ListenerToken.h>
#include <cppmicroservices/ServiceInterface.h>
#include <cppmicroservices/ServiceRegistration.h>

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace cppmicroservices {

class BundleContext;
class BundleContextPrivate;
class ServiceFactory;
template <class S>
class ServiceObjects;

namespace detail {

/// Returns the interface identifier of S. Throws ServiceException when it is empty.
template <class S>
const std::string& DeclaredInterfaceId()
{
    const std::string& id = us_service_interface_iid<S>();
    if (id.empty()) {
        throw ServiceException(
            "The service interface class has no CPPMICROSERVICES_DECLARE_SERVICE_INTERFACE macro");
    }
    return id;
}

US_Framework_EXPORT BundleContext MakeBundleContext(BundleContextPrivate* context);

}  // namespace detail

/// The access of a running bundle to the framework. Every operation throws IllegalStateException when the
/// context is empty or its bundle has stopped.
class US_Framework_EXPORT BundleContext
{
public:
    BundleContext();

    explicit operator bool() const;
    /// Contexts that are empty or whose bundle has stopped are equal to each other and ordered after all
    /// others.
    bool operator==(const BundleContext& other) const;
    bool operator<(const BundleContext& other) const;
    BundleContext& operator=(std::nullptr_t);

    /// Returns a framework property; empty when there is none.
    Any GetProperty(const std::string& key) const;
    AnyMap GetProperties() const;

    Bundle GetBundle() const;
    /// Returns an empty handle when there is no bundle with that id.
    Bundle GetBundle(long id) const;
    std::vector<Bundle> GetBundles(const std::string& location) const;
    std::vector<Bundle> GetBundles() const;

    /// Installs the bundles in a bundle file (a shared library with a zip archive appended) and returns them.
    /// If bundles from this file are already installed, returns them without reading the file again. Throws
    /// std::runtime_error naming the file and the reason.
    std::vector<Bundle> InstallBundles(const std::string& location);

    /// Registers service objects by interface identifier; for a service factory, the map also has the key
    /// "org.cppmicroservices.factory". Throws std::invalid_argument when the map is empty or holds a null
    /// object or when service.ranking is not an int, std::runtime_error when two property keys differ only in
    /// case.
    [[nodiscard]] ServiceRegistrationU RegisterService(const InterfaceMapConstPtr& service,
                                                       const ServiceProperties& properties = {});

    template <class I1, class... Interfaces, class Impl>
    ServiceRegistration<I1, Interfaces...> RegisterService(const std::shared_ptr<Impl>& impl,
                                                           const ServiceProperties& properties = {})
    {
        return RegisterService(InterfaceMapConstPtr(MakeInterfaceMap<I1, Interfaces...>(impl)), properties);
    }

    template <class I1, class... Interfaces>
    ServiceRegistration<I1, Interfaces...> RegisterService(const std::shared_ptr<ServiceFactory>& factory,
                                                           const ServiceProperties& properties = {})
    {
        return RegisterService(InterfaceMapConstPtr(MakeInterfaceMap<I1, Interfaces...>(factory)),
                               properties);
    }

    /// Returns references to the services of an interface (of all interfaces when interfaceId is empty) that
    /// match the LDAP filter, highest ranking first. Throws std::invalid_argument when the filter is
    /// malformed.
    std::vector<ServiceReferenceU> GetServiceReferences(const std::string& interfaceId,
                                                        const std::string& filter = {});

    /// As above, for the interface S. Also throws ServiceException when the identifier of S is empty.
    template <class S>
    std::vector<ServiceReference<S>> GetServiceReferences(const std::string& filter = {})
    {
        const auto untyped = GetServiceReferences(detail::DeclaredInterfaceId<S>(), filter);
        return {untyped.begin(), untyped.end()};
    }

    /// Returns the reference with the highest ranking; empty when there is no service.
    ServiceReferenceU GetServiceReference(const std::string& interfaceId);

    template <class S>
    ServiceReference<S> GetServiceReference()
    {
        return GetServiceReference(detail::DeclaredInterfaceId<S>());
    }

    /// Returns the service object for the reference's interface; null when the service is not available. The
    /// bundle uses the service until all copies of the pointer are destroyed. Throws std::invalid_argument
    /// when the reference is empty, SharedLibraryException when a component's library cannot be loaded. Of
    /// the exceptions of a service factory, passes on only std::bad_alloc and those that are not a
    /// std::exception.
    std::shared_ptr<void> GetService(const ServiceReferenceBase& reference);

    /// Returns the objects of the service by interface identifier.
    InterfaceMapConstPtr GetService(const ServiceReferenceU& reference);

    template <class S>
    std::shared_ptr<S> GetService(const ServiceReference<S>& reference)
    {
        const ServiceReferenceBase& base = reference;
        return std::static_pointer_cast<S>(GetService(base));
    }

    /// Throws std::invalid_argument when the reference is empty. Requires
    /// <cppmicroservices/ServiceObjects.h>.
    template <class S>
    ServiceObjects<S> GetServiceObjects(const ServiceReference<S>& reference)
    {
        if (!d) {
            throw IllegalStateException("The bundle context is no longer valid");
        }
        return ServiceObjects<S>(d, reference);
    }

    ListenerToken AddFrameworkListener(const FrameworkListener& listener);
    void RemoveListener(ListenerToken token);

private:
    friend BundleContext MakeBundleContext(const std::shared_ptr<BundleContextPrivate>&);
    explicit BundleContext(std::shared_ptr<BundleContextPrivate> context);

    std::shared_ptr<BundleContextPrivate> d;
};

}  // namespace cppmicroservices
