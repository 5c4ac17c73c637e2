// The module as its environment meets it: a bundle file, started by the service framework, whose loader
// service is called by a settings core of its own.

#include <settings/core/factory_settings_loader.hpp>

#include <gtest/gtest.h>

#include <iostream>
#include <string>
#include <tests/support/factory_bundle.hpp>
#include <tests/support/memory_use.hpp>
#include <tests/support/outside_core.hpp>
#include <tests/support/running_framework.hpp>
#include <tests/support/soak.hpp>

namespace {

using settings::core::FactorySettingsLoader;
using tests::factoryLoader;
using tests::OutsideCore;

TEST(Bundle, AFailureAnywhereLeavesTheNodesMadeBefore)
{
    tests::RunningFramework framework;
    framework.start(VX_BUNDLE_FILE);
    const auto loader = factoryLoader(framework.context());
    ASSERT_NE(loader, nullptr);

    std::size_t refusedAt = 0;
    for (;; ++refusedAt) {
        OutsideCore core("verdix");
        core.refuseAt = refusedAt;
        try {
            loader->createTree(core.root);
            break;
        } catch (const tests::Refused& refusal) {
            ASSERT_EQ(refusal.index, refusedAt);
            ASSERT_EQ(core.nodes.size(), refusedAt);
        }
    }
    EXPECT_EQ(refusedAt, OutsideCore(*loader).nodes.size()) << "every node was refused once";
}

TEST(Bundle, LoadsAndUnloadsAThousandTimes)
{
    tests::RunningFramework framework;
    const auto load = [&](bool buildsTree) {
        auto bundle = framework.start(VX_BUNDLE_FILE);
        auto loader = factoryLoader(framework.context());
        ASSERT_NE(loader, nullptr);
        ASSERT_EQ(loader->getRootGroupName(), "verdix");
        if (buildsTree) {
            const OutsideCore core(*loader);
        }
        loader.reset();
        bundle.Stop();
        bundle.Uninstall();
        ASSERT_FALSE(framework.context().GetServiceReference<FactorySettingsLoader>());
    };
    const int cycles = tests::runsInFull() ? 10'000 : 1'000;
    for (int warmUp = 0; warmUp < 100; ++warmUp) {
        load(true);
    }
    const tests::MemoryUse before;
    for (int cycle = 0; cycle < cycles; ++cycle) {
        load(cycle % 100 == 0);
        ASSERT_FALSE(HasFailure()) << "cycle " << cycle;
    }
    std::cout << "loaded and unloaded: " << cycles << '\n';
    tests::expectNoGrowth(before);
}

}  // namespace
