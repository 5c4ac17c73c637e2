// Building the tree again and again must not use up memory. Every allocation of the process is counted, those
// of the module and the settings core included.

#include <component/factory_settings_verdix.hpp>
#include <settings_core/settings_tree.hpp>

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <fstream>
#include <new>
#include <string>
#include <tests/support/running_framework.hpp>
#include <unistd.h>

namespace {

std::atomic<long> liveAllocations{0};

long residentKilobytes()
{
    std::ifstream statm("/proc/self/statm");
    long total = 0;
    long resident = 0;
    statm >> total >> resident;
    return resident * (sysconf(_SC_PAGESIZE) / 1024);
}

}  // namespace

void* operator new(std::size_t size)
{
    void* memory = std::malloc(size == 0 ? 1 : size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    ++liveAllocations;
    return memory;
}

void operator delete(void* memory) noexcept
{
    if (memory != nullptr) {
        --liveAllocations;
        std::free(memory);
    }
}

void operator delete(void* memory, std::size_t /*size*/) noexcept
{
    operator delete(memory);
}

namespace {

TEST(TreeMemory, StaysFlatOverManyBuilds)
{
    tests::RunningFramework framework;
    settings::verdix::FactorySettingsVerdix component;
    const auto build = [&] {
        const long before = liveAllocations;
        const auto tree = vx::core::loadTree(component);
        ASSERT_GT(liveAllocations - before, static_cast<long>(tree.nodes().size())) << "not all are counted";
    };
    for (int warmUp = 0; warmUp < 100; ++warmUp) {
        build();
    }
    const long allocations = liveAllocations;
    const long resident = residentKilobytes();
    for (int round = 0; round < VX_TREE_BUILDS; ++round) {
        build();
    }
    EXPECT_EQ(liveAllocations, allocations);
    if (VX_WATCH_RESIDENT_MEMORY) {
        EXPECT_LE(residentKilobytes(), resident + 512) << "kilobytes";
    }
}

}  // namespace
