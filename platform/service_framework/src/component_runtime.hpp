#pragma once

#include <cppmicroservices/FrameworkEvent.h>
#include <cppmicroservices/ServiceRegistration.h>

#include <memory>
#include <string>
#include <vector>

namespace cppmicroservices {

class BundlePrivate;
class ComponentFactory;

/// The components of one bundle that starts. Each is made when its service is first asked for, or at once
/// when it is immediate, and ends with this object.
class ComponentRuntime
{
public:
    /// Reads what the manifest says of components. Throws as Bundle::Start does.
    explicit ComponentRuntime(BundlePrivate& bundle);
    ComponentRuntime(const ComponentRuntime&) = delete;
    ComponentRuntime& operator=(const ComponentRuntime&) = delete;
    /// Withdraws and ends one component after the other, in the manifest's order.
    ~ComponentRuntime();

    /// Offers the components' services. Throws as Bundle::Start does.
    void Start();

private:
    struct Component
    {
        std::shared_ptr<ComponentFactory> factory;
        ServiceRegistrationU registration;  // empty while the component offers no service
    };

    void Register(Component& component);
    /// What the component throws is reported, and keeps neither its bundle nor the others from starting.
    void ActivateAtOnce(const Component& component);
    void Report(FrameworkEvent::Type type, const std::string& message) const;

    BundlePrivate& bundle_;
    std::vector<Component> components_;
};

}  // namespace cppmicroservices
