#include <cppmicroservices/Bundle.h>
#include <cppmicroservices/ServiceObjects.h>
#include <cppmicroservices/ServiceReferenceBase.h>
#include <cppmicroservices/ServiceRegistrationBase.h>

#include <algorithm>
#include <bundle_context_private.hpp>
#include <bundle_private.hpp>
#include <core_bundle_context.hpp>
#include <service_record.hpp>
#include <stdexcept>
#include <utility>

namespace cppmicroservices {

ServiceReferenceBase::operator bool() const
{
    return record_ && record_->Owner();
}

Any ServiceReferenceBase::GetProperty(const std::string& key) const
{
    if (!record_) {
        return {};
    }
    const auto properties = record_->Properties();
    const auto found = properties->find(key);
    return found == properties->end() ? Any() : found->second;
}

std::vector<std::string> ServiceReferenceBase::GetPropertyKeys() const
{
    std::vector<std::string> keys;
    if (record_) {
        for (const auto& [key, value] : *record_->Properties()) {
            keys.push_back(key);
        }
    }
    return keys;
}

Bundle ServiceReferenceBase::GetBundle() const
{
    return MakeBundle(record_ ? record_->Owner() : nullptr);
}

std::vector<Bundle> ServiceReferenceBase::GetUsingBundles() const
{
    std::vector<Bundle> bundles;
    if (record_) {
        for (const auto& user : record_->Users()) {
            bundles.push_back(MakeBundle(user));
        }
    }
    return bundles;
}

void ServiceReferenceBase::ConvertTo(const std::string& interfaceId)
{
    if (interfaceId_ == interfaceId) {
        return;
    }
    if (*this && std::ranges::find(record_->Interfaces(), interfaceId) != record_->Interfaces().end()) {
        interfaceId_ = interfaceId;
    } else {
        *this = ServiceReferenceBase();
    }
}

bool ServiceReferenceBase::operator<(const ServiceReferenceBase& other) const
{
    if (!record_ || !other.record_) {
        return !record_ && other.record_;
    }
    return other.record_->RanksBefore(*record_);
}

ServiceRecord& ServiceRegistrationBase::Registered() const
{
    if (!record_) {
        throw std::logic_error("The service registration is empty");
    }
    if (!record_->Owner()) {
        throw std::logic_error("The service is unregistered");
    }
    return *record_;
}

ServiceReferenceBase ServiceRegistrationBase::GetReference(const std::string& interfaceId) const
{
    return {Registered().shared_from_this(), interfaceId};
}

void ServiceRegistrationBase::SetProperties(const ServiceProperties& properties)
{
    ServiceRecord& record = Registered();
    if (const auto core = CoreOf(record.Owner())) {
        core->Services().SetProperties(record, properties);
    }
}

void ServiceRegistrationBase::Unregister()
{
    ServiceRecord& record = Registered();
    const auto core = CoreOf(record.Owner());
    if (!(core ? core->Services().Unregister(record) : record.Unregister())) {
        throw std::logic_error("The service is unregistered");
    }
}

ServiceObjectsBase::ServiceObjectsBase(std::shared_ptr<BundleContextPrivate> context,
                                       const ServiceReferenceBase& reference)
    : context_(std::move(context)), reference_(reference)
{
    if (!reference) {
        throw std::invalid_argument("The service reference is invalid");
    }
}

InterfaceMapConstPtr ServiceObjectsBase::Use() const
{
    return reference_ ? reference_.record_->Use(context_->Owner()) : nullptr;
}

InterfaceMapConstPtr ServiceObjectsBase::GetServiceInterfaceMap() const
{
    const auto objects = Use();
    if (!objects) {
        return nullptr;
    }
    auto shared = std::make_shared<InterfaceMap>();
    for (const auto& [interfaceId, object] : *objects) {
        shared->emplace(interfaceId, std::shared_ptr<void>(objects, object.get()));
    }
    return shared;
}

std::shared_ptr<void> ServiceObjectsBase::GetService() const
{
    const auto objects = Use();
    return {objects, ExtractInterface(objects, reference_.GetInterfaceId()).get()};
}

}  // namespace cppmicroservices
