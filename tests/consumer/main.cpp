// Loads the bundle in the first argument, and prints the factory value of the setting in the second.

#include <settings_core/tree/path_lookup.hpp>
#include <settings_core/values/value_format.hpp>

#include <foundation/host.hpp>
#include <settings/core/factory_settings_loader.hpp>

#include <cppmicroservices/BundleContext.h>
#include <cppmicroservices/Framework.h>
#include <cppmicroservices/FrameworkEvent.h>
#include <cppmicroservices/FrameworkFactory.h>
#include <cppmicroservices/ServiceReference.h>

#include <chrono>
#include <framework_bundles.hpp>
#include <iostream>
#include <memory>
#include <string>
#include <string_view>

using settings::core::FactorySettingsLoader;

int main(int, char** arguments)
{
    const auto framework =
        std::make_shared<cppmicroservices::Framework>(cppmicroservices::FrameworkFactory().NewFramework());
    framework->Start();
    foundation::host::setFramework(framework);
    auto context = framework->GetBundleContext();
    for (const std::string_view file : vx::frameworkBundles) {
        context.InstallBundles(std::string(file)).at(0).Start();
    }
    context.InstallBundles(arguments[1]).at(0).Start();
    {
        const auto loader = context.GetService(context.GetServiceReference<FactorySettingsLoader>());
        const vx::core::SettingsTree tree = vx::core::loadTree(*loader);
        std::cout << vx::core::formatValue(vx::core::nodeAt(tree, {}, arguments[2]).properties().factoryValue)
                  << '\n';
    }
    foundation::host::setFramework(nullptr);
    framework->Stop();
    framework->WaitForStop(std::chrono::milliseconds::zero());
}
