#pragma once

#include <cppmicroservices/Bundle.h>
#include <cppmicroservices/BundleContext.h>
#include <cppmicroservices/Framework.h>

#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace tests {

/// A started service framework with its component runtime, named as the process's own while it lives.
class RunningFramework
{
public:
    RunningFramework();
    ~RunningFramework();

    [[nodiscard]] cppmicroservices::Framework& framework() const { return *framework_; }
    [[nodiscard]] cppmicroservices::BundleContext context() const { return framework_->GetBundleContext(); }

    /// Installs the one bundle in this file. What the framework raises is passed on, as by start.
    cppmicroservices::Bundle install(const std::string& file) const;

    /// Installs and starts the bundle in this file.
    cppmicroservices::Bundle start(const std::string& file) const;

    void stop();

    /// What the framework has reported as errors.
    [[nodiscard]] std::vector<std::string> errors() const;

private:
    std::shared_ptr<cppmicroservices::Framework> framework_;
    mutable std::mutex mutex_;
    std::vector<std::string> errors_;
};

}  // namespace tests
