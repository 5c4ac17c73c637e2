#include <cppmicroservices/Constants.h>
#include <cppmicroservices/FrameworkEvent.h>
#include <cppmicroservices/ServiceException.h>
#include <cppmicroservices/ServiceFactory.h>
#include <cppmicroservices/SharedLibraryException.h>

#include <algorithm>
#include <bundle_private.hpp>
#include <core_bundle_context.hpp>
#include <ignoring_case.hpp>
#include <optional>
#include <service_names.hpp>
#include <service_record.hpp>
#include <stdexcept>
#include <utility>

namespace cppmicroservices {

namespace {

long nextServiceId()
{
    static std::atomic<long> next = 1;
    return next++;
}

/// Returns the factory in an interface map; null when there is none.
std::shared_ptr<ServiceFactory> factoryOf(const InterfaceMapConstPtr& objects)
{
    const auto found = objects->find(detail::factoryInterfaceId);
    return found == objects->end() ? nullptr : std::static_pointer_cast<ServiceFactory>(found->second);
}

std::vector<std::string> interfacesOf(const InterfaceMapConstPtr& objects, bool isFactory)
{
    if (!objects || objects->empty()) {
        throw std::invalid_argument("A service needs at least one interface");
    }
    std::vector<std::string> interfaces;
    for (const auto& [interfaceId, object] : *objects) {
        if (interfaceId.empty() || (!isFactory && !object)) {
            throw std::invalid_argument("The service has no object for the interface \"" + interfaceId +
                                        "\"");
        }
        if (interfaceId != detail::factoryInterfaceId) {
            interfaces.emplace_back(withoutLeadingColons(interfaceId));
        }
    }
    return interfaces;
}

int rankingOf(const AnyMap& properties)
{
    const auto found = properties.find(Constants::SERVICE_RANKING);
    if (found == properties.end()) {
        return 0;
    }
    const int* ranking = any_cast<int>(&found->second);
    if (!ranking) {
        const bool isString = any_cast<std::string>(&found->second) != nullptr;
        throw std::invalid_argument(
            "The property service.ranking is " + found->second.ToStringNoExcept() + " of type " +
            (isString ? "string" : detail::GetDemangledName(found->second.Type())) + "; make it an int");
    }
    return *ranking;
}

/// The services whose factories are running on this thread, to detect a factory that requests its own
/// service.
thread_local std::vector<const ServiceRecord*> activeFactories;

}  // namespace

/// A use of a service by a bundle, which ends on destruction.
class ServiceRecord::Usage
{
public:
    Usage(std::shared_ptr<ServiceRecord> record, std::weak_ptr<BundlePrivate> user)
        : record_(std::move(record)), user_(std::move(user))
    {}
    Usage(const Usage&) = delete;
    Usage& operator=(const Usage&) = delete;
    ~Usage()
    {
        if (objects) {
            record_->Release(user_);
        }
    }

