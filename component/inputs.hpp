#pragma once

// The inputs of the areas from the process: services, feature switches and environment variables; and the
// diagnostic log in which areas explain decisions based on them.

#include <component/environment.hpp>

#include <foundation/cppmicroservices/framework.hpp>

#include <cppmicroservices/BundleContext.h>
#include <cppmicroservices/Constants.h>
#include <cppmicroservices/ServiceInterface.h>
#include <cppmicroservices/ServiceObjects.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace settings::verdix {

/// Reports a failed assertion if the service is registered for a single configuration of the environment.
template <class T>
void assertIfPerConfigService(const cppmicroservices::ServiceReference<T>& reference)
{
    namespace hooks = foundation::cppmicroservices::detail;
    hooks::assertOnFalse(
        [&] { return !hooks::isPerConfigService(reference); },
        "Per-Config Service being returned from getService() call. This is likely unintended "
        "behavior. If intended, please use getPerConfigService API");
}

/// Returns the service with interface T that has the highest ranking; null when there is none. Throws
/// cppmicroservices::ServiceException when T has no interface identifier.
template <class T>
[[nodiscard]] std::shared_ptr<T> getServiceFromContext()
{
    using foundation::cppmicroservices::detail::logMessage;

    auto context = foundation::cppmicroservices::getFramework()->GetBundleContext();
    const auto references = context.template GetServiceReferences<T>();
    const std::string& interfaceId = us_service_interface_iid<T>();
    logMessage([&] {
        return "getService<" + interfaceId + ">: found [" + std::to_string(references.size()) + "] services.";
    });
    if (references.empty()) {
        logMessage([] { return std::string("getService found [0] services."); });
        return nullptr;
    }
    const auto& chosen = *std::max_element(references.begin(), references.end());
    logMessage([&] {
        return "getService<" + interfaceId + ">: returning service with service.id: " +
               chosen.GetProperty(cppmicroservices::Constants::SERVICE_ID).ToStringNoExcept();
    });
    assertIfPerConfigService<T>(chosen);
    return context.GetServiceObjects(chosen).GetService();
}

/// Returns the current value of an environment variable; std::nullopt when it is not set. No other thread may
/// change the environment during the call.
[[nodiscard]] std::optional<std::string> environmentVariable(EnvironmentInput input);

/// Returns the current value of a feature switch: 0 is off, everything else is on.
[[nodiscard]] int featureSwitch(FeatureInput input);

/// Severity of logged decisions: debug.
inline constexpr int decisionSeverity = 4;

/// Logs message and detail, without a separator, with decisionSeverity.
void logDecision(std::string_view message, std::string_view detail = {});

}  // namespace settings::verdix
