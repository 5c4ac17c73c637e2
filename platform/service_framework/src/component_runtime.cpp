#include <cppmicroservices/Constants.h>
#include <cppmicroservices/FrameworkEvent.h>
#include <cppmicroservices/ServiceFactory.h>
#include <cppmicroservices/SharedLibraryException.h>
#include <cppmicroservices/servicecomponent/ComponentContext.hpp>
#include <cppmicroservices/servicecomponent/detail/ComponentInstance.hpp>

#include <atomic>
#include <bundle_context_private.hpp>
#include <bundle_private.hpp>
#include <component_description.hpp>
#include <component_runtime.hpp>
#include <core_bundle_context.hpp>
#include <mutex>
#include <service_registry.hpp>
#include <set>
#include <shared_library.hpp>
#include <stdexcept>
#include <string>
#include <utility>

namespace cppmicroservices {

using service::component::ComponentContext;
using service::component::detail::ComponentInstance;

service::component::ComponentContext::~ComponentContext() noexcept = default;
service::component::detail::ComponentInstance::~ComponentInstance() noexcept = default;

namespace {

class ComponentContextImpl final : public ComponentContext
{
public:
    ComponentContextImpl(ServiceProperties properties, cppmicroservices::BundleContext context,
                         const ServiceReferenceBase& reference)
        : properties_(std::move(properties)), context_(std::move(context)), reference_(reference)
    {}

    std::unordered_map<std::string, Any> GetProperties() const override { return properties_; }
    cppmicroservices::BundleContext GetBundleContext() const override
    {
        context_.GetBundle();  // throws when the bundle has stopped
        return context_;
    }
    Bundle GetUsingBundle() const override { return {}; }
    ServiceReferenceBase GetServiceReference() const override { return reference_; }

private:
    const ServiceProperties properties_;
    const cppmicroservices::BundleContext context_;
    const ServiceReferenceBase reference_;
};

ServiceProperties propertiesOf(const ComponentDescription& component)
{
    static std::atomic<unsigned long> nextComponentId = 1;
    ServiceProperties properties = component.properties;
    properties.emplace("component.name", component.name);
    properties.emplace("component.id", nextComponentId++);
    return properties;
}

/// An activated component object with its wrapper. Deactivates the component when it is destroyed.
class ActiveComponent
{
public:
    /// Creates and activates the component. Throws SharedLibraryException when the library cannot be loaded,
    /// std::runtime_error naming the component when the library lacks a function or the component throws,
    /// std::bad_alloc.
    ActiveComponent(const std::shared_ptr<BundlePrivate>& bundle, const ComponentDescription& description,
                    std::shared_ptr<ComponentContext> context)
        : ActiveComponent(bundle, description, std::move(context), bundle->LoadLibrary())
    {}

    ActiveComponent(const ActiveComponent&) = delete;
    ActiveComponent& operator=(const ActiveComponent&) = delete;

    ~ActiveComponent()
    {
        try {
            instance_->Deactivate();
            instance_->UnbindReferences();
        } catch (const std::exception& error) {
            Report(error.what());
        } catch (...) {
            Report("an exception that is not a std::exception");
        }
    }

    /// Returns the component object by interface identifier.
    InterfaceMapConstPtr Objects() const { return instance_->GetInterfaceMap(); }

private:
    ActiveComponent(const std::shared_ptr<BundlePrivate>& bundle, const ComponentDescription& description,
                    std::shared_ptr<ComponentContext> context, const SharedLibrary& library)
        : bundle_(bundle),
          name_(description.name),
          context_(std::move(context)),
          instance_(nullptr,
                    library.Get<void(ComponentInstance*)>(description.FunctionName("DeleteInstance_")))
    {
        auto* const create = library.Get<ComponentInstance*()>(description.FunctionName("NewInstance_"));
        try {
            instance_.reset(create());
            if (!instance_) {
                throw std::runtime_error("NewInstance returned null");
            }
            instance_->CreateInstance(context_);
            instance_->BindReferences(context_);
            instance_->Activate();
        } catch (const std::bad_alloc&) {
            throw;
        } catch (const std::exception& error) {
            Fail(error.what());
        } catch (...) {
            Fail("it threw an exception that is not a std::exception");
        }
    }

    [[noreturn]] void Fail(const std::string& reason) const
    {
        throw std::runtime_error("The component " + name_ + " cannot be activated: " + reason);
    }

    void Report(const std::string& reason) const
    {
        const auto bundle = bundle_.lock();
        if (const auto core = CoreOf(bundle)) {
            core->Send({FrameworkEvent::FRAMEWORK_ERROR, MakeBundle(bundle),
                        "The component " + name_ + " threw while it was deactivated: " + reason});
        }
    }

