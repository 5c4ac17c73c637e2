#pragma once

#include <cppmicroservices/Bundle.h>
#include <cppmicroservices/BundleContext.h>
#include <cppmicroservices/Framework.h>

#include <memory>
#include <string>

namespace tests {

/// A started service framework with its component runtime, named as the process's own while it lives.
class RunningFramework
{
public:
    RunningFramework();
    ~RunningFramework();
    RunningFramework(const RunningFramework&) = delete;
    RunningFramework& operator=(const RunningFramework&) = delete;

    [[nodiscard]] cppmicroservices::BundleContext context() const { return framework_->GetBundleContext(); }

    /// Installs and starts the bundle in this file. What the framework raises is passed on.
    cppmicroservices::Bundle start(const std::string& file);

private:
    std::shared_ptr<cppmicroservices::Framework> framework_;
};

}  // namespace tests
