#pragma once

#include <settings/core/factory_settings_loader.hpp>

#include <cppmicroservices/Bundle.h>
#include <cppmicroservices/Framework.h>

#include <filesystem>
#include <memory>
#include <vector>

namespace vx::tool {

/// Returns the path of the running executable.
[[nodiscard]] std::filesystem::path executableFile();

/// Returns the path of the factory settings bundle that was built or installed with this executable.
[[nodiscard]] std::filesystem::path defaultBundleFile();

/// Returns the path of the JSON Schema of settings files that was built or installed with this executable.
/// The file need not exist.
[[nodiscard]] std::filesystem::path defaultSchemaFile();

/// Returns the folder of the catalog that was built or installed with this executable. It need not exist.
[[nodiscard]] std::filesystem::path defaultCatalogFolder();

/// Runs the service framework of this process, and the bundles that the framework itself needs.
class RunningFramework
{
public:
    /// Throws CommandError if the framework cannot be started.
    RunningFramework();
    RunningFramework(const RunningFramework&) = delete;
    RunningFramework& operator=(const RunningFramework&) = delete;
    ~RunningFramework();

    [[nodiscard]] cppmicroservices::Framework& framework() const noexcept { return *framework_; }

private:
    std::shared_ptr<cppmicroservices::Framework> framework_;
};

/// Runs the factory settings bundle and holds the provider service of the bundle. The destructor stops the
/// bundle, so objects that the provider created have to be destroyed before their host.
class Host
{
public:
    /// Throws CommandError if the bundle cannot be started.
    explicit Host(const std::filesystem::path& bundleFile);
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;
    ~Host();

    [[nodiscard]] const cppmicroservices::Bundle& bundle() const noexcept { return bundle_; }
    [[nodiscard]] settings::core::FactorySettingsLoader& loader() const noexcept { return *loader_; }

    /// Returns all bundles of the framework, including the system bundle, ordered by id.
    [[nodiscard]] std::vector<cppmicroservices::Bundle> bundles() const;

private:
    RunningFramework framework_;
    cppmicroservices::Bundle bundle_;
    std::shared_ptr<settings::core::FactorySettingsLoader> loader_;
};

}  // namespace vx::tool