    const std::weak_ptr<BundlePrivate> bundle_;
    const std::string name_;
    const std::shared_ptr<ComponentContext> context_;
    std::unique_ptr<ComponentInstance, void (*)(ComponentInstance*)> instance_;
};

}  // namespace

/// Creates a component at the first request and keeps it until Close().
class ComponentFactory final : public ServiceFactory
{
public:
    ComponentFactory(std::weak_ptr<BundlePrivate> bundle, ComponentDescription description)
        : bundle_(std::move(bundle)),
          description_(std::move(description)),
          properties_(propertiesOf(description_))
    {}

    const ComponentDescription& Description() const noexcept { return description_; }

    ServiceProperties RegistrationProperties() const
    {
        ServiceProperties properties = properties_;
        properties.emplace(Constants::SERVICE_SCOPE, Constants::SCOPE_SINGLETON);
        return properties;
    }

    InterfaceMapConstPtr GetService(const Bundle&, const ServiceRegistrationBase& registration) override
    {
        return Activate(registration.GetReference());
    }

    void UngetService(const Bundle&, const ServiceRegistrationBase&, const InterfaceMapConstPtr&) override {}

    /// Returns the component object by interface identifier, created if necessary; null after Close().
    InterfaceMapConstPtr Activate(const ServiceReferenceBase& reference)
    {
        // Held while the component is created, so that concurrent requests get the same object.
        const std::lock_guard lock(mutex_);
        const auto bundle = bundle_.lock();
        if (closed_ || !bundle) {
            return nullptr;
        }
        if (!active_) {
            auto context = std::make_shared<ComponentContextImpl>(
                properties_, MakeBundleContext(bundle->Context()), reference);
            active_ = std::make_unique<ActiveComponent>(bundle, description_, std::move(context));
        }
        return active_->Objects();
    }

    /// Deactivates the component. Pointers to its object that callers hold stay valid.
    void Close()
    {
        std::unique_ptr<ActiveComponent> released;
        const std::lock_guard lock(mutex_);
        closed_ = true;
        released.swap(active_);
    }

private:
    const std::weak_ptr<BundlePrivate> bundle_;
    const ComponentDescription description_;
    const ServiceProperties properties_;

    std::mutex mutex_;
    bool closed_ = false;
    std::unique_ptr<ActiveComponent> active_;
};

ComponentRuntime::ComponentRuntime(BundlePrivate& bundle) : bundle_(bundle)
{
    std::set<std::string> names;
    for (ComponentDescription& description : readComponents(bundle.manifest)) {
        if (!names.insert(description.name).second) {
            Report(FrameworkEvent::FRAMEWORK_WARNING, "The bundle " + bundle.manifest.symbolicName +
                                                          " has more than one component named " +
                                                          description.name + "; only the first one is used");
        } else if (description.enabled) {
            components_.push_back(
                {std::make_shared<ComponentFactory>(bundle.weak_from_this(), std::move(description)), {}});
        }
    }
}

ComponentRuntime::~ComponentRuntime()
{
    for (Component& component : components_) {
        if (component.registration) {
            component.registration.Unregister();
        }
        component.factory->Close();
    }
}

void ComponentRuntime::Start()
{
    for (Component& component : components_) {
        if (!component.factory->Description().interfaces.empty()) {
            Register(component);
        }
        if (component.factory->Description().immediate) {
            ActivateImmediate(component);
        }
    }
}

void ComponentRuntime::Register(Component& component)
{
    const auto objects = std::make_shared<InterfaceMap>();
    for (const std::string& interfaceId : component.factory->Description().interfaces) {
        objects->emplace(interfaceId, nullptr);
    }
    objects->emplace(detail::factoryInterfaceId, ToFactory(component.factory));
    try {
        component.registration = bundle_.Core()->Services().Register(
            *bundle_.Context(), objects, component.factory->RegistrationProperties());
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& error) {
        throw std::runtime_error("The bundle " + bundle_.manifest.symbolicName + ", component " +
                                 component.factory->Description().name + ": " + error.what());
    }
}

void ComponentRuntime::ActivateImmediate(const Component& component)
{
    const auto& registration = component.registration;
    try {
        component.factory->Activate(registration ? registration.GetReference() : ServiceReferenceU());
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const SharedLibraryException&) {
        throw;
    } catch (const std::exception& error) {
        Report(FrameworkEvent::FRAMEWORK_ERROR, error.what());
    }
}

void ComponentRuntime::Report(FrameworkEvent::Type type, const std::string& message) const
{
    bundle_.Core()->Send({type, MakeBundle(bundle_.shared_from_this()), message});
}

}  // namespace cppmicroservices
