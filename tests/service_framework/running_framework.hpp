#pragma once

#include <cppmicroservices/BundleContext.h>
#include <cppmicroservices/Framework.h>
#include <cppmicroservices/FrameworkEvent.h>
#include <cppmicroservices/FrameworkFactory.h>

#include <framework_bundles.hpp>
#include <mutex>
#include <string>
#include <vector>

/// A started framework with the bundles it needs, and the errors it has reported.
class RunningFramework
{
public:
    RunningFramework() : framework_(cppmicroservices::FrameworkFactory().NewFramework())
    {
        framework_.Start();
        for (const auto file : vx::frameworkBundles) {
            for (auto& bundle : context().InstallBundles(std::string(file))) {
                bundle.Start();
            }
        }
        context().AddFrameworkListener([this](const cppmicroservices::FrameworkEvent& event) {
            if (event.GetType() == cppmicroservices::FrameworkEvent::FRAMEWORK_ERROR) {
                const std::lock_guard lock(mutex_);
                errors_.push_back(event.GetMessage());
            }
        });
    }
    RunningFramework(const RunningFramework&) = delete;
    RunningFramework& operator=(const RunningFramework&) = delete;
    ~RunningFramework() { stop(); }

    cppmicroservices::Framework& framework() { return framework_; }
    cppmicroservices::BundleContext context() const { return framework_.GetBundleContext(); }

    void stop()
    {
        framework_.Stop();
        framework_.WaitForStop(std::chrono::milliseconds::zero());
    }

    std::vector<std::string> errors() const
    {
        const std::lock_guard lock(mutex_);
        return errors_;
    }

private:
    cppmicroservices::Framework framework_;
    mutable std::mutex mutex_;
    std::vector<std::string> errors_;
};
