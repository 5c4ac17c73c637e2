#include <boost/uuid/random_generator.hpp>
#include <boost/uuid/uuid_io.hpp>
#include <cppmicroservices/Constants.h>
#include <cppmicroservices/FrameworkEvent.h>

#include <algorithm>
#include <bundle_context_private.hpp>
#include <bundle_file.hpp>
#include <core_bundle_context.hpp>
#include <filesystem>
#include <iterator>
#include <limits>
#include <shared_library.hpp>
#include <stdexcept>
#include <system_bundle.hpp>
#include <utility>

namespace cppmicroservices {

namespace {

/// Owns the framework and stops it on destruction, while all of its parts still exist: components that are
/// deactivated may use them.
struct FrameworkOwner
{
    explicit FrameworkOwner(const FrameworkConfiguration& configuration)
        : core(std::make_shared<CoreBundleContext>(configuration))
    {}
    FrameworkOwner(const FrameworkOwner&) = delete;
    FrameworkOwner& operator=(const FrameworkOwner&) = delete;
    ~FrameworkOwner()
    {
        if (const auto bundle = core->SystemBundle()) {
            bundle->Stop();
        }
    }

    const std::shared_ptr<CoreBundleContext> core;
};

AnyMap withDefaults(const FrameworkConfiguration& configuration)
{
    AnyMap properties(configuration);
    properties.emplace(Constants::FRAMEWORK_LOG, false);
    properties.emplace(Constants::FRAMEWORK_STORAGE, std::string("fwdir"));
    std::error_code ignored;  // the working directory may have been deleted
    properties.emplace(Constants::FRAMEWORK_WORKING_DIR, std::filesystem::current_path(ignored).string());
    Any& loadOptions = properties[Constants::LIBRARY_LOAD_OPTIONS];
    if (!any_cast<int>(&loadOptions)) {
        loadOptions = SharedLibrary::defaultLoadOptions;
    }
    properties[Constants::FRAMEWORK_THREADING_SUPPORT] = std::string("multi");
    properties[Constants::FRAMEWORK_VENDOR] = std::string(VX_SERVICE_FRAMEWORK_NAME);
    properties[Constants::FRAMEWORK_VERSION] = std::string(VX_SERVICE_FRAMEWORK_VERSION);
    return properties;
}

}  // namespace

std::shared_ptr<CoreBundleContext> CoreBundleContext::Create(const FrameworkConfiguration& configuration)
{
    const auto owner = std::make_shared<FrameworkOwner>(configuration);
    CoreBundleContext& core = *owner->core;
    std::shared_ptr<CoreBundleContext> running(owner, &core);
    core.running_ = running;
    core.systemBundle_ = std::make_shared<cppmicroservices::SystemBundle>(owner->core);
    return running;
}

CoreBundleContext::CoreBundleContext(const FrameworkConfiguration& configuration)
    : properties_(withDefaults(configuration))
{}

std::shared_ptr<CoreBundleContext> CoreBundleContext::Running()
{
    auto running = running_.lock();
    return running ? running : shared_from_this();
}

AnyMap CoreBundleContext::Properties() const
{
    const std::lock_guard lock(mutex_);
    return properties_;
}

Any CoreBundleContext::Property(const std::string& key) const
{
    const std::lock_guard lock(mutex_);
    const auto found = properties_.find(key);
    return found == properties_.end() ? Any() : found->second;
}

void CoreBundleContext::Open()
{
    const std::string uuid = to_string(boost::uuids::random_generator()());
    const std::lock_guard lock(mutex_);
    properties_[Constants::FRAMEWORK_UUID] = uuid;
    bundles_[systemBundle_->id] = systemBundle_;
    open_ = true;
}

void CoreBundleContext::Close()
{
    open_ = false;
    for (auto bundle = LastBefore(std::numeric_limits<long>::max()); bundle != systemBundle_;
         bundle = LastBefore(bundle->id))
    {
        bundle->StopWithFramework();
    }
    std::map<long, std::shared_ptr<BundlePrivate>> removed;
    const std::lock_guard lock(mutex_);
    removed.swap(bundles_);
}

std::vector<std::shared_ptr<BundlePrivate>> CoreBundleContext::Install(const std::string& location)
{
    std::vector<std::shared_ptr<BundlePrivate>> installed = AllFrom(location);
    if (!installed.empty()) {
        return installed;
    }
    std::vector<BundleManifest> manifests = readBundleFile(location);
    const std::lock_guard lock(mutex_);
    for (BundleManifest& manifest : manifests) {
        const auto sameName = std::ranges::find_if(bundles_, [&](const auto& entry) {
            const BundleManifest& other = entry.second->manifest;
            return other.symbolicName == manifest.symbolicName && other.version == manifest.version;
        });
        if (sameName == bundles_.end()) {
            auto bundle = std::make_shared<BundlePrivate>(weak_from_this(), nextBundleId_, location,
                                                          std::move(manifest));
            bundles_.emplace(nextBundleId_++, bundle);
            installed.push_back(std::move(bundle));
        } else if (sameName->second->location == location) {
            installed.push_back(sameName->second);
        } else {
            throw std::runtime_error(location + ": the bundle " + manifest.symbolicName + " " +
                                     manifest.version.ToString() + " is already installed from " +
                                     sameName->second->location);
        }
    }
    return installed;
}

void CoreBundleContext::Remove(long bundleId)
{
    const std::lock_guard lock(mutex_);
    bundles_.erase(bundleId);
}

std::shared_ptr<BundlePrivate> CoreBundleContext::Find(long bundleId) const
{
    const std::lock_guard lock(mutex_);
    const auto found = bundles_.find(bundleId);
    return found == bundles_.end() ? nullptr : found->second;
}

std::shared_ptr<BundlePrivate> CoreBundleContext::LastBefore(long bundleId) const
{
    const std::lock_guard lock(mutex_);
    const auto next = bundles_.lower_bound(bundleId);
    return next == bundles_.begin() ? systemBundle_ : std::prev(next)->second;
}

std::vector<std::shared_ptr<BundlePrivate>> CoreBundleContext::All() const
{
    std::vector<std::shared_ptr<BundlePrivate>> all;
    const std::lock_guard lock(mutex_);
    for (const auto& [id, bundle] : bundles_) {
        all.push_back(bundle);
    }
    return all;
}

std::vector<std::shared_ptr<BundlePrivate>> CoreBundleContext::AllFrom(const std::string& location) const
{
    auto bundles = All();
    std::erase_if(bundles, [&](const auto& bundle) { return bundle->location != location; });
    return bundles;
}

ListenerToken CoreBundleContext::AddListener(const BundleContextPrivate& owner,
                                             const FrameworkListener& listener)
{
    auto call = std::make_shared<const FrameworkListener>(listener);
    const std::lock_guard lock(mutex_);
    listeners_.emplace(nextListenerId_, Listener{&owner, std::move(call)});
    return ListenerToken(nextListenerId_++);
}

void CoreBundleContext::RemoveListener(const ListenerToken& token)
{
    decltype(listeners_)::node_type removed;  // destroyed after the lock is released
    const std::lock_guard lock(mutex_);
    removed = listeners_.extract(token.id_);
}

void CoreBundleContext::RemoveListeners(const BundleContextPrivate& owner)
{
    std::map<ListenerTokenId, Listener> removed;
    const std::lock_guard lock(mutex_);
    for (auto listener = listeners_.begin(); listener != listeners_.end();) {
        const auto current = listener++;
        if (current->second.owner == &owner) {
            removed.insert(listeners_.extract(current));
        }
    }
}

void CoreBundleContext::Send(const FrameworkEvent& event) const
{
    ListenerTokenId lastCalled = 0;
    const ListenerTokenId end = EndOfListeners();
    while (const auto call = NextListener(lastCalled, end)) {
        try {
            (*call)(event);
        } catch (...) {
            // Errors are reported to listeners, so an error in a listener cannot be reported.
            continue;
        }
    }
}

ListenerTokenId CoreBundleContext::EndOfListeners() const
{
    const std::lock_guard lock(mutex_);
    return nextListenerId_;
}

std::shared_ptr<const FrameworkListener> CoreBundleContext::NextListener(ListenerTokenId& lastCalled,
                                                                         ListenerTokenId end) const
{
    const std::lock_guard lock(mutex_);
    const auto next = listeners_.upper_bound(lastCalled);
    if (next == listeners_.end() || next->first >= end) {
        return nullptr;
    }
    lastCalled = next->first;
    return next->second.call;
}

}  // namespace cppmicroservices
