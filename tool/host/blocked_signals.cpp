#include "host/blocked_signals.hpp"

#include <sys/signalfd.h>
#include <unistd.h>

namespace vx::tool {

BlockedSignals::BlockedSignals(std::initializer_list<int> signals)
{
    sigset_t blocked;
    ::sigemptyset(&blocked);
    for (const int signal : signals) {
        ::sigaddset(&blocked, signal);
    }
    ::sigprocmask(SIG_BLOCK, &blocked, &former_);
    descriptor_ = ::signalfd(-1, &blocked, SFD_CLOEXEC);
}

BlockedSignals::~BlockedSignals()
{
    ::close(descriptor_);
}

void BlockedSignals::deliver() noexcept
{
    ::sigprocmask(SIG_SETMASK, &former_, nullptr);
}

}  // namespace vx::tool
