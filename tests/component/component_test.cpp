#include <component/bundle_context.hpp>

#include <settings/core/factory_settings_loader.hpp>

#include <cppmicroservices/servicecomponent/detail/ComponentInstance.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using cppmicroservices::service::component::detail::ComponentInstance;

extern "C" {
ComponentInstance* NewInstance_settings_verdix_FactorySettingsVerdix();
void DeleteInstance_settings_verdix_FactorySettingsVerdix(ComponentInstance* instance);
// NOLINTNEXTLINE(bugprone-reserved-identifier)
void _us_set_bundle_context_instance_com_tarnwick_verdix_factory_settings(
    cppmicroservices::BundleContextPrivate*);
}

namespace {

TEST(Exports, TheLastBundleContextStays)
{
    EXPECT_EQ(settings::verdix::getBundleContext(), nullptr);
    for (std::uintptr_t handle : {16U, 32U, 0U}) {
        auto* context = reinterpret_cast<cppmicroservices::BundleContextPrivate*>(handle);
        _us_set_bundle_context_instance_com_tarnwick_verdix_factory_settings(context);
        EXPECT_EQ(settings::verdix::getBundleContext(), context);
    }
}

TEST(Exports, AnInstanceOffersALoaderThatOutlivesIt)
{
    DeleteInstance_settings_verdix_FactorySettingsVerdix(nullptr);

    auto* instance = NewInstance_settings_verdix_FactorySettingsVerdix();
    instance->CreateInstance(nullptr);
    instance->Activate();
    const auto interfaces = instance->GetInterfaceMap();
    EXPECT_EQ(interfaces->size(), 1U);
    const auto loader = cppmicroservices::ExtractInterface<settings::core::FactorySettingsLoader>(interfaces);
    instance->Deactivate();
    DeleteInstance_settings_verdix_FactorySettingsVerdix(instance);
    ASSERT_NE(loader, nullptr);
    EXPECT_EQ(loader->getRootGroupName(), "verdix");
    EXPECT_FALSE(loader->queryFlag());
    std::vector<std::string> paths = {"mine"};
    loader->getSettingPathList(paths);
    EXPECT_THAT(paths, testing::ElementsAre("mine", "verdix.supportpackageupgrade.ShowUpgradeUI"));
}

}  // namespace
