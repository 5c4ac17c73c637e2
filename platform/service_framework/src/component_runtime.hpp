#pragma once

#include <cppmicroservices/ServiceRegistration.h>

#include <memory>
#include <vector>

namespace cppmicroservices {

class BundlePrivate;
class ComponentFactory;

/// The components of one started bundle. Each is made when its service is first asked for, or at once when it
/// is immediate, and ends when this object is gone and the last user has let go of it.
class ComponentRuntime
{
public:
    /// Offers the services of the bundle's components. Throws as Bundle::Start does.
    explicit ComponentRuntime(BundlePrivate& bundle);
    ComponentRuntime(const ComponentRuntime&) = delete;
    ComponentRuntime& operator=(const ComponentRuntime&) = delete;
    ~ComponentRuntime();

private:
    void Start();
    void Stop();

    BundlePrivate& bundle_;
    std::vector<std::shared_ptr<ComponentFactory>> factories_;
    std::vector<ServiceRegistrationU> registrations_;
};

}  // namespace cppmicroservices
