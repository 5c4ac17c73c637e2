// Starts the bundles in the first two arguments, the module and one of this project's own, and prints the
// factory value of the setting in the third, whose path may leave out the root.

#include <settings_core/tree/path_lookup.hpp>
#include <settings_core/values/value_format.hpp>

#include <foundation/host.hpp>

#include <cppmicroservices/BundleContext.h>
#include <cppmicroservices/Framework.h>
#include <cppmicroservices/FrameworkEvent.h>
#include <cppmicroservices/FrameworkFactory.h>
#include <cppmicroservices/ServiceReference.h>

#include <chrono>
#include <framework_bundles.hpp>
#include <iostream>
#include <memory>
#include <notation.hpp>
#include <stdexcept>
#include <string>

namespace {

/// The service framework of this process.
class RunningFramework
{
public:
    RunningFramework()
    {
        framework_->Start();
        for (const auto file : vx::frameworkBundles) {
            start(std::string(file));
        }
        // The module looks up other services there.
        foundation::host::setFramework(framework_);
    }
    ~RunningFramework()
    {
        foundation::host::setFramework(nullptr);
        framework_->Stop();
        framework_->WaitForStop(std::chrono::milliseconds::zero());
    }
    void start(const std::string& file) { framework_->GetBundleContext().InstallBundles(file).at(0).Start(); }

    template <class Interface>
    std::shared_ptr<Interface> service()
    {
        auto context = framework_->GetBundleContext();
        const auto reference = context.GetServiceReference<Interface>();
        auto service = reference ? context.GetService(reference) : nullptr;
        return service ? service : throw std::runtime_error("a bundle does not offer its service");
    }

private:
    std::shared_ptr<cppmicroservices::Framework> framework_ =
        std::make_shared<cppmicroservices::Framework>(cppmicroservices::FrameworkFactory().NewFramework());
};

void printFactoryValue(RunningFramework& framework, const std::string& path)
{
    const auto loader = framework.service<settings::core::FactorySettingsLoader>();
    const vx::core::SettingsTree tree = vx::core::loadTree(*loader);
    const auto releases = vx::core::loadReleaseChanges(*loader);
    const vx::core::Node& setting = resolveSetting(tree, nodeAt(tree, releases, path));
    const std::string value = vx::core::formatValue(setting.properties().factoryValue);
    std::cout << framework.service<consumer::Notation>()->assignment(path, value) << '\n';
}

}  // namespace

int main(int, char** arguments)
{
    try {
        RunningFramework framework;
        framework.start(arguments[1]);
        framework.start(arguments[2]);
        printFactoryValue(framework, arguments[3]);
        return 0;
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
