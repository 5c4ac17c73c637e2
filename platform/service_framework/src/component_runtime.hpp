#pragma once

#include <cppmicroservices/FrameworkEvent.h>
#include <cppmicroservices/ServiceRegistration.h>

#include <memory>
#include <string>
#include <vector>

namespace cppmicroservices {

class BundlePrivate;
class ComponentFactory;

/// The components of one running bundle. An immediate component is created by Start(), any other when its
/// service is first requested. Destroying this object deactivates all components.
class ComponentRuntime
{
public:
    /// Creates a factory for each enabled component in the bundle's manifest. Throws as Bundle::Start does.
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
        ServiceRegistrationU
            registration;  ///< empty before Start(), and if the component provides no service
    };

    void Register(Component& component);
    /// Activates an immediate component. An exception of the component is reported and does not keep the
    /// bundle from starting. Throws SharedLibraryException if the bundle's library cannot be loaded.
    void ActivateImmediate(const Component& component);
    /// Sends a framework event about the bundle.
    void Report(FrameworkEvent::Type type, const std::string& message) const;

    BundlePrivate& bundle_;
    std::vector<Component> components_;
};

}  // namespace cppmicroservices
