// Has the bundle in the first argument build its tree, and prints the record: a node a line.

#include <foundation/cppmicroservices/framework.hpp>
#include <settings/core/factory_settings_loader.hpp>

#include <cppmicroservices/FrameworkEvent.h>

#include <chrono>
#include <framework_bundles.hpp>
#include <iostream>
#include <tests/support/factory_bundle.hpp>
#include <tests/support/outside_core.hpp>

int main(int, char** arguments)
{
    const auto framework = foundation::cppmicroservices::getFramework();
    auto context = framework->GetBundleContext();
    for (const std::string_view file : vx::frameworkBundles) {
        context.InstallBundles(std::string(file)).at(0).Start();
    }
    context.InstallBundles(arguments[1]).at(0).Start();
    {
        const auto loader = tests::factoryLoader(context);
        const tests::OutsideCore core(*loader);
        for (const tests::CreatedNode& node : core.nodes) {
            std::cout << node.path << (node.isSetting ? " setting " : " group ")
                      << node.properties.aliasName() << '\n';
        }
    }
    framework->Stop();
    framework->WaitForStop(std::chrono::milliseconds::zero());
}
