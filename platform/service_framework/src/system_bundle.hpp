#pragma once

#include <bundle_private.hpp>
#include <chrono>
#include <condition_variable>
#include <mutex>

namespace cppmicroservices {

/// The framework as a bundle: starting and stopping it starts and stops the framework.
class SystemBundle final : public BundlePrivate
{
public:
    explicit SystemBundle(std::weak_ptr<CoreBundleContext> core);

    void Init();
    void Start() override;
    void Stop() override;
    void Uninstall() override;

    /// Waits until the framework has stopped; a timeout of 0 waits without limit. Returns false on a timeout.
    bool WaitForStop(std::chrono::milliseconds timeout);

private:
    bool IsStopped() const noexcept;
    void SetState(Bundle::State state);

    std::mutex waitMutex_;
    std::condition_variable stateChanged_;
};

}  // namespace cppmicroservices
