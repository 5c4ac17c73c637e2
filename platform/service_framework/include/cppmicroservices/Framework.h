#pragma once

#include <cppmicroservices/Bundle.h>
#include <cppmicroservices/FrameworkConfig.h>

#include <chrono>

namespace cppmicroservices {

class FrameworkEvent;

/// The framework itself, seen as its system bundle (id 0). GetVersion() is the framework's version. It stops
/// when the last handle to it or to one of its bundles is gone.
class US_Framework_EXPORT Framework : public Bundle
{
public:
    /// Throws std::logic_error when the bundle is not the system bundle.
    explicit Framework(Bundle bundle);

    /// Makes the bundle context available without being active yet; Start() does it too.
    void Init();

    /// Waits until the framework has stopped; 0 waits without end.
    /// Returns FRAMEWORK_STOPPED, FRAMEWORK_WAIT_TIMEDOUT, or at once FRAMEWORK_ERROR when it never started.
    FrameworkEvent WaitForStop(const std::chrono::milliseconds& timeout);
};

}  // namespace cppmicroservices
