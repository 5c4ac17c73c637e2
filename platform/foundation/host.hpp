#pragma once

// What the process that hosts the environment's modules sets up: the service framework, hooks for messages
// and failed assertions, the logging filter and the feature switches.

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
enum Severity : int;  // a host that sets no threshold does without the logging library's headers
}

namespace foundation::host {

/// Names the process-wide framework; null takes it back.
VX_API void setFramework(std::shared_ptr<::cppmicroservices::Framework> framework);

using MessageHook = std::function<void(const std::string& message)>;

/// Receives the messages of service look-ups. Without a hook they are not even composed. Returns the hook
/// that was there before.
VX_API MessageHook setMessageHook(MessageHook hook);

/// Receives the messages of failed assertions; without one they are written to the diagnostic log as errors.
/// Returns the hook that was there before.
VX_API MessageHook setAssertionHook(MessageHook hook);

/// Lets records of this severity and worse through to standard error, and drops the others before their text
/// is composed. The process starts with `warning`.
VX_API void setLogThreshold(log::Severity threshold);

/// Sets a feature switch for the whole process.
VX_API void setFeature(const std::string& name, int value);

/// Every feature that was set or asked for so far, by name.
[[nodiscard]] VX_API std::vector<std::pair<std::string, int>> features();

}  // namespace foundation::host
