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

/// The identifier of S. Throws ServiceException when it is empty.
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

/// What a running bundle may do. Every operation throws IllegalStateException when the context is empty or
/// its bundle has stopped.
class US_Framework_EXPORT BundleContext
{
public:
    BundleContext();

    explicit operator bool() const;
    /// Contexts that are empty or whose bundle has stopped are equal, and come after all others.
    bool operator==(const BundleContext& other) const;
    bool operator<(const BundleContext& other) const;
    BundleContext& operator=(std::nullptr_t);

    /// A framework property; empty when there is none.
    Any GetProperty(const std::string& key) const;
    AnyMap GetProperties() const;

    Bundle GetBundle() const;
    /// Empty when there is no bundle of that id.
    Bundle GetBundle(long id) const;
    std::vector<Bundle> GetBundles(const std::string& location) const;
    std::vector<Bundle> GetBundles() const;

    /// Installs what a bundle file (shared library with a zip archive appended) holds. While bundles from it
    /// are installed, they are returned as they are, whatever became of the file. Throws std::runtime_error
    /// naming the file and what is wrong with it.
    std::vector<Bundle> InstallBundles(const std::string& location);

    /// Offers objects, or a factory under its key, by interface identifier. Throws std::invalid_argument when
    /// the map is empty or holds a null object or when service.ranking is not an int, std::runtime_error when
    /// two keys differ only in case.
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

    /// References to the services of an interface (all when it is empty) that the LDAP filter admits, highest
    /// first. Throws std::invalid_argument when the filter is malformed.
    std::vector<ServiceReferenceU> GetServiceReferences(const std::string& interfaceId,
                                                        const std::string& filter = {});

    /// As above. Throws ServiceException when S has an empty identifier.
    template <class S>
    std::vector<ServiceReference<S>> GetServiceReferences(const std::string& filter = {})
    {
        const auto untyped = GetServiceReferences(detail::DeclaredInterfaceId<S>(), filter);
        return {untyped.begin(), untyped.end()};
    }

    /// The highest reference; empty when there is no service.
    ServiceReferenceU GetServiceReference(const std::string& interfaceId);

    template <class S>
    ServiceReference<S> GetServiceReference()
    {
        return GetServiceReference(detail::DeclaredInterfaceId<S>());
    }

    /// The service object under the reference's interface, in use by this bundle until the pointer and all
    /// its copies are gone; null when the service cannot be had. Throws std::invalid_argument when the
    /// reference is empty, SharedLibraryException when a component's library does not load, and what a
    /// service factory throws that is no std::exception.
    std::shared_ptr<void> GetService(const ServiceReferenceBase& reference);

    /// All objects of the service.
    InterfaceMapConstPtr GetService(const ServiceReferenceU& reference);

    template <class S>
    std::shared_ptr<S> GetService(const ServiceReference<S>& reference)
    {
        const ServiceReferenceBase& base = reference;
        return std::static_pointer_cast<S>(GetService(base));
    }

    /// Throws std::invalid_argument when the reference is empty. Needs <cppmicroservices/ServiceObjects.h>.
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
