#pragma once

#include <cppmicroservices/FrameworkEvent.h>
#include <cppmicroservices/ServiceRegistration.h>

#include <memory>
#include <string>
#include <vector>

namespace cppmicroservices {

class BundlePrivate;
class ComponentFactory;

/// The components of one running bundle. A component is created when its service is first requested, or at
/// the start when it is immediate, and deactivated when this object is destroyed.
class ComponentRuntime
{
public:
    /// Reads the components in the bundle's manifest. Throws as Bundle::Start does.
    explicit ComponentRuntime(BundlePrivate& bundle);
    ComponentRuntime(const ComponentRuntime&) = delete;
    ComponentRuntime& operator=(const ComponentRuntime&) = delete;
    /// Unregisters and deactivates one component after the other, in the order of the manifest.
    ~ComponentRuntime();

    /// Registers the components' services and activates immediate components. Throws as Bundle::Start does.
    void Start();

private:
    struct Component
    {
        std::shared_ptr<ComponentFactory> factory;
        ServiceRegistrationU registration;  // empty unless the component has a registered service
    };

    void Register(Component& component);
    /// Activates an immediate component. If the component throws, the error is reported, and the bundle
    /// starts nevertheless.
    void ActivateImmediate(const Component& component);
    void Report(FrameworkEvent::Type type, const std::string& message) const;

    BundlePrivate& bundle_;
    std::vector<Component> components_;
};

}  // namespace cppmicroservices
