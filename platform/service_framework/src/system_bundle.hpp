#pragma once

#include <bundle_private.hpp>
#include <chrono>
#include <condition_variable>
#include <mutex>

namespace cppmicroservices {

/// The framework as a bundle: its start and stop are the framework's.
class SystemBundle final : public BundlePrivate
{
public:
    explicit SystemBundle(std::weak_ptr<CoreBundleContext> core);

    void Init();
    void Start() override;
    void Stop() override;
    void Uninstall() override;

    /// False when the time has passed first; 0 waits without end.
    bool WaitForStop(std::chrono::milliseconds timeout);

private:
    bool IsStopped() const noexcept;
    void SetState(Bundle::State state);

    std::mutex waitMutex_;
    std::condition_variable stateChanged_;
};

}  // namespace cppmicroservices
