#pragma once

#include <cppmicroservices/ServiceInterface.h>
#include <cppmicroservices/servicecomponent/ComponentContext.hpp>

#include <memory>
#include <string>

namespace cppmicroservices::service::component::detail {

/// The wrapper around one component, created by the bundle's NewInstance function. The order of the virtual
/// functions is part of the ABI between bundles and frameworks.
class US_Framework_EXPORT ComponentInstance
{
public:
    virtual ~ComponentInstance() noexcept;

    virtual void CreateInstance(const std::shared_ptr<ComponentContext>& context) = 0;
    virtual void BindReferences(const std::shared_ptr<ComponentContext>& context) = 0;
    virtual void UnbindReferences() = 0;
    virtual void Activate() = 0;
    virtual void Deactivate() = 0;
    virtual void Modified() = 0;
    virtual void InvokeUnbindMethod(const std::string& reference, std::shared_ptr<void> service) = 0;
    virtual void InvokeBindMethod(const std::string& reference, std::shared_ptr<void> service) = 0;
    /// Returns the component object by interface identifier; null when it provides no interface.
    virtual InterfaceMapPtr GetInterfaceMap() = 0;
    virtual bool DoesModifiedMethodExist() = 0;
};

}  // namespace cppmicroservices::service::component::detail
