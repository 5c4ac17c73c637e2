#pragma once

#include <cstddef>
#include <new>

namespace tests {

/// While it lives, the allocation of this thread with the number given, counted from 0, fails.
class FailingAllocation
{
public:
    explicit FailingAllocation(std::size_t index) noexcept;
    ~FailingAllocation();
    FailingAllocation(const FailingAllocation&) = delete;
    FailingAllocation& operator=(const FailingAllocation&) = delete;
};

/// Runs the action again and again, one allocation later failing each time, until it succeeds; calls
/// `afterFailure` in between. Returns how many allocations failed.
template <class Action, class AfterFailure>
std::size_t failEveryAllocation(Action action, AfterFailure afterFailure)
{
    for (std::size_t index = 0;; ++index) {
        bool succeeded = true;
        try {
            const FailingAllocation failing(index);
            action();
        } catch (const std::bad_alloc&) {
            succeeded = false;
        }
        if (succeeded) {
            return index;
        }
        afterFailure();
    }
}

}  // namespace tests
