// Building the tree again and again must not use up memory. Every allocation of the process is counted, those
// of the module and the settings core included.

#include <component/factory_settings_verdix.hpp>
#include <settings_core/settings_tree.hpp>

#include <gtest/gtest.h>

#include <iostream>
#include <tests/support/allocations.hpp>
#include <tests/support/memory_use.hpp>
#include <tests/support/running_framework.hpp>
#include <tests/support/soak.hpp>

namespace {

TEST(TreeMemory, StaysFlatOverManyBuilds)
{
    tests::RunningFramework framework;
    settings::verdix::FactorySettingsVerdix component;
    const auto build = [&] {
        const long before = tests::liveAllocations();
        const auto tree = vx::core::loadTree(component);
        // At least the values that are no logical scalars are made anew.
        ASSERT_GT(tests::liveAllocations() - before, static_cast<long>(tree.nodes().size()) / 4)
            << "not all are counted";
    };
    for (int warmUp = 0; warmUp < 100; ++warmUp) {
        build();
    }
    // Sanitizers slow each build down tenfold and find a leak in the first one.
    const int builds = tests::runsInFull() ? 100'000 : VX_SANITIZED ? 300 : 10'000;
    const tests::MemoryUse before;
    for (int round = 0; round < builds; ++round) {
        build();
    }
    std::cout << "trees built: " << builds << '\n';
    tests::expectNoGrowth(before);
}

}  // namespace
