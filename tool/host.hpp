#pragma once

#include <settings/core/factory_settings_loader.hpp>

#include <cppmicroservices/Bundle.h>
#include <cppmicroservices/Framework.h>

#include <filesystem>
#include <memory>
#include <vector>

namespace vx::tool {

/// The running executable.
[[nodiscard]] std::filesystem::path executableFile();

/// The factory-settings bundle beside the tool's own libraries.
[[nodiscard]] std::filesystem::path defaultBundleFile();

/// The service framework of this process with the bundles it needs itself, started.
class RunningFramework
{
public:
    /// Raises Failure.
    RunningFramework();
    RunningFramework(const RunningFramework&) = delete;
    RunningFramework& operator=(const RunningFramework&) = delete;
    ~RunningFramework();

    [[nodiscard]] cppmicroservices::Framework& framework() const noexcept { return *framework_; }

private:
    std::shared_ptr<cppmicroservices::Framework> framework_;
};

/// The factory-settings bundle, started, with the provider it offers. Whatever a provider built has to go
/// before its host, which stops the bundle.
class Host
{
public:
    /// Raises Failure with the file and the reason.
    explicit Host(const std::filesystem::path& bundleFile);
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;
    ~Host();

    [[nodiscard]] const cppmicroservices::Bundle& bundle() const noexcept { return bundle_; }
    [[nodiscard]] settings::core::FactorySettingsLoader& loader() const noexcept { return *loader_; }

    /// Every bundle of the framework, itself among them, by id.
    [[nodiscard]] std::vector<cppmicroservices::Bundle> bundles() const;

private:
    RunningFramework framework_;
    cppmicroservices::Bundle bundle_;
    std::shared_ptr<settings::core::FactorySettingsLoader> loader_;
};

}  // namespace vx::tool