    InterfaceMapConstPtr objects;  // null until the use begins

private:
    const std::shared_ptr<ServiceRecord> record_;
    const std::weak_ptr<BundlePrivate> user_;
};

ServiceRecord::ServiceRecord(const std::shared_ptr<BundlePrivate>& owner, InterfaceMapConstPtr objects,
                             const ServiceProperties& properties)
    : id_(nextServiceId()),
      isFactory_(objects && objects->contains(detail::factoryInterfaceId)),
      interfaces_(interfacesOf(objects, isFactory_)),
      owner_(owner),
      objects_(std::move(objects)),
      factory_(factoryOf(objects_)),
      properties_(MakeProperties(properties))
{
    ranking_ = rankingOf(*properties_);
}

bool ServiceRecord::RanksBefore(const ServiceRecord& other) const noexcept
{
    const int ranking = ranking_;
    const int otherRanking = other.ranking_;
    return ranking != otherRanking ? ranking > otherRanking : id_ < other.id_;
}

std::shared_ptr<const AnyMap> ServiceRecord::MakeProperties(const ServiceProperties& given) const
{
    auto properties = std::make_shared<AnyMap>(ignoringCase(given));
    (*properties)[Constants::SERVICE_ID] = id_;
    (*properties)[Constants::OBJECTCLASS] = interfaces_;
    // The component runtime sets "singleton" for its factories, because one component object serves all
    // bundles.
    properties->emplace(Constants::SERVICE_SCOPE,
                        isFactory_ ? Constants::SCOPE_BUNDLE : Constants::SCOPE_SINGLETON);
    return properties;
}

std::shared_ptr<const AnyMap> ServiceRecord::Properties() const
{
    const std::lock_guard lock(mutex_);
    return properties_;
}

std::shared_ptr<const AnyMap> ServiceRecord::MakeReplacement(const ServiceProperties& given) const
{
    ServiceProperties complete = given;
    complete[Constants::SERVICE_SCOPE] = Properties()->at(Constants::SERVICE_SCOPE);
    return MakeProperties(complete);
}

void ServiceRecord::SwapProperties(std::shared_ptr<const AnyMap>& other)
{
    ranking_ = rankingOf(*other);
    const std::lock_guard lock(mutex_);
    properties_.swap(other);
}

std::shared_ptr<BundlePrivate> ServiceRecord::Owner() const
{
    const std::lock_guard lock(mutex_);
    return objects_ ? owner_.lock() : nullptr;
}

std::vector<std::shared_ptr<BundlePrivate>> ServiceRecord::Users() const
{
    std::vector<std::shared_ptr<BundlePrivate>> users;
    const std::lock_guard lock(mutex_);
    for (const auto& [user, entry] : users_) {
        if (auto bundle = user.lock()) {
            users.push_back(std::move(bundle));
        }
    }
    return users;
}

bool ServiceRecord::IsUsedBy(const BundlePrivate& bundle) const
{
    const std::lock_guard lock(mutex_);
    return users_.contains(bundle.weak_from_this());
}

InterfaceMapConstPtr ServiceRecord::Use(const std::shared_ptr<BundlePrivate>& user)
{
    const auto usage = std::make_shared<Usage>(shared_from_this(), user);
    usage->objects = Acquire(user);
    return usage->objects ? InterfaceMapConstPtr(usage, usage->objects.get()) : nullptr;
}

InterfaceMapConstPtr ServiceRecord::Acquire(const std::shared_ptr<BundlePrivate>& user)
{
    std::shared_ptr<ServiceFactory> factory;
    {
        const std::lock_guard lock(mutex_);
        if (!objects_) {
            return nullptr;
        }
        const auto known = users_.find(user);
        if (!isFactory_ || known != users_.end()) {
            UserEntry& entry = isFactory_ ? known->second : users_[user];
            ++entry.uses;
            return isFactory_ ? entry.objects : objects_;
        }
        factory = factory_;
    }
    const UserEntry made{1, MakeObjects(user, *factory)};
    if (!made.objects) {
        return nullptr;
    }
    try {
        auto current = AddUser(user, made);
        if (current != made.objects) {
            GiveBack(*factory, user, made.objects);
        }
        return current;
    } catch (const std::bad_alloc&) {
        GiveBack(*factory, user, made.objects);
        throw;
    }
}

InterfaceMapConstPtr ServiceRecord::AddUser(const std::shared_ptr<BundlePrivate>& user, const UserEntry& made)
{
    const std::lock_guard lock(mutex_);
    if (!objects_) {
        return nullptr;
    }
    const auto [position, inserted] = users_.try_emplace(user, made);
    if (!inserted) {
        ++position->second.uses;
    }
    return position->second.objects;
}

InterfaceMapConstPtr ServiceRecord::MakeObjects(const std::shared_ptr<BundlePrivate>& user,
                                                ServiceFactory& factory)
{
    const Bundle bundle = MakeBundle(user);
    if (std::ranges::find(activeFactories, this) != activeFactories.end()) {
        ReportError(bundle, "A service factory requested its own service",
                    ServiceException::FACTORY_RECURSION);
        return nullptr;
    }
    activeFactories.push_back(this);
    const std::shared_ptr<void> done(nullptr, [](void*) { activeFactories.pop_back(); });
    try {
        auto objects = factory.GetService(bundle, ServiceRegistrationBase(shared_from_this()));
        if (!objects || objects->empty()) {
            ReportError(bundle, "A service factory returned no object", ServiceException::FACTORY_ERROR);
            return nullptr;
        }
        for (const std::string& interfaceId : interfaces_) {
            if (!objects->contains(interfaceId)) {
                const std::string message =
                    "A service factory returned no object for the interface " + interfaceId;
                Report({FrameworkEvent::FRAMEWORK_WARNING, bundle, message,
                        std::make_exception_ptr(std::logic_error(message))});
                return nullptr;
            }
        }
        return objects;
    } catch (const SharedLibraryException& error) {
        Report({FrameworkEvent::FRAMEWORK_ERROR, error.GetBundle(), error.what(), std::current_exception()});
        throw;
    } catch (const std::bad_alloc&) {
        throw;  // not an error of the factory: the caller may try again
    } catch (const std::exception& error) {
        ReportError(bundle, error.what(), ServiceException::FACTORY_EXCEPTION);
    }
    return nullptr;
}

void ServiceRecord::Release(const User& user)
{
    std::shared_ptr<ServiceFactory> factory;
    UserEntry released;
    {
        const std::lock_guard lock(mutex_);
        const auto found = users_.find(user);
        if (found == users_.end() || --found->second.uses > 0) {
            return;
        }
        released = std::move(found->second);
        users_.erase(found);
        factory = factory_;
    }
    if (factory) {
        GiveBack(*factory, user, released.objects);
    }
}

bool ServiceRecord::Unregister()
{
    InterfaceMapConstPtr objects;
    decltype(users_) users;
    std::shared_ptr<ServiceFactory> factory;
    {
        const std::lock_guard lock(mutex_);
        factory.swap(factory_);
        objects.swap(objects_);
        users.swap(users_);
    }
    if (factory) {
        for (const auto& [user, entry] : users) {
            GiveBack(*factory, user, entry.objects);
        }
    }
    return objects != nullptr;
}

void ServiceRecord::GiveBack(ServiceFactory& factory, const User& user, const InterfaceMapConstPtr& objects)
{
    const auto bundle = user.lock();
    if (!bundle) {
        return;
    }
    try {
        factory.UngetService(MakeBundle(bundle), ServiceRegistrationBase(shared_from_this()), objects);
    } catch (const std::exception& error) {
        ReportError(MakeBundle(bundle), error.what(), ServiceException::FACTORY_EXCEPTION);
    } catch (...) {
        // The last pointer to the object may be released in a destructor, so nothing may be thrown.
        ReportError(MakeBundle(bundle), "A service factory threw an exception that is not a std::exception",
                    ServiceException::FACTORY_EXCEPTION);
    }
}

void ServiceRecord::ReportError(const Bundle& origin, const std::string& message,
                                ServiceException::Type type) const
{
    Report({FrameworkEvent::FRAMEWORK_ERROR, origin, message,
            std::make_exception_ptr(ServiceException(message, type))});
}

void ServiceRecord::Report(const FrameworkEvent& event) const
{
    const auto owner = [&] {
        const std::lock_guard lock(mutex_);
        return owner_.lock();
    }();
    if (const auto core = owner ? owner->Core() : nullptr) {
        core->Send(event);
    }
}

}  // namespace cppmicroservices
