#include <component/bundle_context.hpp>
#include <component/factory_settings_verdix.hpp>

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

using settings::core::FactorySettingsLoader;

TEST(Exports, TheLastBundleContextStays)
{
    EXPECT_EQ(settings::verdix::getBundleContext(), nullptr);
    for (std::uintptr_t handle : {16U, 32U, 0U}) {
        auto* context = reinterpret_cast<cppmicroservices::BundleContextPrivate*>(handle);
        _us_set_bundle_context_instance_com_tarnwick_verdix_factory_settings(context);
        EXPECT_EQ(settings::verdix::getBundleContext(), context);
    }
}

TEST(Exports, AnInstanceOffersTheLoaderOnceItIsCreated)
{
    DeleteInstance_settings_verdix_FactorySettingsVerdix(nullptr);

    auto* instance = NewInstance_settings_verdix_FactorySettingsVerdix();
    instance->CreateInstance(nullptr);
    instance->Activate();
    const auto interfaces = instance->GetInterfaceMap();
    ASSERT_EQ(interfaces->size(), 1U);
    const auto loader = cppmicroservices::ExtractInterface<FactorySettingsLoader>(interfaces);
    ASSERT_NE(loader, nullptr);
    instance->Deactivate();
    DeleteInstance_settings_verdix_FactorySettingsVerdix(instance);
    EXPECT_EQ(loader->getRootGroupName(), "verdix") << "held beyond its wrapper";
}

TEST(Component, ListsAreAppendedTo)
{
    settings::verdix::FactorySettingsVerdix component;
    FactorySettingsLoader& loader = component;
    std::vector<std::string> paths = {"mine"};
    loader.getSettingPathList(paths);
    loader.getSettingPathList(paths);
    const std::string path = "verdix.supportpackageupgrade.ShowUpgradeUI";
    EXPECT_THAT(paths, testing::ElementsAre("mine", path, path));
    EXPECT_FALSE(loader.queryFlag());
    loader.migrateData(u"folder");
}

}  // namespace
