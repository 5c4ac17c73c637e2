#include <cppmicroservices/Constants.h>
#include <cppmicroservices/Framework.h>
#include <cppmicroservices/FrameworkEvent.h>
#include <cppmicroservices/FrameworkFactory.h>

#include <core_bundle_context.hpp>
#include <stdexcept>
#include <system_bundle.hpp>
#include <utility>

namespace cppmicroservices {

namespace {

BundleManifest systemManifest()
{
    const std::string version = VX_SERVICE_FRAMEWORK_VERSION;
    return {Constants::SYSTEM_BUNDLE_SYMBOLICNAME, BundleVersion(version),
            AnyMap(AnyMap::UNORDERED_MAP_CASEINSENSITIVE_KEYS,
                   {{Constants::BUNDLE_SYMBOLICNAME, Constants::SYSTEM_BUNDLE_SYMBOLICNAME},
                    {Constants::BUNDLE_VERSION, version}})};
}

}  // namespace

SystemBundle::SystemBundle(std::weak_ptr<CoreBundleContext> core)
    : BundlePrivate(std::move(core), 0, Constants::SYSTEM_BUNDLE_LOCATION, systemManifest())
{}

bool SystemBundle::IsStopped() const noexcept
{
    return state_ == Bundle::STATE_INSTALLED || state_ == Bundle::STATE_RESOLVED;
}

void SystemBundle::SetState(Bundle::State state)
{
    {
        const std::lock_guard lock(waitMutex_);
        state_ = state;
    }
    stateChanged_.notify_all();
}

void SystemBundle::Init()
{
    const std::lock_guard lock(transition_);
    if (IsStopped()) {
        BundlePrivate::Open();
        Core()->Open();
        SetState(Bundle::STATE_STARTING);
    }
}

void SystemBundle::Start()
{
    {
        const std::lock_guard lock(transition_);
        Init();
        if (state_ != Bundle::STATE_STARTING) {
            return;
        }
        SetState(Bundle::STATE_ACTIVE);
    }
    Core()->Send({FrameworkEvent::FRAMEWORK_STARTED, MakeBundle(shared_from_this()), {}});
}

void SystemBundle::Stop()
{
    const std::lock_guard lock(transition_);
    if (state_ != Bundle::STATE_ACTIVE && state_ != Bundle::STATE_STARTING) {
        return;
    }
    SetState(Bundle::STATE_STOPPING);
    Core()->Close();
    BundlePrivate::Close();
    SetState(Bundle::STATE_RESOLVED);
}

void SystemBundle::Uninstall()
{
    throw std::runtime_error("The system bundle cannot be uninstalled");
}

bool SystemBundle::WaitForStop(std::chrono::milliseconds timeout)
{
    std::unique_lock lock(waitMutex_);
    const auto stopped = [this] { return IsStopped(); };
    if (timeout == std::chrono::milliseconds::zero()) {
        stateChanged_.wait(lock, stopped);
        return true;
    }
    return stateChanged_.wait_for(lock, timeout, stopped);
}

Framework::Framework(Bundle bundle) : Bundle(std::move(bundle))
{
    if (GetBundleId() != 0) {
        throw std::logic_error("The bundle " + GetSymbolicName() + " is not the framework");
    }
}

void Framework::Init()
{
    static_cast<SystemBundle&>(*d).Init();
}

FrameworkEvent Framework::WaitForStop(const std::chrono::milliseconds& timeout)
{
    if (GetState() == STATE_INSTALLED) {
        return {FrameworkEvent::FRAMEWORK_ERROR, *this, "The framework has not been started"};
    }
    const bool stopped = static_cast<SystemBundle&>(*d).WaitForStop(timeout);
    return {stopped ? FrameworkEvent::FRAMEWORK_STOPPED : FrameworkEvent::FRAMEWORK_WAIT_TIMEDOUT, *this, {}};
}

Framework FrameworkFactory::NewFramework(const FrameworkConfiguration& configuration)
{
    const auto running = CoreBundleContext::Create(configuration);
    return Framework(MakeBundle(running->SystemBundle()));
}

Framework FrameworkFactory::NewFramework()
{
    return NewFramework({});
}

}  // namespace cppmicroservices
