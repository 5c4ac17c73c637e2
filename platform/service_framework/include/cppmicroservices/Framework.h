#pragma once

#include <cppmicroservices/Bundle.h>
#include <cppmicroservices/FrameworkConfig.h>

#include <chrono>

namespace cppmicroservices {

class FrameworkEvent;

/// The framework, represented by its system bundle (id 0). GetVersion() returns the version of the framework.
/// It stops when the last handle to it or to one of its bundles is destroyed.
class US_Framework_EXPORT Framework : public Bundle
{
public:
    /// Throws std::logic_error when the bundle is not the system bundle.
    explicit Framework(Bundle bundle);

    /// Makes the bundle context available before the framework is active. Start() calls it when necessary.
    void Init();

    /// Waits until the framework has stopped, for at most timeout; 0 waits without limit. Returns
    /// FRAMEWORK_STOPPED, FRAMEWORK_WAIT_TIMEDOUT, or immediately FRAMEWORK_ERROR when it was never started.
    FrameworkEvent WaitForStop(const std::chrono::milliseconds& timeout);
};

}  // namespace cppmicroservices
