#pragma once

#include <cppmicroservices/AnyMap.h>
#include <cppmicroservices/servicecomponent/ComponentContext.hpp>
#include <cppmicroservices/servicecomponent/detail/ComponentInstance.hpp>

#include <memory>
#include <stdexcept>
#include <string>
#include <tuple>
#include <type_traits>

namespace cppmicroservices::service::component::detail {

/// The wrapper around a component T that provides the interfaces in InterfaceTuple. T is constructed from its
/// properties (std::shared_ptr<AnyMap>) if it has such a constructor, else by default; its members Activate,
/// Deactivate and Modified are called if they exist. References to other services are not supported.
template <class T, class InterfaceTuple = std::tuple<>, class... CtorInjectedRefs>
class ComponentInstanceImpl final : public ComponentInstance
{
    static_assert(sizeof...(CtorInjectedRefs) == 0, "This framework injects no references into components");

public:
    ComponentInstanceImpl() = default;

    void CreateInstance(const std::shared_ptr<ComponentContext>& context) override
    {
        context_ = context;
        if constexpr (std::is_constructible_v<T, const std::shared_ptr<AnyMap>&>) {
            component_ = std::make_shared<T>(std::make_shared<AnyMap>(context->GetProperties()));
        } else {
            component_ = std::make_shared<T>();
        }
    }

    void BindReferences(const std::shared_ptr<ComponentContext>&) override {}
    void UnbindReferences() override {}

    void Activate() override
    {
        if constexpr (requires(T & component) { component.Activate(context_); }) {
            if (component_) {
                component_->Activate(context_);
            }
        }
    }

    void Deactivate() override
    {
        if constexpr (requires(T & component) { component.Deactivate(context_); }) {
            if (component_) {
                component_->Deactivate(context_);
            }
        }
    }

    void Modified() override
    {
        if constexpr (hasModified) {
            if (component_) {
                component_->Modified(context_, std::make_shared<AnyMap>(context_->GetProperties()));
            }
        }
    }

    bool DoesModifiedMethodExist() override { return hasModified; }

    void InvokeUnbindMethod(const std::string& reference, std::shared_ptr<void>) override
    {
        ThrowNoReference(reference);
    }

    void InvokeBindMethod(const std::string& reference, std::shared_ptr<void>) override
    {
        ThrowNoReference(reference);
    }

    InterfaceMapPtr GetInterfaceMap() override { return MakeMap(static_cast<InterfaceTuple*>(nullptr)); }

private:
    static constexpr bool hasModified =
        requires(T & component, const std::shared_ptr<ComponentContext>& context)
    {
        component.Modified(context, std::shared_ptr<AnyMap>());
    };

    template <class... Interfaces>
    InterfaceMapPtr MakeMap(std::tuple<Interfaces...>*) const
    {
        if constexpr (sizeof...(Interfaces) == 0) {
            return nullptr;
        } else {
            return MakeInterfaceMap<Interfaces...>(component_);
        }
    }

    [[noreturn]] static void ThrowNoReference(const std::string& reference)
    {
        throw std::out_of_range("The component has no reference named " + reference);
    }

    std::shared_ptr<ComponentContext> context_;
    std::shared_ptr<T> component_;
};

}  // namespace cppmicroservices::service::component::detail
