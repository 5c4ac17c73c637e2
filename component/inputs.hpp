#pragma once

// What the areas of the tree may ask of the process around them: services, feature switches, the
// environment, and the diagnostic log in which they say what they made of it.

#include <foundation/cppmicroservices/framework.hpp>
#include <foundation/feature/ifeature.hpp>

#include <cppmicroservices/BundleContext.h>
#include <cppmicroservices/Constants.h>
#include <cppmicroservices/ServiceInterface.h>
#include <cppmicroservices/ServiceObjects.h>

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace settings::verdix {

/// Reports through the assertion hook when the service behind the reference is one of a single configuration.
template <class T>
void assertIfPerConfigService(const cppmicroservices::ServiceReference<T>& reference)
{
    namespace hooks = foundation::cppmicroservices::detail;
    hooks::assertOnFalse(
        [&] { return !hooks::isPerConfigService(reference); },
        "Per-Config Service being returned from getService() call. This is likely unintended "
        "behavior. If intended, please use getPerConfigService API");
}

/// The service of this interface that the process's framework ranks first, or null when there is none. Raises
/// cppmicroservices::ServiceException for an interface without an identifier.
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

/// The variable's text in the encoding of the process, or nothing when it is not set. Read anew on every
/// call; nobody in the process may change the environment meanwhile.
[[nodiscard]] std::optional<std::string> environmentVariable(const char* name);

/// Severity of the decisions that areas log.
inline constexpr int decisionSeverity = 4;

/// Writes the text, directly followed by the detail, to the module's diagnostic log, if that is enabled and
/// takes records of decisionSeverity.
void logDecision(std::string_view text, std::string_view detail = {});

}  // namespace settings::verdix

namespace foundation::feature {

template <int Tag>
class Feature;

/// A feature switch of the environment, by its name.
template <>
class Feature<0> final : public IFeature
{
public:
    /// Raises std::logic_error unless the name ends at `length`. The name is not copied.
    Feature(const char* name, std::size_t length);

    template <std::size_t Size>
    explicit Feature(const char (&name)[Size]) : Feature(name, Size - 1)
    {}

    [[nodiscard]] FeatureState* getState() override;

private:
    std::atomic<FeatureState*> state_{nullptr};
};

}  // namespace foundation::feature
