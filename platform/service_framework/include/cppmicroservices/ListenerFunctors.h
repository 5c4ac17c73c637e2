#pragma once

#include <functional>

namespace cppmicroservices {

class FrameworkEvent;

/// Called on the thread that caused the event, never while the framework holds a lock.
using FrameworkListener = std::function<void(const FrameworkEvent&)>;

}  // namespace cppmicroservices
