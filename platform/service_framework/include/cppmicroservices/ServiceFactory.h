#pragma once

#include <cppmicroservices/ServiceInterface.h>
#include <cppmicroservices/ServiceRegistration.h>

namespace cppmicroservices {

class Bundle;

/// Makes a service's objects on demand: once for each using bundle, at its first look-up.
class ServiceFactory
{
public:
    virtual ~ServiceFactory() = default;

    /// The objects for a bundle; null when there are none. May throw, which the bundle sees as null and the
    /// framework's listeners as FRAMEWORK_ERROR.
    virtual InterfaceMapConstPtr GetService(const Bundle& bundle,
                                            const ServiceRegistrationBase& registration) = 0;

    /// The bundle has let go of its last object, or the service was unregistered.
    virtual void UngetService(const Bundle& bundle, const ServiceRegistrationBase& registration,
                              const InterfaceMapConstPtr& service) = 0;
};

}  // namespace cppmicroservices
