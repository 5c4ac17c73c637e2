// The module as its environment meets it: a bundle file, started by the service framework, whose loader
// service is called by a settings core of its own.

#include <settings/core/factory_settings_loader.hpp>

#include <gtest/gtest.h>

#include <cstddef>
#include <tests/support/factory_bundle.hpp>
#include <tests/support/outside_core.hpp>
#include <tests/support/running_framework.hpp>

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

}  // namespace
