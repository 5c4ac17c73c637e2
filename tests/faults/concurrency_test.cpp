// Trees built by several threads from one component, while everything around it changes. The thread sanitizer
// is the stricter judge of these tests; without it they tell that every tree is whole.

#include <component/feature.hpp>

#include <foundation/host.hpp>

#include <cppmicroservices/Constants.h>
#include <gtest/gtest.h>

#include <atomic>
#include <barrier>
#include <memory>
#include <stdexcept>
#include <string>
#include <tests/faults/services.hpp>
#include <tests/support/factory_bundle.hpp>
#include <tests/support/outside_core.hpp>
#include <tests/support/soak.hpp>
#include <thread>
#include <vector>

namespace {

using foundation::feature::FeatureState;
using foundation::feature::management::process::getDataPtr;
using tests::DateTimeSettingsInterface;
using tests::OutsideCore;

constexpr std::size_t threadCount = 8;

/// Runs the action on all threads at once, with the thread's number.
template <class Action>
void race(Action action)
{
    std::barrier start(threadCount);
    std::vector<std::jthread> threads;
    for (std::size_t number = 0; number < threadCount; ++number) {
        threads.emplace_back([&, number] {
            start.arrive_and_wait();
            action(number);
        });
    }
}

/// Does one thing after the other, again and again, for as long as the thread lives.
template <class Action>
std::jthread meanwhile(Action action)
{
    return std::jthread([action](const std::stop_token& stop) {
        while (!stop.stop_requested()) {
            action();
        }
    });
}

using ConcurrencyTest = tests::ServicesTest;

TEST_F(ConcurrencyTest, FirstUsesOfALibrary)
{
    context.RegisterService<DateTimeSettingsInterface>(dateTime);
    context.RegisterService<tests::CodeAnalyzerSettingsInterface>(codeAnalyzer);
    const int rounds = tests::runsInFull() ? 200 : 10;
    for (int round = 0; round < rounds; ++round) {
        // Loaded with the first activation, which is part of the race.
        const tests::BundleCopy copy(VX_BUNDLE_FILE);
        auto bundle = framework.start(copy.file());
        codeAnalyzer->queries = 0;
        std::vector<std::unique_ptr<OutsideCore>> cores(threadCount);
        race([&](std::size_t number) {
            const auto loader = tests::factoryLoader(framework.context());
            cores[number] = std::make_unique<OutsideCore>(*loader);
        });
        for (const auto& core : cores) {
            ASSERT_EQ(core->nodes.size(), cores.front()->nodes.size());
        }
        EXPECT_EQ(codeAnalyzer->queries, static_cast<int>(threadCount));
        cores.clear();
        bundle.Stop();
        bundle.Uninstall();
    }
}

TEST(Concurrency, FirstUsesOfAFeatureSwitch)
{
    const int rounds = tests::runsInFull() ? 10000 : 200;
    for (int round = 0; round < rounds; ++round) {
        const std::string name = "race" + std::to_string(round);
        foundation::feature::Feature<0> feature(name.c_str(), name.size());
        std::vector<FeatureState*> states(threadCount);
        race([&](std::size_t number) {
            if (number == 0) {
                foundation::host::setFeature(name, 1);
            }
            states[number] = feature.getState();
            foundation::host::setFeature(name + '.' + std::to_string(number), 2);
        });
        ASSERT_EQ(states, std::vector(threadCount, getDataPtr(name)));
        ASSERT_EQ(feature.get(), 1);
        ASSERT_EQ(getDataPtr(name + '.' + std::to_string(threadCount - 1))->value, 2);
    }
}

TEST_F(ConcurrencyTest, EverythingAroundChanges)
{
    auto bundle = framework.start(VX_BUNDLE_FILE);
    const auto holding = tests::factoryLoader(framework.context());
    const OutsideCore whole(*holding);
    {
        const std::jthread services = meanwhile([&] {
            auto registration = framework.context().RegisterService<DateTimeSettingsInterface>(dateTime);
            registration.SetProperties({{cppmicroservices::Constants::SERVICE_RANKING, 1}});
            std::this_thread::yield();
            registration.Unregister();
        });
        // The library is given a context at each start.
        const std::jthread contexts = meanwhile([&] {
            bundle.Stop();
            bundle.Start();
            EXPECT_NE(tests::factoryLoader(framework.context()), nullptr);
        });
        const std::jthread hooks = meanwhile([] {
            foundation::host::setMessageHook([](const std::string&) {});
            foundation::host::setFeature("webui", 0);
            foundation::host::setMessageHook(nullptr);
        });
        const std::size_t builds = tests::runsInFull() ? 1000 : 10;
        race([&](std::size_t) {
            for (std::size_t build = 0; build < builds; ++build) {
                try {
                    const OutsideCore core(*holding);
                    EXPECT_EQ(core.nodes.size(), whole.nodes.size());
                } catch (const std::invalid_argument&) {
                    continue;  // a service went away between look-up and use
                }
            }
        });
    }
    EXPECT_EQ(OutsideCore(*holding).nodes.size(), whole.nodes.size());
}

}  // namespace
