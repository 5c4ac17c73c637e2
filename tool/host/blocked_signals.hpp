#pragma once

#include <csignal>
#include <initializer_list>

namespace vx::tool {

/// Keeps signals pending that would end or stop the process. To be created before any thread, which inherits
/// that they are blocked.
class BlockedSignals
{
public:
    explicit BlockedSignals(std::initializer_list<int> signals);
    BlockedSignals(const BlockedSignals&) = delete;
    BlockedSignals& operator=(const BlockedSignals&) = delete;
    ~BlockedSignals();

    /// Returns a descriptor that is readable when one of the signals is pending.
    [[nodiscard]] int descriptor() const noexcept { return descriptor_; }

    /// Blocks the signals no longer, so that what is pending has its effect now.
    void deliver() noexcept;

private:
    sigset_t former_ = {};
    int descriptor_ = -1;
};

}  // namespace vx::tool
