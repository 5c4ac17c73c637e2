#pragma once

// Watches and fails the allocations of a whole test program, those of its shared libraries included.

#include <cstddef>
#include <cstdint>
#include <new>

namespace tests {

/// Allocations of all threads that are not freed yet.
[[nodiscard]] long liveAllocations() noexcept;

/// Allocations that this thread ever made, but for those that were sure to succeed.
[[nodiscard]] std::size_t allocationsMade() noexcept;

enum class Failing : std::uint8_t
{
    once,
    fromThenOn
};

/// While it lives, the allocation of this thread with the number given, counted from 0, fails; on request all
/// after it do as well.
class FailingAllocation
{
public:
    explicit FailingAllocation(std::size_t index, Failing failing = Failing::once) noexcept;
    ~FailingAllocation();
    FailingAllocation(const FailingAllocation&) = delete;
    FailingAllocation& operator=(const FailingAllocation&) = delete;

    /// Whether that many allocations were asked for at all.
    [[nodiscard]] bool hasFailed() const noexcept;
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
