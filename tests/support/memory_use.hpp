#pragma once

#include <gtest/gtest.h>

#include <iostream>
#include <tests/support/allocations.hpp>

namespace tests {

/// What the process uses at the moment of its making.
struct MemoryUse
{
    long allocations = liveAllocations();
    long kilobytes = residentKilobytes();
};

/// Whether the process uses as much as before. Sanitizers keep freed memory back to catch its use, so that
/// the resident memory says nothing there.
inline void expectNoGrowth(const MemoryUse& before)
{
    constexpr long slack = 512;
    const MemoryUse now;
    std::cout << "allocations: " << before.allocations << " before, " << now.allocations
              << " after; resident kilobytes: " << before.kilobytes << " before, " << now.kilobytes
              << " after\n";
    EXPECT_EQ(now.allocations, before.allocations);
    if (!VX_SANITIZED) {
        EXPECT_LE(now.kilobytes, before.kilobytes + slack);
    }
}

}  // namespace tests
