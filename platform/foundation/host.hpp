#pragma once

// Functions with which a host process sets up the environment of the modules: the service framework, hooks
// for messages and failed assertions, the log threshold and the feature switches.

#include <foundation/export.hpp>

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace cppmicroservices {
class Framework;
}

namespace foundation::log {
enum Severity : int;  // declared here, so that not every host includes the headers of Boost.Log
}

namespace foundation::host {

/// Sets the framework that foundation::cppmicroservices::getFramework returns; null clears it.
VX_API void setFramework(std::shared_ptr<::cppmicroservices::Framework> framework);

using MessageHook = std::function<void(const std::string& message)>;

/// Sets the function that receives messages about service lookups; without one, the messages are not built.
/// Returns the previous hook.
VX_API MessageHook setMessageHook(MessageHook hook);

/// Sets the function that receives the messages of failed assertions; without one, they are logged as errors.
/// Returns the previous hook.
VX_API MessageHook setAssertionHook(MessageHook hook);

/// Sets the minimum severity that is logged to standard error. Less severe messages are discarded before they
/// are formatted. The default is `warning`.
VX_API void setLogThreshold(log::Severity threshold);

/// Sets a feature switch for the whole process.
VX_API void setFeature(const std::string& name, int value);

/// Returns the values of all features that were set or requested so far, ordered by name.
[[nodiscard]] VX_API std::vector<std::pair<std::string, int>> features();

}  // namespace foundation::host
