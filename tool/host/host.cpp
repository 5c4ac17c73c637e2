#include "host/host.hpp"

#include <foundation/host.hpp>

#include <cppmicroservices/BundleContext.h>
#include <cppmicroservices/FrameworkEvent.h>
#include <cppmicroservices/FrameworkFactory.h>
#include <cppmicroservices/ServiceReference.h>

#include <algorithm>
#include <chrono>
#include <framework_bundles.hpp>
#include <new>
#include <stdexcept>
#include <string>
#include <string_view>

#include "cli/command_error.hpp"
#include "host/bundle_file.hpp"

namespace vx::tool {

namespace {

using cppmicroservices::Bundle;
using cppmicroservices::BundleContext;
using cppmicroservices::FrameworkEvent;
using settings::core::FactorySettingsLoader;

/// Starts the first bundle in the file and returns it. Throws what the framework throws.
Bundle start(BundleContext context, const std::string& file)
{
    Bundle bundle = context.InstallBundles(file).at(0);
    bundle.Start();
    return bundle;
}

Bundle startFactorySettings(BundleContext context, const std::filesystem::path& file)
{
    requireLibrary(file);
    try {
        return start(std::move(context), file.string());
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& error) {
        const std::string reason = firstLine(error.what());
        const bool namesFile = reason.find(file.string()) != std::string::npos;
        throw CommandError(
            ExitCode::notStarted,
            (namesFile ? "bundle cannot be started: " : "bundle " + file.string() + " cannot be started: ") +
                reason + "; choose a bundle with a valid manifest with --bundle FILE");
    }
}

std::shared_ptr<FactorySettingsLoader> findLoader(BundleContext context, const Bundle& bundle)
{
    const auto reject = [&bundle](const std::string& reason) {
        throw CommandError(ExitCode::notStarted, "bundle " + bundle.GetLocation() + ": " + reason +
                                                     "; choose another bundle with --bundle FILE");
    };
    const auto reference = context.GetServiceReference<FactorySettingsLoader>();
    if (!reference) {
        reject("its manifest offers no settings::core::FactorySettingsLoader");
    }
    // Shared with the listener, which lives as long as the framework.
    const auto reason = std::make_shared<std::string>("its component cannot be activated");
    context.AddFrameworkListener([reason](const FrameworkEvent& event) {
        *reason = "its component cannot be activated: " + firstLine(event.GetMessage());
    });
    std::shared_ptr<FactorySettingsLoader> loader;
    try {
        loader = context.GetService(reference);
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& error) {
        *reason = firstLine(error.what());
    }
    if (!loader) {
        const std::string component = reference.GetProperty("component.name").ToStringNoExcept();
        const std::string missing = findMissingExport(bundle, component);
        reject(missing.empty() ? *reason
                               : "its manifest names the component " + component +
                                     ", but the library does not export " + missing);
    }
    return loader;
}

}  // namespace

std::filesystem::path executableFile()
{
    return std::filesystem::read_symlink("/proc/self/exe");
}

std::filesystem::path defaultBundleFile()
{
    return (executableFile().parent_path() / VX_OWN_BUNDLE).lexically_normal();
}

std::filesystem::path defaultSchemaFile()
{
    return (executableFile().parent_path() / VX_OWN_SCHEMA).lexically_normal();
}

std::filesystem::path defaultCatalogFolder()
{
    return (executableFile().parent_path() / VX_OWN_CATALOG).lexically_normal();
}

RunningFramework::RunningFramework()
    : framework_(
          std::make_shared<cppmicroservices::Framework>(cppmicroservices::FrameworkFactory().NewFramework()))
{
    try {
        framework_->Start();
        for (const std::string_view file : frameworkBundles) {
            start(framework_->GetBundleContext(), std::string(file));
        }
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& error) {
        throw CommandError(ExitCode::notStarted, std::string("the service framework cannot be started: ") +
                                                     firstLine(error.what()) + "; reinstall vxsettings");
    }
    foundation::host::setFramework(framework_);
}

RunningFramework::~RunningFramework()
{
    foundation::host::setFramework(nullptr);
    framework_->Stop();
    framework_->WaitForStop(std::chrono::milliseconds::zero());
}

Host::Host(const std::filesystem::path& bundleFile)
    : bundle_(startFactorySettings(framework_.framework().GetBundleContext(), bundleFile)),
      loader_(findLoader(framework_.framework().GetBundleContext(), bundle_))
{}

Host::~Host()
{
    loader_.reset();
    bundle_.Stop();
}

std::vector<Bundle> Host::bundles() const
{
    std::vector<Bundle> bundles = framework_.framework().GetBundleContext().GetBundles();
    std::sort(bundles.begin(), bundles.end(), [](const Bundle& left, const Bundle& right) {
        return left.GetBundleId() < right.GetBundleId();
    });
    return bundles;
}

}  // namespace vx::tool
