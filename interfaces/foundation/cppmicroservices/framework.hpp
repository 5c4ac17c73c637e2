#pragma once

#include <foundation/export.hpp>

#include <cppmicroservices/Framework.h>
#include <cppmicroservices/ServiceReference.h>

#include <functional>
#include <memory>
#include <string>

/// Access to the service framework of the process.
namespace foundation::cppmicroservices {

/// The service framework of this process. Raises std::logic_error before a host has named one.
[[nodiscard]] VX_API std::shared_ptr<::cppmicroservices::Framework> getFramework();

/// Service property that marks, with the bool value true, a service published for one configuration of the
/// environment only.
inline constexpr const char* perConfigProperty = "com.tarnwick.service.perconfig";

/// What code that is compiled into the caller needs of the library.
namespace detail {

/// Hands a message to the process's message hook. The text is asked for only if somebody listens.
VX_API void logMessage(const std::function<std::string()>& text);

/// Evaluates the predicate and hands the message to the process's assertion hook when it is false. Whether
/// that ends the process is the hook's decision.
VX_API void assertOnFalse(const std::function<bool()>& predicate, const std::string& message);

/// True when a service is published for one configuration of the environment only, and so should not be
/// shared by the whole process.
[[nodiscard]] VX_API bool isPerConfigService(const ::cppmicroservices::ServiceReferenceBase& reference);

}  // namespace detail

}  // namespace foundation::cppmicroservices
