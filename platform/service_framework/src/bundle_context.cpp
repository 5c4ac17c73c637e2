#include <cppmicroservices/BundleContext.h>

#include <bundle_context_private.hpp>
#include <bundle_private.hpp>
#include <core_bundle_context.hpp>
#include <service_record.hpp>
#include <stdexcept>
#include <utility>

namespace cppmicroservices {

namespace {

[[noreturn]] void throwInvalidContext()
{
    throw IllegalStateException("The bundle context is no longer valid");
}

std::shared_ptr<BundlePrivate> ownerOf(const std::shared_ptr<BundleContextPrivate>& context)
{
    if (!context) {
        throwInvalidContext();
    }
    return context->Owner();
}

std::shared_ptr<CoreBundleContext> coreOf(const std::shared_ptr<BundleContextPrivate>& context)
{
    auto core = ownerOf(context)->Core();
    if (!core) {
        throwInvalidContext();
    }
    return core;
}

std::vector<Bundle> asBundles(const std::vector<std::shared_ptr<BundlePrivate>>& bundles)
{
    std::vector<Bundle> handles;
    handles.reserve(bundles.size());
    for (const auto& bundle : bundles) {
        handles.push_back(MakeBundle(bundle));
    }
    return handles;
}

void checkReference(const ServiceReferenceBase& reference)
{
    if (!reference) {
        throw std::invalid_argument("The service reference is empty or its service is unregistered");
    }
}

}  // namespace

BundleContextPrivate::BundleContextPrivate(std::weak_ptr<BundlePrivate> owner) : owner_(std::move(owner)) {}

std::shared_ptr<BundlePrivate> BundleContextPrivate::Owner() const
{
    auto owner = owner_.lock();
    if (!valid_ || !owner) {
        throwInvalidContext();
    }
    return owner;
}

BundleContext MakeBundleContext(const std::shared_ptr<BundleContextPrivate>& context)
{
    return BundleContext(context);
}

BundleContext detail::MakeBundleContext(BundleContextPrivate* context)
{
    return cppmicroservices::MakeBundleContext(context->shared_from_this());
}

BundleContext::BundleContext() = default;

BundleContext::BundleContext(std::shared_ptr<BundleContextPrivate> context) : d(std::move(context)) {}

bool BundleContext::operator==(const BundleContext& other) const
{
    return *this ? d == other.d : !other;
}

bool BundleContext::operator<(const BundleContext& other) const
{
    return *this && (!other || d < other.d);
}

BundleContext& BundleContext::operator=(std::nullptr_t)
{
    d = nullptr;
    return *this;
}

BundleContext::operator bool() const
{
    return d && d->IsValid();
}

Any BundleContext::GetProperty(const std::string& key) const
{
    return coreOf(d)->Property(key);
}

AnyMap BundleContext::GetProperties() const
{
    return coreOf(d)->Properties();
}

Bundle BundleContext::GetBundle() const
{
    return MakeBundle(ownerOf(d));
}

Bundle BundleContext::GetBundle(long id) const
{
    return MakeBundle(coreOf(d)->Find(id));
}

std::vector<Bundle> BundleContext::GetBundles(const std::string& location) const
{
    return asBundles(coreOf(d)->AllFrom(location));
}

std::vector<Bundle> BundleContext::GetBundles() const
{
    return asBundles(coreOf(d)->All());
}

std::vector<Bundle> BundleContext::InstallBundles(const std::string& location)
{
    return asBundles(coreOf(d)->Install(location));
}

ServiceRegistrationU BundleContext::RegisterService(const InterfaceMapConstPtr& service,
                                                    const ServiceProperties& properties)
{
    return coreOf(d)->Services().Register(*d, service, properties);
}

std::vector<ServiceReferenceU> BundleContext::GetServiceReferences(const std::string& interfaceId,
                                                                   const std::string& filter)
{
    return coreOf(d)->Services().Find(interfaceId, filter);
}

ServiceReferenceU BundleContext::GetServiceReference(const std::string& interfaceId)
{
    const auto references = GetServiceReferences(interfaceId);
    return references.empty() ? ServiceReferenceU() : references.front();
}

std::shared_ptr<void> BundleContext::GetService(const ServiceReferenceBase& reference)
{
    checkReference(reference);
    const auto objects = reference.record_->Use(ownerOf(d));
    return {objects, ExtractInterface(objects, reference.GetInterfaceId()).get()};
}

InterfaceMapConstPtr BundleContext::GetService(const ServiceReferenceU& reference)
{
    checkReference(reference);
    return reference.record_->Use(ownerOf(d));
}

ListenerToken BundleContext::AddFrameworkListener(const FrameworkListener& listener)
{
    const auto core = coreOf(d);
    auto token = core->AddListener(*d, listener);
    if (!d->IsValid()) {
        // The bundle may have removed its listeners before this one was added.
        core->RemoveListener(token);
        throwInvalidContext();
    }
    return token;
}

void BundleContext::RemoveListener(ListenerToken token)
{
    coreOf(d)->RemoveListener(token);
}

}  // namespace cppmicroservices
