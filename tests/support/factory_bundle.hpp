#pragma once

#include <settings/core/factory_settings_loader.hpp>

#include <cppmicroservices/BundleContext.h>
#include <cppmicroservices/ServiceReference.h>

#include <filesystem>
#include <memory>
#include <string>
#include <unistd.h>

namespace tests {

/// A copy of a bundle's file while it lives. To a process its library is another one: what the library does
/// once is still to come. Not in memory, where libraries must not be loaded from on some systems.
class BundleCopy
{
public:
    explicit BundleCopy(const std::filesystem::path& bundle)
    {
        static int copies = 0;
        const std::string name = "vx_" + std::to_string(::getpid()) + '_' + std::to_string(++copies) + ".so";
        file_ = std::filesystem::temp_directory_path() / name;
        std::filesystem::copy_file(bundle, file_, std::filesystem::copy_options::overwrite_existing);
    }
    BundleCopy(const BundleCopy&) = delete;
    BundleCopy& operator=(const BundleCopy&) = delete;
    ~BundleCopy() { std::filesystem::remove(file_); }

    [[nodiscard]] std::string file() const { return file_; }

private:
    std::filesystem::path file_;
};

/// The provider that the started bundle offers; null when there is none.
inline std::shared_ptr<settings::core::FactorySettingsLoader>
factoryLoader(cppmicroservices::BundleContext context)
{
    const auto reference = context.GetServiceReference<settings::core::FactorySettingsLoader>();
    return reference ? context.GetService(reference) : nullptr;
}

}  // namespace tests
