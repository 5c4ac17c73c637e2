#pragma once

#include <foundation/export.hpp>

#include <cppmicroservices/Framework.h>
#include <cppmicroservices/ServiceReference.h>

#include <functional>
#include <memory>
#include <string>

/// Access to the service framework of the process.
namespace foundation::cppmicroservices {

/// Returns the service framework of this process. Throws std::logic_error when the host has not set one.
[[nodiscard]] VX_API std::shared_ptr<::cppmicroservices::Framework> getFramework();

/// Service property of type bool: true for a service that is registered for a single configuration of the
/// environment.
inline constexpr const char* perConfigProperty = "com.tarnwick.service.perconfig";

/// Functions for inline code in other headers; not for direct use.
namespace detail {

/// Passes a message to the message hook of the process. makeMessage is only called when a hook is set.
VX_API void logMessage(const std::function<std::string()>& makeMessage);

/// Passes the message to the assertion hook of the process if the predicate returns false. The hook decides
/// whether the process is terminated.
VX_API void assertOnFalse(const std::function<bool()>& predicate, const std::string& message);

/// Returns true if a service is registered for a single configuration of the environment, and so must not be
/// used for the whole process.
[[nodiscard]] VX_API bool isPerConfigService(const ::cppmicroservices::ServiceReferenceBase& reference);

}  // namespace detail

}  // namespace foundation::cppmicroservices
