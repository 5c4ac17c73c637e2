#pragma once

#include <cppmicroservices/FrameworkConfig.h>
#include <cppmicroservices/GlobalConfig.h>
#include <cppmicroservices/ServiceException.h>

#include <memory>
#include <string>
#include <type_traits>
#include <typeinfo>
#include <unordered_map>
#include <utility>

namespace cppmicroservices {

class ServiceFactory;

/// The objects of one service by interface identifier.
using InterfaceMap = std::unordered_map<std::string, std::shared_ptr<void>>;
using InterfaceMapPtr = std::shared_ptr<InterfaceMap>;
using InterfaceMapConstPtr = std::shared_ptr<const InterfaceMap>;

namespace detail {

US_Framework_EXPORT std::string GetDemangledName(const std::type_info& type);

/// The key of a service factory in an interface map.
inline constexpr const char* factoryInterfaceId = "org.cppmicroservices.factory";

}  // namespace detail
}  // namespace cppmicroservices

/// Returns the identifier of a service interface: the demangled name of the type, unless
/// CPPMICROSERVICES_DECLARE_SERVICE_INTERFACE declares another. Empty for void.
template <class T>
const std::string& us_service_interface_iid()
{
    static const std::string name = cppmicroservices::detail::GetDemangledName(typeid(T));
    return name;
}

template <>
inline const std::string& us_service_interface_iid<void>()
{
    static const std::string name;
    return name;
}

/// Declares the identifier of a service interface. Use it at global scope.
#define CPPMICROSERVICES_DECLARE_SERVICE_INTERFACE(_service_interface_type, _service_interface_id)           \
    template <>                                                                                              \
    inline const std::string& us_service_interface_iid<_service_interface_type>()                            \
    {                                                                                                        \
        static const std::string name(_service_interface_id);                                                \
        return name;                                                                                         \
    }

namespace cppmicroservices {

/// Builds the interface map of an object that implements Interfaces, or of a factory that creates such
/// objects; convert to InterfaceMapPtr to get the map. Throws ServiceException when the factory is null.
template <class... Interfaces>
class MakeInterfaceMap
{
public:
    template <class Impl>
    MakeInterfaceMap(const std::shared_ptr<Impl>& impl) : map_(std::make_shared<InterfaceMap>())
    {
        (map_->emplace(us_service_interface_iid<Interfaces>(), std::static_pointer_cast<Interfaces>(impl)),
         ...);
    }

    MakeInterfaceMap(const std::shared_ptr<ServiceFactory>& factory) : map_(std::make_shared<InterfaceMap>())
    {
        if (!factory) {
            throw ServiceException("The service factory argument must not be nullptr.");
        }
        (map_->emplace(us_service_interface_iid<Interfaces>(), nullptr), ...);
        map_->emplace(detail::factoryInterfaceId, factory);
    }

    operator InterfaceMapPtr() const { return map_; }
    operator InterfaceMapConstPtr() const { return map_; }

private:
    InterfaceMapPtr map_;
};

/// Returns the object for Interface; null when there is none.
template <class Interface>
std::shared_ptr<Interface> ExtractInterface(const InterfaceMapConstPtr& map)
{
    const auto found = map->find(us_service_interface_iid<Interface>());
    return found == map->end() ? nullptr : std::static_pointer_cast<Interface>(found->second);
}

/// Returns the object for an identifier, or any object when the identifier is empty; null when there is none.
inline std::shared_ptr<void> ExtractInterface(const InterfaceMapConstPtr& map, const std::string& interfaceId)
{
    if (!map || map->empty()) {
        return nullptr;
    }
    const auto found = interfaceId.empty() ? map->begin() : map->find(interfaceId);
    return found == map->end() ? nullptr : found->second;
}

/// Converts a factory to the pointer type that BundleContext::RegisterService expects.
template <class T>
std::shared_ptr<ServiceFactory> ToFactory(const std::shared_ptr<T>& factory)
{
    return std::static_pointer_cast<ServiceFactory>(factory);
}

}  // namespace cppmicroservices
