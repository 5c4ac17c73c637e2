#pragma once

#include <cppmicroservices/ServiceInterface.h>
#include <cppmicroservices/ServiceRegistration.h>

namespace cppmicroservices {

class Bundle;

/// Creates service objects on demand, once for each bundle, when the bundle first requests the service.
class ServiceFactory
{
public:
    virtual ~ServiceFactory() = default;

    /// Returns the service objects for a bundle; null when there are none. If it throws, the bundle gets null
    /// and the framework sends a FRAMEWORK_ERROR event.
    virtual InterfaceMapConstPtr GetService(const Bundle& bundle,
                                            const ServiceRegistrationBase& registration) = 0;

    /// Called when the bundle has released its last object or the service was unregistered.
    virtual void UngetService(const Bundle& bundle, const ServiceRegistrationBase& registration,
                              const InterfaceMapConstPtr& service) = 0;
};

}  // namespace cppmicroservices
