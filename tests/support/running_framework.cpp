#include <foundation/host.hpp>

#include <cppmicroservices/FrameworkEvent.h>
#include <cppmicroservices/FrameworkFactory.h>

#include <chrono>
#include <framework_bundles.hpp>
#include <tests/support/running_framework.hpp>

namespace tests {

RunningFramework::RunningFramework()
    : framework_(
          std::make_shared<cppmicroservices::Framework>(cppmicroservices::FrameworkFactory().NewFramework()))
{
    framework_->Start();
    for (const std::string_view file : vx::frameworkBundles) {
        start(std::string(file));
    }
    foundation::host::setFramework(framework_);
}

RunningFramework::~RunningFramework()
{
    foundation::host::setFramework(nullptr);
    framework_->Stop();
    framework_->WaitForStop(std::chrono::milliseconds::zero());
}

cppmicroservices::Bundle RunningFramework::start(const std::string& file)
{
    cppmicroservices::Bundle bundle = context().InstallBundles(file).at(0);
    bundle.Start();
    return bundle;
}

}  // namespace tests
