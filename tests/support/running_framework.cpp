#include <foundation/host.hpp>

#include <cppmicroservices/FrameworkEvent.h>
#include <cppmicroservices/FrameworkFactory.h>

#include <chrono>
#include <framework_bundles.hpp>
#include <tests/support/running_framework.hpp>

namespace tests {

using cppmicroservices::FrameworkEvent;

RunningFramework::RunningFramework()
    : framework_(
          std::make_shared<cppmicroservices::Framework>(cppmicroservices::FrameworkFactory().NewFramework()))
{
    framework_->Start();
    for (const std::string_view file : vx::frameworkBundles) {
        start(std::string(file));
    }
    context().AddFrameworkListener([this](const FrameworkEvent& event) {
        if (event.GetType() == FrameworkEvent::FRAMEWORK_ERROR) {
            const std::lock_guard lock(mutex_);
            errors_.push_back(event.GetMessage());
        }
    });
    foundation::host::setFramework(framework_);
}

RunningFramework::~RunningFramework()
{
    foundation::host::setFramework(nullptr);
    stop();
}

cppmicroservices::Bundle RunningFramework::install(const std::string& file) const
{
    return context().InstallBundles(file).at(0);
}

cppmicroservices::Bundle RunningFramework::start(const std::string& file) const
{
    cppmicroservices::Bundle bundle = install(file);
    bundle.Start();
    return bundle;
}

void RunningFramework::stop()
{
    framework_->Stop();
    framework_->WaitForStop(std::chrono::milliseconds::zero());
}

std::vector<std::string> RunningFramework::errors() const
{
    const std::lock_guard lock(mutex_);
    return errors_;
}

}  // namespace tests
