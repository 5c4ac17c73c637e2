#include <cppmicroservices/Bundle.h>
#include <cppmicroservices/BundleContext.h>
#include <cppmicroservices/Constants.h>
#include <cppmicroservices/ServiceReference.h>
#include <cppmicroservices/SharedLibraryException.h>

#include <bundle_context_private.hpp>
#include <bundle_private.hpp>
#include <component_runtime.hpp>
#include <core_bundle_context.hpp>
#include <filesystem>
#include <shared_library.hpp>
#include <stdexcept>
#include <utility>

namespace cppmicroservices {

BundlePrivate::BundlePrivate(std::weak_ptr<CoreBundleContext> core, long bundleId, std::string bundleLocation,
                             BundleManifest bundleManifest)
    : id(bundleId),
      location(std::move(bundleLocation)),
      manifest(std::move(bundleManifest)),
      core_(std::move(core))
{}

BundlePrivate::~BundlePrivate() = default;

std::shared_ptr<BundleContextPrivate> BundlePrivate::Context() const
{
    const std::lock_guard lock(contextMutex_);
    return context_;
}

void BundlePrivate::Open()
{
    auto context = std::make_shared<BundleContextPrivate>(weak_from_this());
    const std::lock_guard lock(contextMutex_);
    context_ = std::move(context);
}

void BundlePrivate::Close()
{
    components_.reset();
    const auto core = Core();
    if (core) {
        core->Services().RemoveBundle(*this);
    }
    if (setContext_) {
        std::exchange(setContext_, nullptr)(nullptr);
    }
    std::shared_ptr<BundleContextPrivate> context;
    {
        const std::lock_guard lock(contextMutex_);
        context.swap(context_);
        context->Invalidate();
    }
    if (core) {
        core->RemoveListeners(*context);
        // Other threads may have added services while the context was still valid.
        core->Services().RemoveBundle(*this);
    }
}

void BundlePrivate::Start()
{
    const std::lock_guard lock(transition_);
    CheckInstalled();
    if (state_ == Bundle::STATE_ACTIVE) {
        return;
    }
    const auto core = Core();
    if (!core || !core->IsOpen() || core->Find(id).get() != this) {
        throw std::runtime_error(
            "The bundle " + manifest.symbolicName + " (" + location +
            ") belongs to a stopped framework; start the framework and install the bundle again");
    }
    CheckSupported();
    auto components = std::make_unique<ComponentRuntime>(*this);
    Open();
    components_ = std::move(components);
    state_ = Bundle::STATE_ACTIVE;
    try {
        components_->Start();
    } catch (...) {
        Stop();
        throw;
    }
}

void BundlePrivate::CheckSupported() const
{
    const auto activator = manifest.headers.find(Constants::BUNDLE_ACTIVATOR);
    if (activator != manifest.headers.end() && activator->second == true) {
        throw std::runtime_error(
            "The bundle " + manifest.symbolicName + " (" + location +
            ") has a bundle activator, which this framework does not run; use a component "
            "or an installed CppMicroServices");
    }
}

void BundlePrivate::Stop()
{
    const std::lock_guard lock(transition_);
    CheckInstalled();
    if (state_ != Bundle::STATE_ACTIVE) {
        return;
    }
    state_ = Bundle::STATE_STOPPING;
    Close();
    state_ = Bundle::STATE_RESOLVED;
}

void BundlePrivate::StopWithFramework()
{
    const std::lock_guard lock(transition_);
    if (state_ != Bundle::STATE_UNINSTALLED) {
        Stop();
        state_ = Bundle::STATE_INSTALLED;
    }
}

void BundlePrivate::Uninstall()
{
    const std::lock_guard lock(transition_);
    Stop();
    state_ = Bundle::STATE_UNINSTALLED;
    if (const auto core = Core()) {
        core->Remove(id);
    }
}

void BundlePrivate::CheckInstalled() const
{
    if (state_ == Bundle::STATE_UNINSTALLED) {
        throw std::logic_error("The bundle " + manifest.symbolicName + " (" + location + ") is uninstalled");
    }
}

const SharedLibrary& BundlePrivate::LoadLibrary()
{
    const SharedLibrary& library = FindLibrary();
    const std::lock_guard lock(libraryMutex_);
    if (!setContext_) {
        setContext_ =
            library.Find<void(BundleContextPrivate*)>(US_STR(US_SET_CTX_PREFIX) + manifest.symbolicName);
        if (setContext_) {
            setContext_(Context().get());
        }
    }
    return library;
}

const SharedLibrary& BundlePrivate::FindLibrary()
try {
    return SharedLibrary::Load(location, any_cast<int>(Core()->Property(Constants::LIBRARY_LOAD_OPTIONS)));
} catch (const std::runtime_error& error) {
    std::error_code ignored;
    const auto code = std::filesystem::exists(location, ignored) ? std::errc::executable_format_error
                                                                 : std::errc::no_such_file_or_directory;
    throw SharedLibraryException(std::make_error_code(code), error.what(), MakeBundle(shared_from_this()));
}

Bundle MakeBundle(const std::shared_ptr<BundlePrivate>& bundle)
{
    return Bundle(bundle);
}

std::shared_ptr<BundlePrivate> GetPrivate(const Bundle& bundle)
{
    if (!bundle.d) {
        throw std::invalid_argument("The bundle handle is empty");
    }
    return bundle.d;
}

Bundle::Bundle(std::shared_ptr<BundlePrivate> bundle) : d(std::move(bundle))
{
    if (const auto core = CoreOf(d)) {
        c = core->Running();
    }
}

bool Bundle::operator<(const Bundle& other) const
{
    return d && (!other.d || d->id < other.d->id);
}

Bundle::State Bundle::GetState() const
{
    return GetPrivate(*this)->State();
}

BundleContext Bundle::GetBundleContext() const
{
    return MakeBundleContext(GetPrivate(*this)->Context());
}

long Bundle::GetBundleId() const
{
    return GetPrivate(*this)->id;
}

std::string Bundle::GetLocation() const
{
    return GetPrivate(*this)->location;
}

std::string Bundle::GetSymbolicName() const
{
    return GetPrivate(*this)->manifest.symbolicName;
}

BundleVersion Bundle::GetVersion() const
{
    return GetPrivate(*this)->manifest.version;
}

const AnyMap& Bundle::GetHeaders() const
{
    return GetPrivate(*this)->manifest.headers;
}

std::vector<ServiceReferenceU> Bundle::GetRegisteredServices() const
{
    GetPrivate(*this)->CheckInstalled();
    const auto core = d->Core();
    return core ? core->Services().RegisteredBy(*d) : std::vector<ServiceReferenceU>();
}

std::vector<ServiceReferenceU> Bundle::GetServicesInUse() const
{
    GetPrivate(*this)->CheckInstalled();
    const auto core = d->Core();
    return core ? core->Services().UsedBy(*d) : std::vector<ServiceReferenceU>();
}

void Bundle::Start()
{
    GetPrivate(*this)->Start();
}

void Bundle::Stop()
{
    GetPrivate(*this)->Stop();
}

void Bundle::Uninstall()
{
    GetPrivate(*this)->Uninstall();
}

}  // namespace cppmicroservices
